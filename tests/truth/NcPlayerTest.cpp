#include "NcPlayer.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>

#include "TruthBench.h"

// The player is shown spoilt programs: what it lets pass, the random jobs would not find.

namespace {

/// The written program of one table: mill, saw (started early), mill, another mill.
class SpoiltNc : public ::testing::Test {
  protected:
    SpoiltNc() {
        bench_.startEarly(0.1);
        const auto code = [](int x) {
            return QStringLiteral("G0 X%1 Y100 Z220 C0 A0\nG0 Z130\nG1 Z120 F3000\nG1 X%2\nG0 Z220\n")
                .arg(x)
                .arg(x + 20);
        };
        const QString table = QStringLiteral("G54");
        bench_.build({{table, 1, 1, 18000, code(100), true},
                      {table, 2, 1, 6000, code(200), true},
                      {table, 1, 1, 18000, code(300), true},
                      {table, 1, 2, 12000, code(400), true}});
        program_ = bench_.generate(QStringLiteral("left"));
        lines_ = program_.nc.split(QLatin1Char('\n'));
    }

    /// Place of the n-th line that begins so, from 0.
    int find(const char* begin, int n = 0) {
        for (int i = 0; i < lines_.size(); ++i) {
            if (lines_[i].startsWith(QLatin1String(begin)) && n-- == 0)
                return i;
        }
        ADD_FAILURE() << "no line " << begin;
        return 0;
    }
    void drop(int place) { lines_.removeAt(place); }
    /// Place of the first motion line behind.
    int motionBehind(int place) {
        while (!lines_[place].startsWith(QStringLiteral("G1 ")))
            ++place;
        return place;
    }
    std::string faults() {
        program_.nc = lines_.join(QLatin1Char('\n'));
        return bench_.faultsOf(program_);
    }
    void expectFault(const char* text) {
        const std::string found = faults();
        const std::size_t written = found.find("written:");
        ASSERT_NE(written, std::string::npos) << "nothing found";
        EXPECT_NE(found.find(text, written), std::string::npos) << found;
    }

    TruthBench bench_;
    TruthBench::Program program_;
    QStringList lines_;
};

}  // namespace

TEST_F(SpoiltNc, AGoodOneHasNoFault) {
    EXPECT_EQ(program_.items.size(), 4U);
    EXPECT_EQ(faults(), "");
}

TEST_F(SpoiltNc, AMissingStart) {
    drop(find("M3 "));
    expectFault("a check of a spindle that stands");
}

TEST_F(SpoiltNc, ASecondStart) {
    lines_.insert(find("M13 "), lines_[find("M13 ")]);
    expectFault("a start of a spindle that turns at this speed");
}

TEST_F(SpoiltNc, AnotherSpeed) {
    lines_[find("M3 S12000")] = QStringLiteral("M3 S11000");
    expectFault("the body begins while its spindle stands or turns at another speed");
}

TEST_F(SpoiltNc, AToolChangeUnderAnotherSpindle) {
    drop(find("M15"));
    expectFault("a tool change while a spindle turns");
}

TEST_F(SpoiltNc, AToolChangeUnderItsOwnSpindle) {
    drop(find("M5"));
    expectFault("a tool change while a spindle turns");
}

TEST_F(SpoiltNc, AnotherTool) {
    lines_[find("M6 T2")] = QStringLiteral("M6 T3");
    expectFault("the body begins with another tool");
}

TEST_F(SpoiltNc, AMissingCheck) {
    drop(find("M93", 1));
    expectFault("the body begins without a check");
}

TEST_F(SpoiltNc, AStopInTheMiddleOfABody) {
    lines_.insert(find("M13 "), QStringLiteral("M5"));
    expectFault("a command inside a body");
}

TEST_F(SpoiltNc, AnEarlyStartOneLineLater) {
    const int place = find("M13 ");
    lines_.move(motionBehind(place), place);
    expectFault("an early start before line");
}

TEST_F(SpoiltNc, AnEarlyStartOneLineEarlier) {
    const int place = find("M13 ");
    const int check = place + 1;
    ASSERT_EQ(lines_[check], QStringLiteral("M94"));
    lines_.move(place - 1, check);
    expectFault("an early start before line");
}

TEST_F(SpoiltNc, AMissingLineOfABody) {
    drop(find("M13 ") - 1);
    expectFault("a feed move that is no item's");
}

TEST_F(SpoiltNc, TwoBodiesInTheWrongOrder) {
    std::swap(program_.items[1], program_.items[2]);
    EXPECT_NE(faults(), "");
}

TEST_F(SpoiltNc, AMissingItem) {
    program_.items.push_back(program_.items.back());
    expectFault("item 4 is missing");
}

TEST_F(SpoiltNc, AWayWithoutALine) {
    drop(motionBehind(find("M6 T2")) + 100);
    expectFault("acceleration of");
}

TEST_F(SpoiltNc, AWayThatIsTooFast) {
    const int from = motionBehind(find("M6 T2"));
    for (int i = 0; i < 300; ++i)
        drop(from + i);
    expectFault("with a speed of");
}

TEST_F(SpoiltNc, AWayThatStopsAtFullSpeed) {
    const int place = motionBehind(find("M6 T2")) + 300;
    lines_.insert(place, QStringLiteral("M93"));  // holds the axes for a period
    expectFault("acceleration of");
}

TEST_F(SpoiltNc, AWayThatEndsElsewhere) {
    QString& last = lines_[find("M93", 2) - 1];
    last.replace(QStringLiteral("Z-200.000"), QStringLiteral("Z-199.990"));
    EXPECT_NE(faults(), "");
}

TEST_F(SpoiltNc, ACommandThatSharesABlock) {
    lines_[motionBehind(0)] += QStringLiteral(" M5");
    expectFault("a word that is none");
}

TEST_F(SpoiltNc, ASpindleThatTurnsAtTheEnd) {
    drop(find("M5", 1));
    expectFault("a spindle turns at the end");
}

TEST_F(SpoiltNc, ARunThatEndsElsewhere) {
    const int last = lines_.lastIndexOf(QRegularExpression(QStringLiteral("^G1 .*")));
    ASSERT_TRUE(lines_[last].contains(QStringLiteral("Y1400.000"))) << lines_[last].toStdString();
    lines_[last].replace(QStringLiteral("Y1400.000"), QStringLiteral("Y1399.999"));
    expectFault("the run does not return to where it began");
}
