#include "planning/ProgramInterpreter.h"

#include <gtest/gtest.h>

#include "planning/PlanningTestSupport.h"
#include "support/TestSupport.h"

// The interpreter itself: a program that was spoilt by hand is found out.

namespace {

using planningtest::TestItems;

QString tenTimes(const QString& line) {
    return (line + QLatin1Char('\n')).repeated(10);
}

class SpoiltProgram : public ::testing::Test {
  protected:
    SpoiltProgram() {
        program_.add(1, 5, 6000, 100);
        program_.add(2, 21, 4000, 100);
        program_.add(1, 6, 6000, 100);
        const auto machine = planningtest::planningMachine(4);
        const ChainJob job = planningtest::jobFor(*machine, 0.2);
        SpindleModel spindles(machine->spindles, machine->userCommand.delay);
        Diagnostics diagnostics;
        text_ = ChainPlanner(job, spindles, diagnostics).PlanningWithPreBoot(program_.items);
    }

    std::string faultsOf(const QString& text) {
        ProgramInterpreter machine(program_.items, {0.2, 4, true});
        machine.run(text);
        return machine.report();
    }
    /// The program with the first occurrence of `what` replaced.
    QString spoilt(const QString& what, const QString& by) {
        QString text = text_;
        const int place = text.indexOf(what);
        EXPECT_GE(place, 0) << what.toStdString();
        return text.replace(place, what.size(), by);
    }
    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] const TestItems& program() const { return program_; }

  private:
    TestItems program_;
    QString text_;
};

void expectFault(const std::string& faults, const char* text) {
    EXPECT_NE(faults.find(text), std::string::npos) << faults;
}

}  // namespace

TEST_F(SpoiltProgram, AGoodOneHasNoFault) {
    EXPECT_EQ(faultsOf(text()), std::string());
}

TEST_F(SpoiltProgram, AMissingStart) {
    expectFault(faultsOf(spoilt(tenTimes("M3 S6000"), {})), "begins while its spindle stands");
}

TEST_F(SpoiltProgram, ASecondStart) {
    expectFault(faultsOf(spoilt(tenTimes("M94"), tenTimes("M94") + tenTimes("M13 S4000"))),
                "turns at this speed already");
}

TEST_F(SpoiltProgram, AnotherSpeed) {
    expectFault(faultsOf(spoilt(tenTimes("M3 S6000"), tenTimes("M3 S5000"))), "begins at 5000");
}

TEST_F(SpoiltProgram, AMissingStop) {
    expectFault(faultsOf(spoilt(tenTimes("M15"), {})), "a tool change while a shaft turns");
}

TEST_F(SpoiltProgram, ASecondStop) {
    expectFault(faultsOf(spoilt(tenTimes("M15"), tenTimes("M15") + tenTimes("M15"))), "that stands");
}

TEST_F(SpoiltProgram, ABlockOfNine) {
    expectFault(faultsOf(spoilt(QStringLiteral("M5\n"), {})), "stands 9 times");
}

TEST_F(SpoiltProgram, AMissingToolChange) {
    expectFault(faultsOf(spoilt(tenTimes("M6 T6"), {})), "begins with another tool");
}

TEST_F(SpoiltProgram, AMissingCheck) {
    QString text = this->text();
    text.replace(tenTimes("M93 S6000"), QString());
    expectFault(faultsOf(text), "begins without a check");
}

TEST_F(SpoiltProgram, AnEarlyStartOneLineLater) {
    const QString block = tenTimes("M13 S4000") + tenTimes("M94");
    const int place = text().indexOf(block) + block.size();
    const QString next = text().mid(place, text().indexOf(QLatin1Char('\n'), place) - place + 1);
    expectFault(faultsOf(spoilt(block + next, next + block)), "49 lines before the end, not 50");
}

TEST_F(SpoiltProgram, AMissingLineOfABody) {
    const QString line = planningtest::linesOf(program().items[1].body)[50] + QLatin1Char('\n');
    expectFault(faultsOf(spoilt(line, {})), "another line than the body has");
}

TEST_F(SpoiltProgram, AMissingItem) {
    expectFault(faultsOf(spoilt(program().items[1].body, {})), "out of its turn");
}

TEST_F(SpoiltProgram, AJumpInAWay) {
    const QString line = planningtest::linesOf(program().items[1].leadIn)[0];
    const QString point = line.left(line.indexOf(QLatin1Char('F')));
    QString moved = point;
    moved.replace(QStringLiteral("Z120"), QStringLiteral("Z140"));
    expectFault(faultsOf(spoilt(point, moved)), "a jump");
}

TEST_F(SpoiltProgram, AThirdShaft) {
    const QString extra = tenTimes("M43 S100") + tenTimes("M73 S100");
    expectFault(faultsOf(spoilt(tenTimes("M5"), extra + tenTimes("M5"))), "more than two shafts turn");
}

TEST_F(SpoiltProgram, AShaftThatTurnsAtTheEnd) {
    QString text = this->text();
    const QString stop = tenTimes("M5");
    text.remove(text.lastIndexOf(stop), stop.size());
    expectFault(faultsOf(text), "a shaft turns at the end");
}
