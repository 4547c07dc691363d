#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "BatchTestSupport.h"
#include "support/TestSupport.h"

// Whole jobs on the shipped five-axis machine.

namespace {

const char* const kSquare = "G0 X100 Y200 Z200 C0 A0\nG0 Z120\nG1 Z100 F3000\nG1 X160\nG1 Y260\nG0 Z200\n";
const char* const kFarAway = "G0 X9000 Y200 Z200 C0 A0\nG1 Z190 F3000\nG0 Z200\n";
const char* const kIntoTheTable = "G0 X600 Y600 Z200 C0 A0\nG1 Z-150 F3000\nG0 Z200\n";

QJsonObject endMill() {
    const auto point = [](int x, int z) { return QJsonArray{x, 0, z}; };
    return {{"Index", 0},
            {"SpindleNo", 1},
            {"ToolNo", 1},
            {"Length", 150},
            {"Diameter", 20},
            {"Rpm", 18000},
            {"Transform", QJsonArray{0, 0, 0, 0, 0, 0}},
            {"InstallationName", "X->Z->C->A"},
            {"SpName", "T1"},
            {"ContourPoints", QJsonArray{point(0, 0), point(10, 0), point(10, -150), point(0, -150)}}};
}

QJsonObject isoItem(const char* code, bool isChecked = true, const char* name = "userCodeItem0") {
    return {{"itemName", name},  {"sourceCodeString", code}, {"userCoordinateSystemId", 0},
            {"tool", endMill()}, {"itemRPM", 16000},         {"checkState", isChecked},
            {"type", 1001}};
}

QByteArray project(const QJsonArray& left, const QJsonArray& right = {}) {
    const auto group = [](const char* name, const QJsonArray& items) { return QJsonObject{{name, items}}; };
    const QJsonObject groups{{"G54", group("G54", left)}, {"G55", group("G55", right)}};
    return QJsonDocument(
               QJsonObject{
                   {"version", "3.3.0.5"},
                   {"StandardCorvane_4S", QJsonObject{{"toolList", QJsonObject{{"tool0", endMill()}}}}},
                   {"ProgramsTreeWidget", QJsonObject{{"class UserTopItemManager", groups}}}})
        .toJson();
}

class Project : public Batch {
  protected:
    void SetUp() override {
        Batch::SetUp();
        write("job.tornvale", project({isoItem(kSquare), isoItem(kFarAway, false)}, {isoItem(kSquare)}));
    }

    [[nodiscard]] Finished runShipped(const QStringList& arguments) const {
        return runBare(QStringList{"--data", shippedInstallation()} + arguments);
    }
    /// What standard error says beside the question about the tools, which every job with tools brings.
    static QString said(const Finished& result) {
        QStringList lines = result.err.split('\n', Qt::SkipEmptyParts);
        EXPECT_TRUE(!lines.isEmpty() && lines.takeFirst().endsWith("(answered with No)"))
            << result.err.toStdString();
        return lines.join('\n');
    }
};

}  // namespace

TEST_F(Project, Items_ComeInTreeOrderWithTheirTexts) {
    const Finished result = runShipped({"items", "job.tornvale"});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(said(result), QString());
    const QJsonArray items = object(result)["items"].toArray();
    ASSERT_EQ(items.size(), 3);
    const QJsonObject first = items[0].toObject();
    EXPECT_EQ(first.keys(), (QStringList{"IsoCode", "LeadIn", "LeadOut", "Time", "WorkCode", "chain",
                                         "checked", "group", "inLimits", "name", "type"}));
    EXPECT_EQ(first["group"].toString(), QString("G54"));
    EXPECT_EQ(first["name"].toString(), QString("userCodeItem0"));
    EXPECT_EQ(first["type"].toInt(), 1001);
    EXPECT_EQ(first["chain"].toString(), QString("X->Z->C->A;Y"));
    EXPECT_TRUE(first["checked"].toBool());
    EXPECT_TRUE(first["inLimits"].toBool());
    EXPECT_TRUE(first["WorkCode"].toString().startsWith("G1 X100"))
        << first["WorkCode"].toString().toStdString();
    // one line for each period of 4 ms, counted for each text with its end
    int lines = 0;
    for (const char* text : {"LeadIn", "IsoCode", "LeadOut"})
        lines += first[QLatin1String(text)].toString().count('\n') + 1;
    EXPECT_NEAR(first["Time"].toDouble(), lines * 0.004, 1e-6);
    EXPECT_FALSE(items[1].toObject()["checked"].toBool());
    EXPECT_EQ(items[1].toObject()["group"].toString(), QString("G54"));
    EXPECT_EQ(items[2].toObject()["group"].toString(), QString("G55"));
    EXPECT_EQ(items[2].toObject()["chain"].toString(), QString("X->Z->C->A;V"));
}

TEST_F(Project, ItemAtFault_EndsItemsWithStatusOne) {
    write("far.tornvale", project({isoItem(kSquare), isoItem(kFarAway, true, "far away")}));
    const Finished far = runShipped({"items", "far.tornvale"});
    EXPECT_EQ(far.status, 1);
    EXPECT_EQ(said(far),
              QString("tornvale-batch: far.tornvale: far away of G54 leaves the limits of the machine"));
    EXPECT_EQ(object(far)["items"].toArray().size(), 2);
    EXPECT_FALSE(object(far)["items"].toArray()[1].toObject()["inLimits"].toBool());

    write("empty.tornvale", project({}, {isoItem("G2 X1 Y1"), isoItem(kSquare)}));
    const Finished empty = runShipped({"items", "empty.tornvale"});
    EXPECT_EQ(empty.status, 1);
    EXPECT_TRUE(said(empty).startsWith("tornvale-batch: empty.tornvale: userCodeItem0 of G55 has no code"))
        << empty.err.toStdString();
    EXPECT_EQ(object(empty)["items"].toArray()[0].toObject()["IsoCode"].toString(), QString());
}

TEST_F(Project, Generate_TakesTheFirstPatternOrTheNamedOne) {
    const Finished left = runShipped({"generate", "job.tornvale"});
    EXPECT_EQ(left.status, 0) << left.err.toStdString();
    EXPECT_TRUE(left.out.startsWith(";LEFT TABLE ONLY\nG90 G71\nG54\n"));
    EXPECT_FALSE(left.out.contains(" V")) << "the other table stands still";
    const int lines = left.out.count('\n');
    EXPECT_EQ(said(left), QString("tornvale-batch: job.tornvale: %1 lines, %2 s, standard output")
                              .arg(lines)
                              .arg(lines * 0.004, 0, 'f', 3));

    const Finished both =
        runShipped({"--quiet", "generate", "job.tornvale", "--pattern", "consecutive", "-o", "both.nc"});
    EXPECT_EQ(both.status, 0);
    EXPECT_EQ(both.out, QByteArray());
    const QByteArray file = read("both.nc");
    EXPECT_TRUE(file.startsWith(";LEFT TABLE, THEN RIGHT TABLE\n"));
    EXPECT_TRUE(file.contains(" V"));
    EXPECT_GT(file.count('\n'), lines);
    EXPECT_TRUE(said(both).endsWith(" s, both.nc")) << both.err.toStdString();
    // what the machine gets can be played, and keeps the limits of the axes
    EXPECT_EQ(runShipped({"simulate", "both.nc"}).status, 0);
    for (const char* chain : {"X->Z->C->A;Y", "X->Z->C->A;V"})
        EXPECT_EQ(runShipped({"audit", "both.nc", "--chain", chain}).status, 0) << chain;
}

TEST_F(Project, GenerateThatCannotBe_LeavesTheFileAsItWas) {
    write("out.nc", "before");
    const Finished pattern =
        runShipped({"generate", "job.tornvale", "--pattern", "sideways", "-o", "out.nc"});
    EXPECT_EQ(pattern.status, 2);
    EXPECT_TRUE(said(pattern).startsWith("tornvale-batch: --pattern: sideways is no pattern of ") &&
                said(pattern).endsWith("expected one of left, right, alternately, consecutive"))
        << pattern.err.toStdString();
    write("far.tornvale", project({isoItem(kSquare), isoItem(kFarAway)}));
    const Finished far = runShipped({"generate", "far.tornvale", "-o", "out.nc"});
    EXPECT_EQ(far.status, 1);
    EXPECT_EQ(said(far), QString("tornvale-batch: far.tornvale: G54 Item:1 over limited."));
    EXPECT_EQ(read("out.nc"), QByteArray("before"));
    EXPECT_EQ(runShipped({"generate", "job.tornvale", "-o", "absent/out.nc"}).status, 2);
    EXPECT_EQ(runShipped({"generate", "far.tornvale", "--pattern", "right", "-o", "out.nc"}).status, 0)
        << "the table that is over its limit takes no part";
}

TEST_F(Project, Simulate_PlaysAllGroups) {
    const Finished good = runShipped({"simulate", "job.tornvale"});
    EXPECT_EQ(good.status, 0) << good.err.toStdString();
    EXPECT_EQ(object(good)["collisions"].toArray(), QJsonArray());
    // both tables, one line for each period at the least
    int lines = 0;
    for (const QJsonValue& item : object(runShipped({"items", "job.tornvale"}))["items"].toArray())
        lines += item.toObject()["checked"].toBool() ? item.toObject()["IsoCode"].toString().count('\n') : 0;
    EXPECT_GT(lines, 1000);
    EXPECT_GT(object(good)["lines"].toInt(), lines);

    write("dip.tornvale", project({isoItem(kIntoTheTable)}));
    const Finished dip = runShipped({"simulate", "--stop-at-first", "dip.tornvale"});
    EXPECT_EQ(dip.status, 1);
    EXPECT_TRUE(said(dip).contains("collision: X->Z->C->A->T1 touches Y")) << dip.err.toStdString();
}

TEST_F(Project, SpindleThatTheMachineLacks_IsNamed) {
    QJsonObject item = isoItem(kSquare);
    QJsonObject tool = endMill();
    tool["SpindleNo"] = 9;
    item["tool"] = tool;
    write("foreign.tornvale", project({item}));
    for (const char* command : {"generate", "simulate", "picture"}) {
        const Finished result = runShipped({command, "foreign.tornvale"});
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_EQ(result.out, QByteArray()) << command;
        EXPECT_TRUE(said(result).contains("userCodeItem0 of G54 needs the spindle T9"))
            << result.err.toStdString();
    }
}

TEST_F(Project, Picture_ShowsTheJob) {
    const Finished result = runShipped({"picture", "job.tornvale", "--size", "320x200", "--line", "500"});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(QImage::fromData(result.out, "PNG").size(), QSize(320, 200));
    const Finished behind = runShipped({"picture", "job.tornvale", "--line", "9999999"});
    EXPECT_EQ(behind.status, 3);
    EXPECT_TRUE(said(behind).contains("expected at least 9999999")) << behind.err.toStdString();
    const Finished zone = runShipped({"picture", "job.tornvale", "--wcs", "G54"});
    EXPECT_EQ(zone.status, 2);
    EXPECT_TRUE(said(zone).startsWith("tornvale-batch: --wcs: is for machine code only"));
}

TEST_F(Project, WhatIsNoProject_EndsWithStatusThree) {
    const QByteArray whole = read("job.tornvale");
    for (const QByteArray& content :
         {QByteArray(), QByteArray("G1 X0\n"), QByteArray("{}"), QByteArray("[]"),
          QByteArray("{\"version\":\"3.3.0.5\"}"), whole.left(whole.size() / 2)}) {
        write("bad.tornvale", content);
        for (const char* command : {"items", "generate"})
            expectError({command, "bad.tornvale"}, 3, "bad.tornvale", "is no project");
    }
    write("bad.tornvale", "\xEF\xBB\xBF{");
    for (const char* command : {"simulate", "picture"})
        expectError({command, "bad.tornvale"}, 3, "bad.tornvale", "is no project");
    expectError({"items", "absent.tornvale"}, 3, "absent.tornvale", "does not exist");
}

TEST_F(Project, WithoutAPostProcessor_NothingIsGenerated) {
    const Finished result = run({"generate", "job.tornvale"});
    EXPECT_EQ(result.status, 4);
    EXPECT_TRUE(result.err.contains("gives no pattern")) << result.err.toStdString();
    EXPECT_EQ(result.out, QByteArray());
}
