#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPlainTextEdit>

#include "DocumentBench.h"
#include "machine/MotionNodeManager.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// The three forms of the document hold the same job, and saving one keeps it.

namespace {

const char* const kNoJson = "The file is not a JSON document in UTF-8.\n";

QByteArray withoutTime(const QByteArray& document) {
    QJsonObject root = QJsonDocument::fromJson(document).object();
    QJsonObject head = root["StandardCorvane_4S"].toObject();
    head.remove("dateTime");
    root["StandardCorvane_4S"] = head;
    return QJsonDocument(root).toJson();
}

QByteArray demonstration() {
    QFile file(shippedInstallation() + "/jobs/Demonstration.tornvale");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QByteArray replaced(QByteArray document, const QByteArray& text, const QByteArray& by) {
    EXPECT_TRUE(document.contains(text)) << text.toStdString();
    return document.replace(text, by);
}

}  // namespace

class DocumentForm : public testing::TestWithParam<const char*> {};

TEST_P(DocumentForm, GivesTheWholeJob) {
    DocumentBench bench;
    bench.open();
    EXPECT_EQ(bench.load(DocumentBench::golden(GetParam())), QStringList());
    EXPECT_EQ(bench.head("ProductName"), "Kitchen");
    EXPECT_EQ(bench.head("ProductNumber"), "K 7");
    EXPECT_EQ(bench.head("PartName"), "Door");
    EXPECT_EQ(bench.head("PartNumber"), "7-1");
    EXPECT_EQ(bench.head("CreatedTime"), "2024-03-01 10:20:30");
    EXPECT_EQ(bench.head("LeftHandTime"), "12.500");
    EXPECT_EQ(bench.window().findChild<QPlainTextEdit*>("OtherInfo")->toPlainText(),
              "first line\nsecond line");
    const QList<ToolData*> tools = TORNVALE::ToolsManager::instance().installedTools();
    ASSERT_EQ(tools.size(), 1);
    EXPECT_EQ(tools[0]->record().annotation, "End mill");
    for (const char* zone : {"G54", "G55"}) {
        const auto& systems = bench.window().machine().findWorkCoordinateSystem(zone)->ucsList();
        ASSERT_EQ(systems.size(), 2) << zone;
        EXPECT_EQ(systems[1]->translation(), SbVec3f(10, 20, 30)) << zone;
        for (userCoordinateSystem* system : systems)
            EXPECT_EQ(system->userModels().size(), 1) << zone;
    }
}

TEST_P(DocumentForm, GivesTheSamePrograms) {
    DocumentBench bench;
    bench.open();
    EXPECT_EQ(bench.load(DocumentBench::golden("current.tornvale")), QStringList());
    const QStringList current = bench.programs();
    constexpr int kTexts = 10;
    ASSERT_EQ(current.size(), 3 * kTexts);
    EXPECT_FALSE(current.contains(QString())) << "a program has no code";
    EXPECT_EQ(current[3], "checked");
    EXPECT_EQ(current[kTexts + 3], "unchecked");
    EXPECT_EQ(current[5], "16000");
    EXPECT_EQ(bench.load(DocumentBench::golden(GetParam())), QStringList());
    EXPECT_EQ(bench.programs(), current);
}

TEST_P(DocumentForm, SaveLoadSaveGivesTheSameBytesApartFromTheTime) {
    DocumentBench bench;
    bench.open();
    bench.load(DocumentBench::golden(GetParam()));
    const QStringList saved = {"The file was saved."};
    EXPECT_EQ(bench.saveAs("first.tornvale"), saved);
    const QStringList programs = bench.programs();
    bench.load(bench.bytes("first.tornvale"));
    EXPECT_EQ(bench.programs(), programs);
    EXPECT_EQ(bench.saveAs("second.tornvale"), saved);
    EXPECT_EQ(withoutTime(bench.bytes("second.tornvale")), withoutTime(bench.bytes("first.tornvale")));
    EXPECT_TRUE(bench.bytes("first.tornvale").contains("\"3.3.0.5\"")) << "written in the current form";
}

INSTANTIATE_TEST_SUITE_P(Golden, DocumentForm,
                         testing::Values("current.tornvale", "middle.tornvale", "old.tornvale"),
                         [](const auto& form) { return std::string(form.param).substr(0, 3); });

TEST(Document, TheDemonstrationJobSurvivesSaveLoadSave) {
    DocumentBench bench;
    bench.open();
    EXPECT_EQ(bench.load(demonstration()), QStringList());
    bench.saveAs("first.tornvale");
    bench.load(bench.bytes("first.tornvale"));
    bench.saveAs("second.tornvale");
    EXPECT_EQ(withoutTime(bench.bytes("second.tornvale")), withoutTime(bench.bytes("first.tornvale")));
    // What the job says is what the window keeps: items, head and tools are the same objects.
    const QJsonObject shipped = QJsonDocument::fromJson(demonstration()).object();
    const QJsonObject saved = QJsonDocument::fromJson(bench.bytes("first.tornvale")).object();
    for (const char* zone : {"G54", "G55"}) {
        const auto of = [zone](const QJsonObject& root) {
            return root["ProgramsTreeWidget"]["class UserTopItemManager"][zone][zone].toArray();
        };
        ASSERT_EQ(of(saved).size(), of(shipped).size());
        for (int i = 0; i < of(saved).size(); ++i) {
            for (const char* key : {"itemName", "sourceCodeString", "userCoordinateSystemId", "markedString",
                                    "itemRPM", "checkState", "translationY"})
                EXPECT_TRUE(of(saved)[i].toObject()[key] == of(shipped)[i].toObject()[key])
                    << zone << i << key;
        }
    }
}

TEST(Document, AZoneThatTheMachineDoesNotHaveLosesItsItemsOnly) {
    DocumentBench bench;
    bench.open();
    EXPECT_EQ(bench.load(replaced(DocumentBench::golden("current.tornvale"), "\"G55\"", "\"G99\"")),
              QStringList());
    EXPECT_EQ(bench.programs().filter("G54").size(), 2);
    EXPECT_EQ(bench.programs().filter("G55").size(), 0);
    EXPECT_EQ(bench.programs().filter("G99").size(), 0);
}

// Each part adds up: 1.12.0.7 is 2207 as well, and takes the way of the old form.
TEST(Document, TheVersionChoosesTheForm) {
    DocumentBench bench;
    bench.open();
    const QByteArray old = DocumentBench::golden("old.tornvale");
    bench.load(old);
    const QStringList programs = bench.programs();
    bench.load(replaced(old, "2.2.0.7", "1.12.0.7"));
    EXPECT_EQ(bench.programs(), programs);
    bench.load(replaced(old, "2.2.0.7", "2.2.0.8"));
    EXPECT_EQ(bench.programs(), QStringList()) << "the current form looks one level deeper";
}

TEST(Document, OneThatIsCutAnywhereIsToldAndLeavesAnEmptyJob) {
    DocumentBench bench;
    bench.open();
    const QByteArray whole = DocumentBench::golden("current.tornvale");
    const QStringList told = {kNoJson + bench.file("document.tornvale")};
    for (int length = 0; length < whole.size() - 1; length += 1000) {
        bench.load(whole);
        EXPECT_EQ(bench.load(whole.left(length)), told) << length;
        EXPECT_EQ(bench.programs(), QStringList()) << length;
        EXPECT_EQ(bench.head("PartName"), "") << length;
        EXPECT_EQ(bench.head("LeftHandTime"), "0.0") << length;
        EXPECT_EQ(TORNVALE::ToolsManager::instance().installedTools().size(), 0) << length;
        EXPECT_EQ(bench.window().machine().findWorkCoordinateSystem("G54")->ucsList().size(), 1) << length;
        EXPECT_EQ(bench.window().documentPath(), "") << length;
    }
}

TEST(Document, TheDemonstrationJobCutAtEveryThousandthByteIsNone) {
    const QByteArray whole = demonstration();
    EXPECT_TRUE(readProject(whole).has_value());
    for (int length = 0; length < whole.size() - 1; length += 1000)
        EXPECT_FALSE(readProject(whole.left(length)).has_value()) << length;
}
