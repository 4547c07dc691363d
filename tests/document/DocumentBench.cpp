#include "DocumentBench.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/Restart.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/GeometryTestSupport.h"
#include "items/CodeManagerItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QByteArray shipped(const QString& name) {
    return contentOf(shippedInstallation() + QLatin1Char('/') + name);
}

}  // namespace

// --- dialogs ---

void CollectedDialogs::tell(Kind /*kind*/, const QString& /*title*/, const QString& text,
                            QWidget* /*parent*/) {
    told.append(text);
}

bool CollectedDialogs::ask(const QString& /*title*/, const QString& text, QWidget* /*parent*/) {
    asked.append(text);
    return answer;
}

std::optional<QString> CollectedDialogs::chooseItem(const QString& /*title*/, const QString& /*label*/,
                                                    const QStringList& /*items*/) {
    return std::nullopt;
}

std::optional<double> CollectedDialogs::askNumber(const QString& /*title*/, const QString& /*label*/,
                                                  double /*value*/, double /*low*/, double /*high*/,
                                                  int /*decimals*/) {
    return std::nullopt;
}

QString CollectedDialogs::openFile(const QString& /*caption*/, const QString& /*folder*/,
                                   const QString& /*filter*/) {
    return std::exchange(openFrom, {});
}

QString CollectedDialogs::saveFile(const QString& /*caption*/, const QString& /*folder*/,
                                   const QString& /*filter*/) {
    return std::exchange(saveTo, {});
}

UserDialogs::Keep CollectedDialogs::askToSave(const QString& /*title*/, const QString& text,
                                              QWidget* /*parent*/) {
    asked.append(text);
    return keep;
}

// --- bench ---

TemporaryInstallation& DocumentBench::installation() {
    static TemporaryInstallation folder;
    return folder;
}

DocumentBench::DocumentBench() {
    QDir(installation().path()).removeRecursively();
    QDir().mkpath(installation().path());
    setInstallationFolder(installation().path());
    for (const char* name : {"language/english.json", "data/UniquelyIdentifies.json", "oak.jpg",
                             "UserPostProcessor/TornBridge5.xml", "Tornvale3.3.0.5.rc"})
        write(QLatin1String(name), shipped(QLatin1String(name)));
    write("toollib.json", "{}");
    settings({});
    QString machine = QString::fromUtf8(shipped(QStringLiteral("machineSample/TornBridge5.xml")));
    machine.replace(QRegularExpression(QStringLiteral("<modelPath>[^<]+</modelPath>")),
                    QStringLiteral("<modelPath>models/Box.stl</modelPath>"));
    write("machineSample/TornBridge5.xml", machine.toUtf8());
    write("models/Box.stl", binaryStl(boxTriangles(SbVec3f(1, 1, 1))));
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
    TORNVALE::UserPostProcessor::instance().reload();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

DocumentBench::~DocumentBench() {
    window_.reset();
    EXPECT_FALSE(takeRestartRequest()) << "nobody looked at the restart";
    // A quit that met no event loop would end the first one of the next test.
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

Tornvale& DocumentBench::open() {
    window_ = std::make_unique<Tornvale>(file("machineSample/TornBridge5.xml"));
    return *window_;
}

void DocumentBench::trigger(const char* key) {
    for (const QMenu* menu : window_->findChildren<QMenu*>()) {
        for (QAction* action : menu->actions()) {
            if (action->objectName() == QLatin1String(key)) {
                action->trigger();
                return;
            }
        }
    }
    ADD_FAILURE() << "no action " << key;
}

QStringList DocumentBench::saveAs(const QString& name) {
    CollectedDialogs dialogs;
    dialogs.saveTo = file(name);
    trigger("SaveAs");
    return dialogs.told;
}

QStringList DocumentBench::load(const QByteArray& document) {
    write("document.tornvale", document);
    CollectedDialogs dialogs;
    static_cast<void>(window_->OpenFile(file("document.tornvale")));  // what it told is what counts
    return dialogs.told;
}

QStringList DocumentBench::programs() const {
    QStringList texts;
    for (const UserTopItem* group : window_->programs().root().groups()) {
        for (const TORNVALE::CodeManagerItem* item : group->items())
            texts << group->wcsName() << item->itemName() << item->chainName()
                  << (item->isActive() ? "checked" : "unchecked") << item->tool().displayText()
                  << QString::number(item->rpm()) << item->WorkCode() << item->LeadIn() << item->IsoCode()
                  << item->LeadOut();
    }
    return texts;
}

QString DocumentBench::head(const char* field) const {
    const auto* edit = window_->findChild<QLineEdit*>(QLatin1String(field));
    return edit == nullptr ? QStringLiteral("no such field") : edit->text();
}

void DocumentBench::settings(const QByteArray& lines) const {
    write("data.ini",
          "[Config]\nUsedConfig=machineSample/TornBridge5.xml\n[MainInterface]\nLanguage=English\n"
          "[StatusPreProcessing]\nPostProcessor=UserPostProcessor/TornBridge5.xml\nTrajAlgorithem=2\n"
          "ToleranceBlend=0.5\nCurveSampleCount=20\n" +
              lines);
}

bool DocumentBench::waitFor(const QString& name) const {
    constexpr int kPatience_ms = 10000;
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(file(name)) && clock.elapsed() < kPatience_ms)
        QTest::qWait(20);
    return QFile::exists(file(name));
}

QByteArray DocumentBench::golden(const QString& name) {
    return contentOf(QStringLiteral(TORNVALE_DOCUMENT_GOLDEN "/") + name);
}
