#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "IsoTestProgram.h"
#include "nc/calc/FeedRuns.h"
#include "nc/calc/IsoPlacement.h"
#include "nc/calc/PathSplit.h"
#include "support/TestSupport.h"

namespace {

QString randomText(std::mt19937& random) {
    static const QStringList pieces{"G0 ",
                                    "G1 ",
                                    "G2 ",
                                    "G3 ",
                                    "G16 ",
                                    "G16 U V ",
                                    "G17 ",
                                    "G18 ",
                                    "G90 ",
                                    "G91 ",
                                    "X",
                                    "Y",
                                    "Z",
                                    "C",
                                    "A",
                                    "U",
                                    "V",
                                    "W",
                                    "R",
                                    "F",
                                    "N",
                                    "\n",
                                    "\n",
                                    "\n",
                                    "\n",
                                    "(UPR,",
                                    ")",
                                    "(UPR,XYZ,1,2,",
                                    "XYZ,",
                                    "=",
                                    ";",
                                    "//",
                                    "%",
                                    "-",
                                    ".",
                                    ",",
                                    " ",
                                    "\t",
                                    "\r\n",
                                    "e9",
                                    "5",
                                    "10",
                                    "0.5",
                                    "-3",
                                    "9999999",
                                    "90",
                                    "180",
                                    "1e38",
                                    "nan",
                                    "inf",
                                    "\xEF\xBB\xBF",
                                    "99999999999999999999999999999999999999999",
                                    "G1 X1 Y2\n",
                                    "G2 X9 R20\n",
                                    "G1 A45 X1\n",
                                    "(UPR,1,XYZ,0,0,90,10,20,30)\n",
                                    "G16 U V\nG1 U5\n"};
    std::uniform_int_distribution<int> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> count(1, 60);
    std::uniform_int_distribution<int> anyCharacter(0, 0xFFFF);
    QString text = random() % 3 == 0 ? QString() : QStringLiteral("G0 X1\n");
    for (int n = count(random); n > 0; --n)
        text += random() % 40 == 0 ? QString(QChar(anyCharacter(random))) : pieces[pick(random)];
    return text;
}

}  // namespace

TEST(IsoInterpreter, HostileText_NeverGivesANumberThatIsNotFinite) {
    std::mt19937 random(123456);
    for (int i = 0; i < 20000; ++i) {
        const QString text = randomText(random);
        const bool withAuxiliary = random() % 2 == 0;
        const IsoProgram program(text, planeMachine(),
                                 withAuxiliary ? std::optional<double>(3.0) : std::nullopt);
        ASSERT_EQ(allFinite(program.points()), true) << text.toStdString();
        for (std::size_t k = 0; k < program.points().size(); ++k) {
            const int size = program.points()[k].size();
            ASSERT_EQ(size == 6 || (withAuxiliary && size == 7), true) << text.toStdString();
            if (k > 0) {
                ASSERT_EQ(program.points()[k] == program.points()[k - 1], false) << text.toStdString();
            }
        }
        // What is refused names its line.
        if (!program.done) {
            ASSERT_EQ(program.diagnostics.entries.empty(), false) << text.toStdString();
            ASSERT_GT(program.diagnostics.entries.back().line, 0) << text.toStdString();
        }
    }
}

TEST(IsoInterpreter, SplitsAndRunsOfHostileText_KeepThePathTogether) {
    std::mt19937 random(654321);
    for (int i = 0; i < 5000; ++i) {
        const QString text = randomText(random);
        const IsoProgram program(text, planeMachine());
        const WayPoints whole = program.points();
        const double rapid = program.interpreter.rapidFeed;
        WayPoints body = whole;
        const WayPoints head = splitHead(body, rapid);
        const WayPoints tail = splitTail(body, rapid);
        if (whole.empty()) {
            ASSERT_EQ(head.size() + body.size() + tail.size(), 0U);
            continue;
        }
        ASSERT_GE(body.size(), 1U) << text.toStdString();
        ASSERT_LE(head.size() + body.size() + tail.size(), whole.size() + 2) << text.toStdString();
        for (int k = 0; k < 5; ++k) {
            ASSERT_EQ(head.front()[k], whole.front()[k]) << text.toStdString();
            ASSERT_EQ(tail.back()[k], whole.back()[k]) << text.toStdString();
        }
        std::size_t next = 0;
        for (const FeedRun& run : feedRuns(whole)) {
            ASSERT_EQ(run.begin, next == 0 ? 0 : next - 1) << text.toStdString();
            ASSERT_GT(run.end, next) << text.toStdString();
            next = run.end;
        }
        ASSERT_EQ(next, whole.size()) << text.toStdString();
    }
}
