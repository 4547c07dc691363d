#include "ProgramBench.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTreeWidgetItem>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/GeometryTestSupport.h"
#include "items/IsoEditor.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "nc/myTimer.h"
#include "setup/WorkCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

QByteArray shipped(const QString& name) {
    QFile file(shippedInstallation() + QLatin1Char('/') + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

}  // namespace

TemporaryInstallation& ProgramBench::installation() {
    static TemporaryInstallation folder;
    return folder;
}

ProgramBench::ProgramBench(const QString& machineName) {
    const TemporaryInstallation& folder = installation();
    setInstallationFolder(folder.path());
    for (const char* name : {"language/english.json", "data/UniquelyIdentifies.json", "oak.jpg",
                             "toollib.json", "Tornvale3.3.0.5.rc"})
        folder.write(QLatin1String(name), shipped(QLatin1String(name)));
    const QString postProcessor = QStringLiteral("UserPostProcessor/%1.xml").arg(machineName);
    folder.write(postProcessor, shipped(postProcessor));
    QString settings = QString::fromUtf8(shipped(QStringLiteral("data.ini")));
    settings.replace(QRegularExpression(QStringLiteral("(?m)^Language=.*$")),
                     QStringLiteral("Language=English"));
    settings.replace(QStringLiteral("UserPostProcessor/TornBridge5.xml"), postProcessor);
    folder.write(QStringLiteral("data.ini"), settings.toUtf8());
    QString machine = QString::fromUtf8(shipped(QStringLiteral("machineSample/%1.xml").arg(machineName)));
    machine.replace(QRegularExpression(QStringLiteral("<modelPath>[^<]+</modelPath>")),
                    QStringLiteral("<modelPath>models/Box.stl</modelPath>"));
    folder.write(QStringLiteral("machine.xml"), machine.toUtf8());
    folder.write(QStringLiteral("models/Box.stl"), binaryStl(boxTriangles(SbVec3f(1, 1, 1))));
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
    ConfigReader::instance().SetConfig(folder.file(QStringLiteral("machine.xml")));
    EXPECT_TRUE(ConfigReader::instance().isValid());

    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.LoadingLocalTools();
    tools.removeInstalledTools();
    for (int i = 0; i < tools.libraryRoot()->childCount(); ++i) {
        const auto* tool = dynamic_cast<ToolData*>(tools.libraryRoot()->child(i));
        if (tool == nullptr)
            continue;
        auto* const installed = new ToolData(*tool);  // owned by its row
        if (machineName != QLatin1String("TornBridge5"))
            installed->record().installationName =
                ConfigReader::instance().description().machineParameters.kinematicChain.value(0);
        tools.addTool(installed, tools.installedRoot());
    }
    machine_ = std::make_unique<MotionNodeManager>(ConfigReader::instance().description());
    machine_->switchCollision(false);
    TORNVALE::UserPostProcessor::instance().reload();
    tree_ = std::make_unique<TreeWidgetManager>(*machine_);
}

ProgramBench::~ProgramBench() {
    TORNVALE::myTimer::closeIfOpen();
    TORNVALE::IsoEditor::release(nullptr);
    tree_.reset();
    machine_.reset();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

UserTopItem& ProgramBench::left() {
    return *tree_->root().group(QStringLiteral("G54"));
}

UserTopItem& ProgramBench::right() {
    return *tree_->root().group(QStringLiteral("G55"));
}

QJsonObject ProgramBench::leftWithUnknownBlock(int index) {
    QJsonObject object = left().Get();
    QJsonArray blocks = object["G54"].toArray();
    blocks.insert(index < 0 ? blocks.size() : index, QJsonObject{{"itemName", "lathe7"}, {"depth", 3}});
    object["G54"] = blocks;
    return object;
}

ToolData* ProgramBench::tool(int index) {
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    return tools.findTool(index, tools.installedRoot());
}

TORNVALE::IsoItem& ProgramBench::add(UserTopItem& group, const QString& code, int toolIndex) {
    auto made = std::make_unique<TORNVALE::IsoItem>();
    TORNVALE::IsoItem& item = *made;
    group.adopt(std::move(made), -1);
    item.setName(group.uniqueName(item.type()));
    item.editRecord().WCSName = group.wcsName();
    item.SetTool(tool(toolIndex), false);
    item.refreshUserCoordinateIds();
    item.changeUserCoordinateSystem(item.userCoordinateIds().value(0));
    item.editIso().sourceCodeString = code;
    if (!code.isEmpty())
        item.doIt();
    tree_->commitEdits();
    return item;
}

QString ProgramBench::square(double x, double y, double a_deg) {
    return QStringLiteral(
               "G0 X%1 Y%2 Z200 C0 A%3\nG0 Z120\nG1 Z100 F3000\nG1 X%4\nG1 Y%5\nG0 Z120\nG0 Z200\n")
        .arg(x)
        .arg(y)
        .arg(a_deg)
        .arg(x + 20)
        .arg(y + 20);
}

userCoordinateSystem* ProgramBench::addSystem() {
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, QStringLiteral("Work coordinate system"),
                       QStringLiteral("The user coordinate system was added."));
    return machine_->findWorkCoordinateSystem(QStringLiteral("G54"))->addUserCoordinateSystem();
}

void ProgramBench::commit() {
    tree_->commitEdits();
}
