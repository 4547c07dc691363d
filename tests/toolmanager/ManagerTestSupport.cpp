#include "ManagerTestSupport.h"

#include <Inventor/SoDB.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTreeWidget>
#include <memory>
#include <ostream>

#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"
#include "machine/readConfig.h"
#include "tools/ToolEditor.h"

void PrintTo(const SbVec3f& vector, std::ostream* out) {
    *out << '(' << vector[0] << ' ' << vector[1] << ' ' << vector[2] << ')';
}

ManagerInstallation::ManagerInstallation() {
    SoDB::init();
    write("data.ini", "[MainInterface]\nLanguage=English\n");
    write("data/UniquelyIdentifies.json", "{}");
    QFile language(shippedInstallation() + "/language/english.json");
    EXPECT_TRUE(language.open(QIODevice::ReadOnly));
    write("language/english.json", language.readAll());
    write("ChainSawLib/ChainSawLibrary.ini",
          "[Saw1]\nToolTip=1 2 3\nMatrix=10 20 30 0 90 0\nDir=saw1.iv\nImage=saw.png\nAnnonation=long\n"
          "SpindleNo=3\nToolNumber=2\nRpm=2800\nAx4Compensation=0.25\nAx5Compensation=-1.5\n\n"
          "[Saw2]\nMatrix=0 0 0 0 0 0\nDir=\nImage=saw.png\nSpindleNo=1\nToolNumber=7\nRpm=900\n");
    write("ChainSawLib/saw1.iv", "#Inventor V2.1 ascii\nSeparator { Cube { width 300 } }\n");
    write("ChainSawLib/saw.png", pictureFile({30, 20}));
    TORNVALE::LanguageReader::instance().reload();
    setMachine({"T1", "T2", "T3"});
}

ManagerInstallation::~ManagerInstallation() {
    ToolEditor::release(nullptr);
    ConfigReader::instance().setDescription(nullptr);
}

void ManagerInstallation::writeLibrary(const QList<int>& indices) const {
    ToolLibrary library;
    library.version = "1.0.0.0";
    for (const int index : indices)
        library.tools.append(toolOfIndex(index));
    write("toollib.json", writeToolLibrary(library));
}

void setMachine(const QStringList& names) {
    auto machine = std::make_unique<MachineDescription>();
    const auto add = [&](const char* name, const char* reverse, const char* range, const char* parent) {
        if (!names.contains(name))
            return;
        auto spindle = std::make_unique<spindleStruct>();
        spindle->name = name;
        spindle->reverseString = reverse;
        spindle->range = range;
        spindle->parent = parent;
        machine->spindles.push_back(std::move(spindle));
    };
    add("T1", "true", "12", "X->Z->C->A");
    add("T2", "false", "1", "X->Z");
    add("T3", "TRUE", "3", "V->W");
    machine->rebuildIndex();
    ConfigReader::instance().setDescription(std::move(machine));
}

ToolRecord toolOfIndex(int index) {
    ToolRecord tool;
    tool.index = index;
    tool.toolNo = 1;
    tool.length = 100 + static_cast<float>(index);
    tool.annotation = QString("tool %1").arg(index);
    return tool;
}

ToolData* newTool(int index) {
    return new ToolData(toolOfIndex(index));  // owned by the row that the caller makes of it
}

QByteArray pictureFile(QSize size) {
    QImage image(size, QImage::Format_RGB888);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString english(const char* group, const char* key) {
    return TORNVALE::LanguageReader::instance().text(group, key);
}

QList<int> indicesUnder(const QTreeWidgetItem* root) {
    QList<int> indices;
    for (int row = 0; row < root->childCount(); ++row)
        indices.append(static_cast<const ToolData*>(root->child(row))->record().index);
    return indices;
}

QAction* actionOf(const TORNVALE::ToolsManager& manager, const char* name) {
    auto* action = manager.findChild<QAction*>(name);
    EXPECT_NE(action, nullptr) << name;
    return action;
}

void select(TORNVALE::ToolsManager& manager, const QList<QTreeWidgetItem*>& rows) {
    manager.treeWidget()->clearSelection();
    for (QTreeWidgetItem* row : rows)
        row->setSelected(true);
}

void TestObserver::UpdateToolList(QList<ToolData*> tools) {
    ++updates;
    toolList_ = tools;
    lastIndices.clear();
    for (const ToolData* tool : tools)
        lastIndices.append(tool->record().index);
}

bool TestObserver::canRemoveTool(ToolData* tool) {
    askedIndices.append(tool->record().index);
    return tool->record().index != vetoedIndex;
}
