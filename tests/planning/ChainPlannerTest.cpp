#include "nc/calc/ChainPlanner.h"

#include <gtest/gtest.h>

#include "planning/PlanningTestSupport.h"
#include "support/TestSupport.h"

// The order of a program's pieces, read as a list: a block of ten lines is one entry, a re-timed way is the
// points that were given to the planner, with the flag in front.

namespace {

/// A tool on a spindle, and a program made of short items: the body of item n is the lines "bn".
class Planner : public ::testing::Test {
  protected:
    Planner() {
        job_.header = QStringLiteral("header");
        job_.tail = QStringLiteral("tail");
        job_.homeLine = QStringLiteral("G1 X10 Y20 Z150 C0 A0 F7");
        job_.letters = machine_->axisMap(planningtest::kChain, false);
        job_.period_s = 0.004;
        job_.interpolationTime_ms = 4;
        job_.preLaunchTime_s = 0.004;
        job_.retime = [](const QString& code, bool densePoint) {
            QString text = densePoint ? QStringLiteral("dense:") : QStringLiteral("plain:");
            for (const QString& line : planningtest::linesOf(code))
                text += QLatin1Char(' ') + line;
            return text + QLatin1Char('\n');
        };
    }

    PlanItem& add(int spindle, int tool, double rpm = 6000) {
        const QString n = QString::number(items_.size());
        return put(spindle, tool, {nullptr, rpm, false, "in" + n, "out" + n, "b" + n + "\nb" + n + "\n"});
    }
    PlanItem& addCurve(int spindle, int tool) {
        const QString n = QString::number(items_.size());
        return put(spindle, tool, {nullptr, 0, true, "c" + n, "d" + n, "c" + n + "\nd" + n});
    }

    QStringList planned(bool startsEarly) {
        ChainPlanner planner(job_, spindles_, diagnostics_);
        return pieces(startsEarly ? planner.PlanningWithPreBoot(items_) : planner.planPlainly(items_));
    }
    /// The fatal text that planning ends with; no program comes out.
    QString fatal(bool startsEarly) {
        EXPECT_EQ(planned(startsEarly), QStringList());
        for (const Diagnostic& entry : diagnostics_.entries) {
            if (entry.severity == Severity::Fatal)
                return entry.text;
        }
        return {};
    }

    ChainJob& job() { return job_; }
    std::vector<PlanItem>& items() { return items_; }
    Diagnostics& diagnostics() { return diagnostics_; }
    MachineDescription& machine() { return *machine_; }

  private:
    PlanItem& put(int spindle, int tool, PlanItem item) {
        tools_.emplace_back();
        tools_.back().spindleNo = spindle;
        tools_.back().toolNo = tool;
        item.tool = &tools_.back();
        items_.push_back(std::move(item));
        return items_.back();
    }

    static QStringList pieces(const QString& text) {
        QStringList list = text.split(QLatin1Char('\n'));
        if (!list.isEmpty() && list.back().isEmpty())
            list.removeLast();
        QStringList result;
        for (int i = 0; i < list.size(); ++i) {
            int count = 1;
            while (count < 10 && i + count < list.size() && list[i + count] == list[i])
                ++count;
            result << (count == 10 ? QStringLiteral("10x ") + list[i] : list[i]);
            i += count == 10 ? 9 : 0;
        }
        return result;
    }

    std::unique_ptr<MachineDescription> machine_ = planningtest::planningMachine();
    std::deque<ToolRecord> tools_;
    std::vector<PlanItem> items_;
    ChainJob job_;
    SpindleModel spindles_{machine_->spindles, machine_->userCommand.delay};
    Diagnostics diagnostics_;
};

}  // namespace

TEST_F(Planner, NoItemsGiveNoText) {
    job().preAction = QStringLiteral("pre");
    EXPECT_EQ(planned(true), QStringList());
    EXPECT_EQ(planned(false), QStringList());
}

TEST_F(Planner, AnItemWithoutAMagazineComesFromTheHeaderAndGoesToTheTail) {
    add(2, 21);
    EXPECT_EQ(planned(true), QStringList({"10x M13 S6000", "10x M94", "(DLY,1)", "dense: header in0",
                                          "10x M94", "b0", "b0", "", "10x M15", "dense: out0 tail"}));
}

TEST_F(Planner, TheFirstToolComesInFromTheZeroOfTheToolAxis) {
    add(1, 5).leadIn = QStringLiteral("G1 X1 Z-30.5 F9\nG1 X1 Z-60 F9");
    EXPECT_EQ(planned(true), QStringList({"10x M6 T5", "10x M3 S6000", "10x M93 S6000", "(DLY,1)",
                                          "dense: G1 X1 Z0.000 F9 G1 X1 Z-30.5 F9 G1 X1 Z-60 F9",
                                          "10x M93 S6000", "b0", "b0", "", "10x M5", "dense: out0 tail"}));
}

TEST_F(Planner, TheFirstToolOfAMagazineIsMountedBeforeAnItemOnAnotherSpindle) {
    add(3, 31);
    add(1, 5);
    EXPECT_EQ(planned(true),
              QStringList({"10x M6 T5", "10x S6000 M23", "(DLY,1)", "dense: in0 in0", "b0", "10x M3 S6000",
                           "10x M93 S6000", "b0", "", "10x M25", "dense: out0 in1", "10x M93 S6000", "b1",
                           "b1", "", "10x M5", "dense: out1 tail"}));
}

TEST_F(Planner, ActionsStandBeforeAndBehindTheItems) {
    add(3, 31);
    job().preAction = QStringLiteral("pre\n");
    job().postAction = QStringLiteral("post");
    EXPECT_EQ(planned(false), QStringList({"pre", "", "10x S6000 M23", "(DLY,1)", "plain: header in0", "b0",
                                           "b0", "", "10x M25", "post", "plain: out0 tail"}));
}

TEST_F(Planner, TheSameSpindleAndSpeedGetsNoCommandBetween) {
    add(3, 31);
    add(3, 31);
    EXPECT_EQ(planned(true), QStringList({"10x S6000 M23", "(DLY,1)", "dense: header in0", "b0", "b0", "",
                                          "dense: out0 in1", "b1", "b1", "", "10x M25", "dense: out1 tail"}));
}

TEST_F(Planner, AnotherSpeedOfTheSpindleIsAStartWithoutAStop) {
    add(3, 31);
    add(3, 31, 9000);
    EXPECT_EQ(planned(true),
              QStringList({"10x S6000 M23", "(DLY,1)", "dense: header in0", "b0", "b0", "", "10x S9000 M23",
                           "dense: out0 in1", "b1", "b1", "", "10x M25", "dense: out1 tail"}));
}

TEST_F(Planner, ThePlainWalkStartsNothingEarly) {
    add(3, 31);
    add(2, 21);
    EXPECT_EQ(planned(false), QStringList({"10x S6000 M23", "(DLY,1)", "plain: header in0", "b0", "b0", "",
                                           "10x M25", "10x M13 S6000", "10x M94", "plain: out0 in1",
                                           "10x M94", "b1", "b1", "", "10x M15", "plain: out1 tail"}));
}

TEST_F(Planner, AToolIsChangedAtHomeAndComesBackByHome) {
    add(1, 5).leadOut = QStringLiteral("G1 X3 Z-9 F9\nG1 X3 Z-5 F9");
    add(1, 6).leadIn = QStringLiteral("G1 X1 Y2 Z-3 C4 A5 F9\nG1 X1 Y2 Z-8 C4 A5 F9");
    const QStringList change{"10x M5",
                             "plain: G1 X3 Z-9 F9 G1 X3 Z-5 F9 G1 X3 Z150 F9",
                             "10x M6 T6",
                             "10x M3 S6000",
                             "10x M93 S6000",
                             "(DLY,1)",
                             "plain: G1 X10 Y20 Z150 C0 A0 F9 G1 X1 Y2 Z150 C4 A5 F9 G1 X1 Y2 Z-3 C4 A5 F9 "
                             "G1 X1 Y2 Z-8 C4 A5 F9",
                             "10x M93 S6000",
                             "b1",
                             "b1",
                             "",
                             "10x M5",
                             "plain: out1 tail"};
    items()[0].leadIn = QStringLiteral("G1 Z5");
    const QStringList program = planned(false);
    EXPECT_EQ(program.mid(program.indexOf(QString()) + 1), change);
}

TEST_F(Planner, AToolChangeWithEarlyStartsIsTheSame) {
    add(1, 5);
    add(1, 6);
    const QStringList early = planned(true);
    EXPECT_TRUE(early.contains(QStringLiteral("plain: out0 out0")));
    EXPECT_TRUE(early.contains(QStringLiteral("plain: in1 in1 in1")));
    EXPECT_EQ(early.filter(QStringLiteral("M3 S6000")).size(), 2);
}

TEST_F(Planner, ASpindleOfTheNextButOneItemStaysOn) {
    add(3, 31);
    add(2, 21);
    add(3, 31);
    const QStringList program = planned(false);
    EXPECT_EQ(program.count(QStringLiteral("10x S6000 M23")), 1);
    EXPECT_EQ(program.count(QStringLiteral("10x M25")), 1);
    EXPECT_GT(program.indexOf(QStringLiteral("10x M25")), program.lastIndexOf(QStringLiteral("b2")));
}

TEST_F(Planner, AThirdItemAheadIsTooFar) {
    add(3, 31);
    add(2, 21);
    add(2, 21);
    add(3, 31);
    EXPECT_EQ(planned(false).count(QStringLiteral("10x M25")), 2);
}

TEST_F(Planner, ALongItemEndsTheLookAhead) {
    add(3, 31);
    // 75000 lines of 4 ms are 300000 ms; one more is longer.
    add(2, 21).body = QStringLiteral("b\n").repeated(75000);
    add(3, 31);
    EXPECT_EQ(planned(false).count(QStringLiteral("10x M25")), 1);
}

TEST_F(Planner, ALongerItemLetsTheSpindleStop) {
    add(3, 31);
    add(2, 21).body = QStringLiteral("b\n").repeated(75001);
    add(3, 31);
    EXPECT_EQ(planned(false).count(QStringLiteral("10x M25")), 2);
}

TEST_F(Planner, ALongItemThatSharesTheSpindleKeepsItOn) {
    add(3, 31);
    add(3, 31).body = QStringLiteral("b\n").repeated(75001);
    EXPECT_EQ(planned(false).count(QStringLiteral("10x M25")), 1);
}

TEST_F(Planner, AnotherToolOnTheSpindleBetweenStopsIt) {
    add(3, 31);
    add(3, 32);
    add(3, 31);
    EXPECT_EQ(planned(true).count(QStringLiteral("10x M25")), 3);
}

TEST_F(Planner, AnotherToolBehindAnItemOnTheSameShaftStopsIt) {
    add(2, 21);
    add(5, 51);
    add(2, 22);
    const QStringList program = planned(true);
    EXPECT_EQ(program.count(QStringLiteral("10x M15")), 1);
    EXPECT_EQ(program.count(QStringLiteral("10x M55")), 1);
    EXPECT_EQ(program.count(QStringLiteral("10x M13 S6000")), 2);
}

TEST_F(Planner, ASpindleThatWasKeptOnStandsForTheToolChangeOfAnother) {
    add(1, 5);
    add(3, 31);
    add(1, 6);
    add(3, 31);
    const QStringList program = planned(false);
    const int change = program.indexOf(QStringLiteral("10x M6 T6"));
    ASSERT_GT(change, 0);
    EXPECT_EQ(program[change - 1], QStringLiteral("10x M25"));
}

// --- curves ---

TEST_F(Planner, ACurveIsTheWayToTheItemBehindIt) {
    add(3, 31);
    addCurve(2, 21);
    add(2, 21);
    EXPECT_EQ(planned(true),
              QStringList({"10x S6000 M23", "(DLY,1)", "dense: header in0", "b0", "10x M13 S6000", "10x M94",
                           "b0", "", "10x M25", "dense: out0 c1 d1 in2", "10x M94", "b2", "b2", "", "10x M15",
                           "dense: out2 tail"}));
}

TEST_F(Planner, ACurveStartsNoSpindleAndKeepsNoneOn) {
    add(3, 31);
    addCurve(3, 31);
    add(2, 21);
    EXPECT_EQ(planned(false), QStringList({"10x S6000 M23", "(DLY,1)", "plain: header in0", "b0", "b0", "",
                                           "10x M25", "10x M13 S6000", "10x M94", "plain: out0 c1 d1 in2",
                                           "10x M94", "b2", "b2", "", "10x M15", "plain: out2 tail"}));
}

TEST_F(Planner, AToolChangeBeforeACurveComesBackToItsBeginning) {
    add(1, 5);
    addCurve(1, 6).body = QStringLiteral("G1 X1 Z3 F9\nG1 X2 Z4 F9");
    add(1, 6);
    const QStringList program = planned(true);
    const int change = program.indexOf(QStringLiteral("10x M6 T6"));
    ASSERT_GT(change, 0);
    EXPECT_EQ(program.mid(change - 1, 7),
              QStringList({"plain: out0 out0", "10x M6 T6", "10x M3 S6000", "10x M93 S6000", "(DLY,1)",
                           "plain: G1 X10 Z150 F9 G1 X1 Z150 F9 G1 X1 Z3 F9",
                           "dense: G1 X1 Z3 F9 G1 X2 Z4 F9 in2"}));
}

TEST_F(Planner, ALastCurveLeadsToTheTail) {
    add(3, 31);
    addCurve(3, 31);
    job().postAction = QStringLiteral("post\n");
    EXPECT_EQ(planned(true), QStringList({"10x S6000 M23", "(DLY,1)", "dense: header in0", "b0", "b0", "",
                                          "10x M25", "post", "dense: out0 c1 d1 tail"}));
}

TEST_F(Planner, ALastCurveWithAnotherToolGetsItAtHome) {
    add(1, 5);
    addCurve(1, 6);
    const QStringList program = planned(true);
    EXPECT_EQ(program.mid(program.indexOf(QString()) + 1),
              QStringList({"10x M5", "plain: out0 out0", "10x M6 T6", "(DLY,1)", "plain: c1 c1 c1",
                           "dense: c1 d1 tail"}));
}

TEST_F(Planner, AFirstCurveLeadsFromTheHeader) {
    addCurve(3, 31);
    add(3, 31);
    EXPECT_EQ(planned(true), QStringList({"10x S6000 M23", "(DLY,1)", "dense: header c0 d0 in1", "b1", "b1",
                                          "", "10x M25", "dense: out1 tail"}));
}

TEST_F(Planner, AChainOfCurvesTurnsNoSpindle) {
    addCurve(1, 5);
    addCurve(3, 31);
    EXPECT_EQ(planned(true), QStringList({"dense: header c0 d0 c1 d1 tail"}));
}

TEST_F(Planner, ManyCurvesInARowAreOneWay) {
    add(3, 31);
    addCurve(3, 31);
    addCurve(3, 31);
    add(3, 31);
    EXPECT_TRUE(planned(true).contains(QStringLiteral("dense: out0 c1 d1 c2 d2 in3")));
}

// --- ends ---

TEST_F(Planner, EndCoordinatesThatNameASpindleKeepItsShaftTurning) {
    add(2, 21);
    job().endCoordinates = {{QStringLiteral("X"), 1.0}, {QStringLiteral("T5"), 0.0}};
    EXPECT_FALSE(planned(true).contains(QStringLiteral("10x M15")));
}

TEST_F(Planner, EndCoordinatesOfAxesKeepNothingTurning) {
    add(2, 21);
    job().endCoordinates = {{QStringLiteral("X"), 1.0}, {QStringLiteral("T3"), 0.0}};
    EXPECT_TRUE(planned(true).contains(QStringLiteral("10x M15")));
}

TEST_F(Planner, AShaftThatTurnsSinceTheChainBeforeGetsTenStartLinesAgain) {
    add(2, 21);
    job().endCoordinates = {{QStringLiteral("T2"), 0.0}};
    planned(true);
    const QStringList second = planned(true);
    EXPECT_EQ(second.mid(0, 3), QStringList({"10x M13 S6000", "(DLY,1)", "dense: header in0"}));
}

TEST_F(Planner, EntryAndExitAreDrivenGroupByGroup) {
    add(3, 31).leadIn = QStringLiteral("G1 X1 Y2 Z3 F9");
    items()[0].leadOut = QStringLiteral("G1 X4 Y5 Z6 F9");
    job().header = QStringLiteral("G1 X0 Y0 Z9 F9");
    job().tail = QStringLiteral("G1 X7 Y8 Z9 F9");
    job().entry = {{1, 2}, {3}};
    job().exit = {{3}, {1}, {2}};
    const QStringList program = planned(false);
    EXPECT_TRUE(program.contains(
        QStringLiteral("plain: G1 X0 Y0 Z9 F9 G1 X1 Y2 Z9 F9 G1 X1 Y2 Z3 F9 G1 X1 Y2 Z3 F9")));
    EXPECT_TRUE(program.contains(
        QStringLiteral("plain: G1 X4 Y5 Z6 F9 G1 X4 Y5 Z9 F9 G1 X7 Y5 Z9 F9 G1 X7 Y8 Z9 F9 G1 X7 Y8 Z9 F9")));
}

TEST_F(Planner, AnItemWithoutLeadsIsReachedAndLeftByItsBody) {
    add(3, 31);
    add(3, 31);
    items()[0].leadOut.clear();
    items()[1].leadIn.clear();
    EXPECT_TRUE(planned(true).contains(QStringLiteral("dense: b0 b1")));
}

TEST_F(Planner, AWayThatCannotBeRetimedIsMissing) {
    add(3, 31);
    job().retime = [](const QString&, bool) { return QString(); };
    EXPECT_EQ(planned(true), QStringList({"10x S6000 M23", "(DLY,1)", "b0", "b0", "", "10x M25"}));
}

// --- failures ---

TEST_F(Planner, AFirstItemWithoutASpindleIsFatal) {
    add(77, 1);
    EXPECT_EQ(fatal(true), QStringLiteral("spindle is nullptr"));
    EXPECT_EQ(fatal(false), QStringLiteral("spindle is nullptr"));
}

TEST_F(Planner, ALaterItemWithoutASpindleHasNoCommands) {
    add(3, 31);
    add(77, 1);
    EXPECT_EQ(planned(true), QStringList({"10x S6000 M23", "(DLY,1)", "dense: header in0", "b0", "b0", "",
                                          "10x M25", "dense: out0 in1", "b1", "b1", "", "dense: out1 tail"}));
}

TEST_F(Planner, AFirstToolWithoutALeadInIsFatal) {
    add(1, 5).leadIn = QStringLiteral("\n");
    EXPECT_EQ(fatal(true), QStringLiteral("not contain lead in"));
}

TEST_F(Planner, AToolChangeWithoutALeadInIsFatal) {
    add(1, 5);
    add(1, 6).leadIn.clear();
    EXPECT_EQ(fatal(false), QStringLiteral("not contain lead in"));
}

TEST_F(Planner, AChainWithoutTheToolAxisIsFatal) {
    add(1, 5);
    job().letters.remove(3);
    EXPECT_EQ(fatal(true), QStringLiteral("Id error.not contains."));
}

TEST_F(Planner, AToolChangeOfAChainWithoutTheToolAxisIsFatal) {
    add(1, 5);
    planned(true);  // the first tool is mounted
    add(1, 6);
    job().letters.remove(3);
    EXPECT_EQ(fatal(true), QStringLiteral("Id error.not contains."));
}

TEST_F(Planner, AProgramThatNoTextCanHoldIsRefused) {
    const QString body(50'000'000, QLatin1Char('\n'));
    for (int i = 0; i < 21; ++i)
        add(3, 31).body = body;
    EXPECT_EQ(planned(true), QStringList());
    ASSERT_EQ(diagnostics().entries.size(), 1U);
    EXPECT_EQ(diagnostics().entries[0].severity, Severity::Warning);
    EXPECT_EQ(diagnostics().entries[0].text, QStringLiteral("The program of the chain is too long."));
}
