#include "nc/UserPostProcessor.h"

#include <gtest/gtest.h>

#include "OutputTestSupport.h"
#include "nc/machineStatePreprocessing.h"

using namespace TORNVALE;

namespace {

const char* const kTwoSlots =
    "<Configulation Name='both' NickName='Both' Prefix='B_'><Line>G90</Line><Coordinate> G54 </Coordinate>"
    "<Line>M86</Line><Coordinate>G55</Coordinate><Line> M2</Line></Configulation>"
    "<Configulation Name='fixed'><Line>G90</Line><Line>M2</Line></Configulation>"
    "<Configulation Name='turned'><Coordinate>G55</Coordinate><Coordinate>G54</Coordinate></Configulation>";

QByteArray sequential(const QByteArray& more = "UserHeaderTail='true'") {
    return postProcessorFile(more, oneSlot() + kTwoSlots);
}

}  // namespace

TEST(UserPostProcessor, WithoutPattern_GroupsStandBehindOneAnother) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    PlainGroup right("G55");
    left.add(kLeft, "G1 Y1 F5000\nG1 Y2 F5000\n");
    left.setEnds(kLeft, "G1X0Y9F50000", "G1X5Y5F50000");
    right.add(kRight, "G1 V1 F5000\n");
    right.setEnds(kRight, "G1X1V9F50000", "G1X5V5F50000");
    // Each chain is followed by a line feed, and so is each segment; the last chain returns to the start.
    EXPECT_EQ(bench.program({&left, &right}),
              QString("G1X0Y9F50000\nG1 Y1 F5000\nG1 Y2 F5000\nG1X5Y5F50000\n\n\n"
                      "G1X1V9F50000\nG1 V1 F5000\nG1X5V5F50000\nG1 X0.000 F50000\n\n\n"));
}

TEST(UserPostProcessor, Pattern_SetsProcessedSegmentsIntoItsSlots) {
    OutputBench bench(sequential("Rapid=';R' Linear=';L' RapidMovement='G0' UserHeaderTail='true'"));
    PlainGroup left("G54");
    PlainGroup right("G55");
    left.add(kLeft, "G1 Y1.000 X2.000  F5000\n");
    left.setEnds(kLeft, "G1 X0 Y9 F50000", "G1 X5 Y5 F50000");
    right.add(kRight, "G1 V1.000  F5000\n");
    right.setEnds(kRight, "G1 X1 V9 F50000", "G1 X0 V5 F50000");
    EXPECT_EQ(bench.program({&left, &right}, "both"),
              QString("G90\n;R\nG0 X0 Y9\n;L\nG1 X2.000 Y1.000 F5000\n;R\nG0 X5 Y5\n"
                      "M86\n;R\nG0 X1 V9\n;L\nG1 V1.000 F5000\n;R\nG0 X0 V5\nG0 X0.000\n M2\n"));
}

TEST(UserPostProcessor, SlotsInAnotherOrder_TakeTheSegmentsOfTheirName) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    PlainGroup right("G55");
    left.add(kLeft, "M3\n");
    left.setEnds(kLeft, {}, {});
    right.add(kRight, "M4\n");
    right.setEnds(kRight, {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&left, &right}, "turned"), QString("\nM4\n\nM3\n"));
}

TEST(UserPostProcessor, SlotTwice_TakesTheGroupsOfTheNameOneAfterTheOther) {
    OutputBench bench(postProcessorFile(
        "",
        "<Configulation Name='p'><Coordinate>G54</Coordinate><Coordinate>G54</Coordinate></Configulation>"));
    PlainGroup group("G54");
    group.add(kLeft, "M3\n");
    group.setEnds(kLeft, {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&group, &group}, "p"), QString("\nM3\n\nM3\n"));
}

TEST(UserPostProcessor, SlotWithoutItsGroup_StaysEmptyAndIsWarnedOf) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "M3\n");
    left.setEnds(kLeft, {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&left}, "both"), QString("G90\n\nM3\nM86\n M2\n"));
    EXPECT_TRUE(log.contains("No program group for the work coordinate system G55"));
}

TEST(UserPostProcessor, PatternWithoutCoordinate_WritesOnlyItsFixedLines) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "G1 Y1 F5000\n");
    left.setEnds(kLeft, {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&left}, "fixed"), QString("G90\nM2\n"));
}

TEST(UserPostProcessor, NoPatternChosen_GivesNothing) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "G1 Y1 F5000\n");
    left.setEnds(kLeft, "G1 Y0 F50000", "G1 Y0 F50000");
    QString out = "old";
    bench.processor().ProcessGroups(out, {&left}, true);
    EXPECT_EQ(out, QString());
    EXPECT_TRUE(bench.processor().pattern().isNull());
    EXPECT_TRUE(bench.processor().GetCoordinateList().isEmpty());
}

TEST(UserPostProcessor, NoGroups_GiveTheFixedLines) {
    OutputBench bench(sequential());
    const LogCapture log;
    EXPECT_EQ(bench.program({}, "both"), QString("G90\nM86\n M2\n"));
    EXPECT_EQ(bench.program({nullptr}), QString());
}

TEST(UserPostProcessor, CheckedItems_AreSortedByTheirChain) {
    OutputBench bench(sequential());
    PlainGroup group("G54");
    group.add(kLeft, "a\n");
    group.add(kRight, "b\n");
    group.add(kLeft, "never\n", false);
    group.add(kLeft, "c\n");
    group.setEnds(kLeft, "G1 Y0 F5", {});
    group.setEnds(kRight, "G1 V0 F5", {});
    const QString text = bench.program({&group});
    ASSERT_EQ(bench.plans.size(), 2U);
    EXPECT_EQ(bench.plans[0].chain, QString(kLeft));
    EXPECT_EQ(bench.plans[0].items, (QList<ProgramItem*>{group.items[0].get(), group.items[3].get()}));
    EXPECT_EQ(bench.plans[1].items, (QList<ProgramItem*>{group.items[1].get()}));
    EXPECT_EQ(text.left(text.indexOf("G1 V0 F5")), QString("G1 Y0 F5\na\nc\n\nG1 Y0.000 F50000\n\n"));
    EXPECT_FALSE(text.contains("never"));
}

TEST(UserPostProcessor, Planner_GetsSequencesAndActionsOfItsChain) {
    OutputBench bench(
        "<root><Regulation EntrySequence='3;;1->x->2' ExitSequence='1' "
        "UserHeaderTail='true'/><PrePostActions>"
        "<Chain Name=' X->Z->C->A;V '><PreAction><Item>M80</Item><Item>M84</Item></PreAction>"
        "<PostAction><Item>M85</Item></PostAction></Chain><Chain "
        "Name='X->Z->C->A;V'/></PrePostActions></root>");
    PlainGroup group("G54");
    group.add(kLeft, "a\n");
    group.add(kRight, "b\n");
    group.setEnds(kLeft, "G1 Y0 F5", "G1 Y1 F5");
    group.setEnds(kRight, "G1 V0 F5", "G1 V1 F5");
    bench.program({&group});
    ASSERT_EQ(bench.plans.size(), 2U);
    EXPECT_EQ(bench.plans[0].preAction, QString());
    EXPECT_EQ(bench.plans[1].preAction, QString("M80\nM84\n"));
    EXPECT_EQ(bench.plans[1].postAction, QString("M85\n"));
    EXPECT_EQ(bench.plans[1].entrySequences, (AxisSequences{{3}, {1, 2}}));
    EXPECT_EQ(bench.plans[1].exitSequences, (AxisSequences{{1}}));
    EXPECT_EQ(bench.plans[0].header, QString("G1 Y0 F5"));
}

TEST(UserPostProcessor, Coordinates_LeadFromSegmentToSegmentAndBackToTheStart) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    PlainGroup right("G55");
    left.add(kLeft, "G1 X10 Y1 F5000\n");
    left.setEnds(kLeft, "G1 X1 Z2 Y3 F50000", "G1 X4 Z5 Y6 F50000");
    right.add(kRight, "G1 X20 V1 F5000\n");
    right.setEnds(kRight, "G1 X7 Z8 V9 F50000", "G1 X4 Z5 V6 F50000");
    bench.program({&left, &right});
    ASSERT_EQ(bench.plans.size(), 2U);
    EXPECT_EQ(bench.plans[0].startCoordinates, (ChainPosition{{"X", 1}, {"Z", 2}, {"Y", 3}}));
    EXPECT_EQ(bench.plans[0].endCoordinates, (ChainPosition{{"X", 7}, {"Z", 8}, {"V", 9}}));
    EXPECT_EQ(bench.plans[0].tail, QString("G1 X4 Z5 Y6 F50000"));
    // What the first segment left in place, and for the axis that it has not moved the header.
    EXPECT_EQ(bench.plans[1].startCoordinates, (ChainPosition{{"X", 4}, {"Z", 5}, {"Y", 6}, {"V", 9}}));
    EXPECT_EQ(bench.plans[1].endCoordinates, (ChainPosition{{"X", 1}, {"Z", 2}, {"Y", 3}}));
    EXPECT_EQ(bench.plans[1].tail, QString("G1 X4 Z5 V6 F50000\nG1 X1.000 Z2.000 F50000"));
}

TEST(UserPostProcessor, RunOfOneSegment_ReturnsToItsStart) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "G1 X10 Y1 F5000\n");
    left.setEnds(kLeft, "G1 X1 Y3 F50000", "G1 X4 Y6 F50000");
    bench.program({&left});
    ASSERT_EQ(bench.plans.size(), 1U);
    EXPECT_EQ(bench.plans[0].tail, QString("G1 X4 Y6 F50000\nG1 X1.000 Y3.000 F50000"));
}

TEST(UserPostProcessor, StartOfTheRun_IsTheFirstLineThatWasPlanned) {
    OutputBench bench(sequential());
    bench.processor().setPlanner([&bench](const ChainPlan& plan) {
        bench.plans.push_back(plan);
        return QString("M6 T1\nG1 X42 F50000\nG1 X43 F5\n");
    });
    PlainGroup left("G54");
    PlainGroup right("G55");
    left.add(kLeft, "");
    left.setEnds(kLeft, "G1 X1 F50000", "G1 X4 F50000");
    right.add(kRight, "");
    right.setEnds(kRight, "G1 X7 F50000", "G1 X4 F50000");
    bench.program({&left, &right});
    EXPECT_EQ(bench.plans[1].endCoordinates, (ChainPosition{{"X", 42}}));
    EXPECT_EQ(bench.plans[1].startCoordinates, (ChainPosition{{"X", 43}}));
}

TEST(UserPostProcessor, AuxiliaryAxis_GoesToThePlannerAndIntoTheCoordinates) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.axis = std::make_shared<AuxiliaryAxis>();
    left.axis->name = "W";
    left.add(kLeft, "G1 X10 W1 F5000\n");
    left.setEnds(kLeft, "G1 X1 W3 F50000", "G1 X4 W6 F50000");
    const QString text = bench.program({&left}, "p");
    ASSERT_EQ(bench.plans.size(), 1U);
    EXPECT_EQ(bench.plans[0].auxiliaryAxis, left.axis);
    EXPECT_EQ(bench.plans[0].endCoordinates, (ChainPosition{{"X", 1}, {"W", 3}}));
    EXPECT_TRUE(text.contains("G1 X1.000 W3.000 F50000")) << text.toStdString();
}

TEST(UserPostProcessor, EachRun_StartsAnew) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "G1 X10 Y1 F5000\n");
    left.setEnds(kLeft, "G1 X1 Y3 F50000", "G1 X4 Y6 F50000");
    const QString first = bench.program({&left}, "p");
    EXPECT_EQ(bench.program({&left}, "p"), first);
}

// --- Tandem ---

TEST(UserPostProcessor, Tandem_DrivesTheChainsOfAGroupAtOnce) {
    OutputBench bench(
        postProcessorFile("MultiChain='1' UserHeaderTail='true' Rapid=';R' Linear=';L'", oneSlot()));
    PlainGroup group("G54");
    group.add("Y", "(DLY,1)\nG1 Y1 F5000\nG1 Y2 F5000\nM5\n");
    group.add("V", "(DLY,1)\nG1 V1 F5000\nG1 V2 F5000\nG1 V3 F5000\nG1 V4 F5000\n");
    group.setEnds("Y", "G1 Y0 F50000", "G1 Y0 F50000");
    group.setEnds("V", "G1 V0 F50000", "G1 V0 F50000");
    EXPECT_EQ(
        bench.program({&group}, "p"),
        QString(";R\nG1 Y0 V0 F50000\n(DLY,1)\n;L\nG1 Y1 V1 F5000\nG1 Y2 V2 F5000\nM5\nG1 V3 F5000\n;R\n"
                "G1 Y0 V4 F50000\nG1 Y0.000 V0 F50000\nG1 V0.000 F50000\n"));
}

TEST(UserPostProcessor, TandemOfOneChain_IsItsLines) {
    OutputBench bench(postProcessorFile("MultiChain='1' UserHeaderTail='true'", oneSlot()));
    PlainGroup group("G54");
    group.add("Y", "G1 Y1 F5000\n");
    group.setEnds("Y", {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&group}), QString("G1 Y1 F5000\n\n"));
    PlainGroup empty("G55");
    EXPECT_EQ(bench.program({&empty}), QString("\n"));
}

TEST(UserPostProcessor, OtherMultiChain_YieldsEmptySegmentsWithoutWarning) {
    OutputBench bench(postProcessorFile("MultiChain='2' UserHeaderTail='true'", oneSlot()));
    PlainGroup group("G54");
    group.add(kLeft, "G1 Y1 F5000\n");
    group.setEnds(kLeft, "G1 Y0 F50000", "G1 Y0 F50000");
    const LogCapture log;
    EXPECT_EQ(bench.program({&group}, "p"), QString());
    EXPECT_EQ(bench.program({&group}), QString("\n"));
    for (const LogCapture::Line& line : log.lines())
        EXPECT_NE(line.type, QtWarningMsg) << line.text.toStdString();
}

// --- Header and tail ---

// A program that lacks one of its groups looks whole and is not.
TEST(UserPostProcessor, SegmentThatNoTextCanHold_LeavesNoProgram) {
    constexpr unsigned kLongPeriod_ms = 2'000'000'000;  // a tandem has a line for each ms
    OutputBench bench(postProcessorFile("MultiChain=\"1\"",
                                        "<Configulation Name=\"p\"><Line>%</Line>"
                                        "<Coordinate>G54</Coordinate>"
                                        "<Coordinate>G55</Coordinate></Configulation>"));
    PlainGroup left("G54");
    left.add(kLeft, "G1 X1.000 F5000\n");
    PlainGroup right("G55");
    right.add(kRight, "G1 X2.000 F5000\n");
    EXPECT_TRUE(bench.program({&left, &right}, "p").contains("X2.000"));
    right.add("Z", "G1 Z1.000 F5000\n");
    bench.setPeriod(kLongPeriod_ms);
    const LogCapture log;
    EXPECT_EQ(bench.program({&left, &right}, "p"), QString());
    EXPECT_TRUE(log.contains("too long"));
    EXPECT_EQ(bench.program({&left, &right}), QString());
    right.items.pop_back();
    EXPECT_TRUE(bench.program({&left, &right}, "p").contains("X2.000")) << "the next run is another one";
}

TEST(UserPostProcessor, PlannedChainThatIsEmpty_LeavesNoProgram) {
    OutputBench bench(postProcessorFile("MultiChain=\"0\"",
                                        "<Configulation Name=\"p\"><Line>%</Line>"
                                        "<Coordinate>G54</Coordinate></Configulation>"));
    PlainGroup left("G54");
    left.add(kLeft, "G1 X1.000 F5000\n");
    bench.processor().setPlanner([](const ChainPlan&) { return QString(); });
    EXPECT_EQ(bench.program({&left}, "p"), QString());
    left.items[0]->code.clear();  // nothing to plan
    const LogCapture log;
    EXPECT_EQ(bench.program({&left}, "p"), "%\n");
    EXPECT_FALSE(log.contains("too long"));
}

TEST(UserPostProcessor, WithoutUserHeaderTail_ProgramsStartAndEndWhereTheItemsDo) {
    OutputBench bench(postProcessorFile("UserHeaderTail='false'", oneSlot()));
    PlainGroup group("G54");
    PlainItem& first = group.add(kLeft, "G1 X1 Y1 F5000\n");
    PlainItem& last = group.add(kLeft, "G1 X2 Y1 F5000\n");
    first.tool.record().toolNo = 3;
    last.tool.record().toolNo = 12;
    group.setEnds(kLeft, "G1 X100 F50000", "G1 X200 F50000", "G1 X1 F50000", "G1 X2 F50000");
    EXPECT_EQ(bench.program({&group}, "p"),
              QString("\nG1 X1 F50000 t3.000\n\nG1 X1 Y1 F5000\nG1 X2 Y1 F5000\n\nG1 X2 F50000\n"
                      "G1 X1.000 F50000 t12.000\n"));
}

TEST(UserPostProcessor, WithoutUserHeaderTail_TandemEndsWithTheToolOfTheLongestChain) {
    OutputBench bench(postProcessorFile("UserHeaderTail='false' MultiChain='1'", oneSlot()));
    PlainGroup group("G54");
    group.add("Y", "G1 Y1 F5000\nG1 Y2 F5000\nG1 Y3 F5000\n").tool.record().toolNo = 7;
    group.add("V", "G1 V1 F5000\n").tool.record().toolNo = 8;
    group.setEnds("Y", {}, {}, {}, {});
    group.setEnds("V", {}, {}, {}, {});
    const LogCapture log;
    EXPECT_EQ(bench.program({&group}, "p"),
              QString("\n\nG1 Y1 V1 F5000 t7.000\nG1 Y2 F5000\nG1 Y3 F5000 t7.000\n").mid(1));
}

TEST(UserPostProcessor, HeaderTail_IsThatOfTheCurrentGroup) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "a\n");
    left.setEnds(kLeft, "G1 Y0 F5", "G1 Y1 F5", "G1 Y2 F5", "G1 Y3 F5");
    QStringList found;
    bench.processor().setPlanner([&](const ChainPlan& plan) {
        QString header;
        QString tail;
        bench.processor().GetUserHeaderTail(plan.chain, header, tail);
        found << header << tail;
        bench.processor().GetItemHeaderTail(plan.chain, header, tail);
        found << header << tail;
        return QString();
    });
    const LogCapture log;
    bench.program({&left});
    EXPECT_EQ(found, (QStringList{"G1 Y0 F5", "G1 Y1 F5", "G1 Y2 F5", "G1 Y3 F5"}));
    // Outside a run there is no group.
    QString header = "old";
    QString tail = "old";
    bench.processor().GetUserHeaderTail(kLeft, header, tail);
    EXPECT_EQ(header + tail, QString());
}

TEST(UserPostProcessor, ChainWithoutRecord_IsWarnedOf) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "G1 Y1 F5\n");
    const LogCapture log;
    EXPECT_EQ(bench.program({&left}), QString("G1 Y1 F5\n\n\n"));
    EXPECT_TRUE(log.contains(QString("No header and tail for the chain ") + kLeft));
}

TEST(UserPostProcessorDeathTest, GroupWithoutItsList_EndsTheProcess) {
    OutputBench bench(sequential());
    PlainGroup left("G54");
    left.add(kLeft, "a\n");
    left.list.reset();
    EXPECT_FATAL(bench.program({&left}), "HeaderTailManager is nullptr");
}

// --- Coordinates of a segment ---

TEST(SegmentCoordinates, FirstAndLastMotionLines_AreRead) {
    OutputBench bench(sequential());
    WorkCoodinateSegment segment;
    segment.chains.append(ChainRecord{kLeft, {}, "M5\nG1 X1 Y2 F5\nG1 X3 Y4 F5\n\n", {}, {}});
    segment.chains.append(ChainRecord{kRight, {}, "G1 X5 V6 F5\n", {}, {}});
    const LogCapture log;
    EXPECT_EQ(bench.processor().GetStartCoordinates(segment), (ChainPosition{{"X", 1}, {"Y", 2}, {"V", 6}}));
    EXPECT_EQ(bench.processor().GetEndCoordinates(segment), (ChainPosition{{"X", 5}, {"Y", 4}, {"V", 6}}));
    EXPECT_TRUE(log.lines().empty());
}

TEST(SegmentCoordinates, SegmentNotPlanned_CountsItsHeaderAndTail) {
    OutputBench bench(sequential());
    WorkCoodinateSegment segment;
    segment.chains.append(ChainRecord{kLeft, {}, {}, "G1X1Y2F5", "G1X3Y4F5"});
    EXPECT_EQ(bench.processor().GetStartCoordinates(segment), (ChainPosition{{"X", 1}, {"Y", 2}}));
    EXPECT_EQ(bench.processor().GetEndCoordinates(segment), (ChainPosition{{"X", 3}, {"Y", 4}}));
}

TEST(SegmentCoordinates, NoMotionLine_WarnsAndIsEmpty) {
    OutputBench bench(sequential());
    WorkCoodinateSegment segment;
    segment.chains.append(ChainRecord{kLeft, {}, "M5\n\n", {}, {}});
    const LogCapture log;
    EXPECT_EQ(bench.processor().GetStartCoordinates(segment), ChainPosition());
    EXPECT_EQ(bench.processor().GetEndCoordinates(segment), ChainPosition());
    EXPECT_EQ(log.count("frontLine is empty."), 1);
    EXPECT_EQ(log.count("backLine is empty."), 1);
    ASSERT_EQ(log.lines().size(), 2U);
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_EQ(log.lines()[1].type, QtWarningMsg);
}

// --- The machine's own planner ---

TEST(UserPostProcessor, MachinePlanner_WritesTheBodiesAsTheyAre) {
    OutputBench bench(sequential());
    bench.useMachinePlanner();
    PlainGroup left("G54");
    PlainItem& item = left.add(kLeft,
                               "G1 X10.000 Y1.000 Z5.000 C0.000 A0.000  F5000\n"
                               "G1 X11.000 Y1.000 Z5.000 C0.000 A0.000  F5000\n");
    item.leadIn =
        "G1 X10.000 Y1.000 Z90.000 C0.000 A0.000 F50000\nG1 X10.000 Y1.000 Z5.000 C0.000 A0.000 F50000\n";
    item.leadOut =
        "G1 X11.000 Y1.000 Z5.000 C0.000 A0.000 F50000\nG1 X11.000 Y1.000 Z90.000 C0.000 A0.000 F50000\n";
    item.tool.record().spindleNo = 1;
    left.setEnds(kLeft, "G1 X0.000 Y0.000 Z100.000 C0.000 A0.000 F50000",
                 "G1 X0.000 Y0.000 Z100.000 C0.000 A0.000 F50000");
    const QString plain = bench.program({&left});
    EXPECT_TRUE(plain.contains(item.code)) << plain.toStdString();
    EXPECT_TRUE(plain.contains("M3 S12000\n"));
    const QString text = bench.program({&left}, "p");
    EXPECT_EQ(text.count("M3 S12000\n"), 1);  // ten equal lines are one
    EXPECT_TRUE(text.contains("G1 X10.000 Z5.000 C0.000 A0.000 Y1.000 F5000\n"));
    EXPECT_TRUE(text.trimmed().endsWith("G1 X0.000 Z100.000 C0.000 A0.000 Y0.000 F50000"))
        << text.toStdString();
}
