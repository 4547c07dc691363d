#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "KinematicOracle.h"
#include "MachineSamples.h"
#include "machine/calc/Kinematics.h"
#include "support/TestSupport.h"

// KinematicTransform::transformText.

namespace {

/// All offsets zero but a tool of 100 mm: X and Y stand still at zero angles, Z moves by 100.
KinematicCase bareCase() {
    KinematicCase data = plainCase();
    for (const auto& axis : data.machine->numericalAxes)
        axis->initialization = QStringLiteral("0 0 0");
    data.machine->spindles[0]->initialization = QStringLiteral("0 0 0 5");
    data.workSystem = QString();
    data.extraLength_mm = 0;
    data.base_mm = SbVec3f(0, 0, 0);
    data.toolVector_mm = SbVec3f(0, 0, 100);
    data.offset5_mm = SbVec3f(0, 0, 0);
    return data;
}

QString transformed(const KinematicCase& data, int mode, const QString& text) {
    KinematicTransform transform = data.make(mode);
    return transform.transformText(text);
}

QString randomText(std::mt19937& random, const QString& alphabet) {
    QString text;
    const int size = static_cast<int>(random() % 150);
    for (int i = 0; i < size; ++i)
        text += alphabet[static_cast<int>(random() % static_cast<unsigned>(alphabet.size()))];
    return text;
}

double wordOf(const QString& line, QChar letter) {
    const int from = line.indexOf(letter) + 1;
    const int to = line.indexOf(' ', from);
    return line.mid(from, to < 0 ? -1 : to - from).toDouble();
}

}  // namespace

TEST(KinematicText, Forward_RewritesTheWordsThatTheLineHas) {
    EXPECT_EQ(transformed(bareCase(), 0, "G1 X1 Y2 Z3 C0 A0 F500"),
              QStringLiteral("G1 X1.000 Y2.000 Z103.000 C0.000 A-5.000 F500"));
    EXPECT_EQ(transformed(bareCase(), 0, "G1 F500"), QStringLiteral("G1 F500"));
}

TEST(KinematicText, ModalRotaryValues_CountButAreNotWritten) {
    // C 90 A 90 lays the tool (0, 0, 100) along +X.
    EXPECT_EQ(transformed(bareCase(), 0, "G1 C90 A90\nG1 Z5\nX1"),
              QStringLiteral("G1 C90.000 A85.000\nG1 Z5.000\nX101.000"));
}

TEST(KinematicText, LineWithZBehindRotaryLine_RewritesItsZOnly) {
    const KinematicCase data = plainCase();
    const SbVec3f offset = literalOffset(data, 0, 90, 45);
    const QString second = transformed(data, 0, "G1 C90 A45\nG1 Z5").section('\n', 1);
    EXPECT_EQ(second, "G1 Z" + QString::number(5 + double{offset[2]}, 'f', 3));
}

TEST(KinematicText, ModalValues_StayFromCallToCall) {
    KinematicTransform transform = bareCase().make(0);
    EXPECT_EQ(transform.transformText("C90 A90"), QStringLiteral("C90.000 A85.000"));
    EXPECT_EQ(transform.transformText("X0"), QStringLiteral("X100.000"));
    EXPECT_EQ(transformed(bareCase(), 0, "X0 Z0"), QStringLiteral("X0.000 Z100.000"));
}

TEST(KinematicText, RotaryWordThatDoesNotRead_LeavesTheModalValue) {
    EXPECT_EQ(transformed(bareCase(), 0, "C90 A90\nC1-2 A X0"),
              QStringLiteral("C90.000 A85.000\nC1-2 A X100.000"));
}

TEST(KinematicText, NumberForms_ReadAsTheRunRuleSays) {
    EXPECT_EQ(transformed(bareCase(), 2, "X-.5"), QStringLiteral("X-0.500"));
    EXPECT_EQ(transformed(bareCase(), 2, "X5."), QStringLiteral("X5.000"));
    EXPECT_EQ(transformed(bareCase(), 2, "X1-2"), QStringLiteral("X1-2"));
    EXPECT_EQ(transformed(bareCase(), 2, "X+5"), QStringLiteral("X+5"));
    EXPECT_EQ(transformed(bareCase(), 2, "X1e3"), QStringLiteral("X1.000e3"));
    EXPECT_EQ(transformed(bareCase(), 2, "X" + QString(50, '9')), "X" + QString(50, '9'))
        << "beyond single precision";
    EXPECT_EQ(transformed(bareCase(), 2, "X0." + QString(44, '0') + "1"), "X0." + QString(44, '0') + "1");
    EXPECT_EQ(transformed(bareCase(), 2, "X123456.789"), QStringLiteral("X123456.789"));
    EXPECT_EQ(transformed(bareCase(), 2, "X1234567.89"), QStringLiteral("X1234567.875"))
        << "words are read in single precision";
}

TEST(KinematicText, NegativeZero_IsWrittenAsTheNumberFormatterDoes) {
    EXPECT_EQ(transformed(bareCase(), 2, "X-0"), "X" + QString::number(-0.0, 'f', 3));
    EXPECT_EQ(transformed(bareCase(), 0, "C-0.0001"), "C" + QString::number(-0.0001, 'f', 3));
}

TEST(KinematicText, LetterTwice_OnlyTheFirstIsRewritten) {
    EXPECT_EQ(transformed(bareCase(), 0, "Z1 Z2"), QStringLiteral("Z101.000 Z2"));
    EXPECT_EQ(transformed(bareCase(), 0, "Z Z2"), QStringLiteral("Z Z2"));
}

TEST(KinematicText, Backward_TakesAwayWhatForwardAdded) {
    const KinematicCase data = bareCase();
    const QString text =
        QStringLiteral("G1 X1.000 Y2.000 Z3.000 C90.000 A45.000\nG1 Z5.000\nX1.500 A-30.250");
    EXPECT_EQ(transformed(data, 1, transformed(data, 0, text)), text);
}

TEST(KinematicText, Compensations_AreAddedAndTakenAway) {
    KinematicCase data = bareCase();
    data.tool.ax4Compensation = 3;
    data.tool.ax5Compensation = 4;
    data.tool.installationName.clear();
    EXPECT_EQ(transformed(data, 0, "C10 A20"), QStringLiteral("C13.000 A24.000"));
    EXPECT_EQ(transformed(data, 1, "C10 A20"), QStringLiteral("C7.000 A16.000"));
    EXPECT_EQ(transformed(data, 2, "C10 A20"), QStringLiteral("C10.000 A20.000"));
}

TEST(KinematicText, CarrierLetter_TakesTheSpindleAngleAfterItsOwnRewriting) {
    KinematicCase data = bareCase();
    data.tool.ax5Compensation = 0.0004F;
    // 1.0004 + 0.0004 is first written with three decimals, then the angle is taken from what stands there.
    EXPECT_EQ(transformed(data, 0, "A1.0004"), QStringLiteral("A-3.999"));
    EXPECT_EQ(transformed(data, 1, "A1"), QStringLiteral("A6.000"));
    data.tool.installationName = QStringLiteral("X->Y->Z->C");
    EXPECT_EQ(transformed(data, 0, "C10 A20"), QStringLiteral("C5.000 A20.000"));
}

TEST(KinematicText, CarrierLetterOutsideTheChain_IsRewrittenWhereItReads) {
    KinematicCase data = bareCase();
    data.tool.installationName = QStringLiteral("W");
    EXPECT_EQ(transformed(data, 0, "W10"), QStringLiteral("W5.000"));
    EXPECT_EQ(transformed(data, 1, "W10"), QStringLiteral("W15.000"));
    EXPECT_EQ(transformed(data, 2, "W10"), QStringLiteral("W10"));
    EXPECT_EQ(transformed(data, 0, "X1"), QStringLiteral("X1.000"));
}

TEST(KinematicText, CarrierNameThatEndsInADigit_TakesThatDigitForItsLetter) {
    KinematicCase data = bareCase();
    data.tool.installationName = QStringLiteral("Head1");
    EXPECT_EQ(transformed(data, 0, "G1 X2"), QStringLiteral("G1 X2.000"));
    EXPECT_EQ(transformed(data, 0, "X12"), QStringLiteral("X1-3.000"));
}

TEST(KinematicText, EmptyCarrierName_FindsNothing) {
    KinematicCase data = bareCase();
    data.tool.installationName.clear();
    EXPECT_EQ(transformed(data, 0, "A10"), QStringLiteral("A10.000"));
}

TEST(KinematicText, Lines_AreSimplifiedAndEmptyOnesGo) {
    EXPECT_EQ(transformed(bareCase(), 0, "\n\n  G1\t X1 \r\n\nM5\n\n"), QStringLiteral("G1 X1.000\nM5"));
    EXPECT_EQ(transformed(bareCase(), 0, "M3\n \t\nM5"), QStringLiteral("M3\n\nM5"))
        << "a line of blanks is not empty when the text is split";
    EXPECT_EQ(transformed(bareCase(), 0, QString::fromUtf8("\u00A0M3\u2003\u2003中\u0085")),
              QString::fromUtf8("M3 中"));
    EXPECT_EQ(transformed(bareCase(), 0, ""), QString());
    EXPECT_EQ(transformed(bareCase(), 0, "\n\n"), QString());
}

TEST(KinematicText, OtherModes_OnlyLayTheNumbersOut) {
    EXPECT_EQ(transformed(plainCase(), 5, "G1  X1 Y2 Z3 C4 A5 F6"),
              QStringLiteral("G1 X1.000 Y2.000 Z3.000 C4.000 A5.000 F6"));
}

TEST(KinematicText, ThreeAxisChain_ShiftsXYZByAConstant) {
    KinematicCase data = plainCase();
    data.chain = QStringLiteral("X->Y->Z");
    data.tool.installationName = QStringLiteral("Z");
    data.machine->spindles[0]->initialization = QStringLiteral("1 2 30 0");
    EXPECT_EQ(transformed(data, 0, "X0 Y0 Z0\nC90 A45 X1"),
              QStringLiteral("X112.000 Y224.000 Z473.000\nC90 A45 X113.000"));
}

TEST(KinematicText, TextAndPointForms_Agree) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> length(-1000, 1000);
    std::uniform_real_distribution<double> angle(-360, 360);
    const QString letters = QStringLiteral("XYZCA");
    for (unsigned seed = 0; seed < 200; ++seed) {
        const KinematicCase data = randomCase(seed, false);
        WayPoint point;
        QString line = QStringLiteral("G1");
        for (int i = 0; i < 5; ++i) {
            point.append(std::round((i < 3 ? length(random) : angle(random)) * 1000) / 1000);
            line += ' ' + QString(letters[i]) + QString::number(point[i], 'f', 3);
        }
        for (const int mode : {0, 1}) {
            WayPoints points = {point};
            data.make(mode).transformPoints(points);
            const QString rewritten = transformed(data, mode, line);
            for (int i = 0; i < 5; ++i)
                EXPECT_NEAR(wordOf(rewritten, letters[i]), points[0][i], 1e-3)
                    << "seed " << seed << " mode " << mode << ": " << rewritten.toStdString();
        }
    }
}

TEST(KinematicText, RandomPrograms_ComeBackThroughMode1) {
    std::mt19937 random(12);
    std::uniform_real_distribution<double> length(-1000, 1000);
    std::uniform_real_distribution<double> angle(-180, 180);
    for (unsigned seed = 0; seed < 100; ++seed) {
        const KinematicCase data = randomCase(seed, false);
        const QString letters = QStringLiteral("XYZCA");
        QString text;
        for (int lineNo = 0; lineNo < 10; ++lineNo) {
            text += QStringLiteral("G1");
            for (int i = 0; i < 5; ++i) {
                if (lineNo == 0 || random() % 3 != 0)
                    text += ' ' + QString(letters[i]) +
                            QString::number(i < 3 ? length(random) : angle(random), 'f', 3);
            }
            text += QStringLiteral(" F1000\n");
        }
        const QStringList before = text.split('\n', Qt::SkipEmptyParts);
        const QStringList after = transformed(data, 1, transformed(data, 0, text)).split('\n');
        ASSERT_EQ(after.size(), before.size());
        for (int i = 0; i < before.size(); ++i) {
            for (const QChar letter : letters) {
                ASSERT_EQ(after[i].contains(letter), before[i].contains(letter));
                if (!before[i].contains(letter))
                    continue;
                EXPECT_NEAR(wordOf(after[i], letter), wordOf(before[i], letter), 1.001e-3)
                    << "seed " << seed << ": " << before[i].toStdString() << " -> " << after[i].toStdString();
            }
        }
    }
}

TEST(KinematicText, RandomTexts_AgreeWithTheRuleWordByWord) {
    std::mt19937 random(13);
    const QStringList alphabets = {
        QStringLiteral("XYZCAXYZCA 0123456789.-\n"), QStringLiteral("XXA1-.\n\r\t;  "),
        QString::fromUtf8("XA中Ж9.-\n \u00A0\u2028"), QStringLiteral("CA019.-"), QStringLiteral("G1 X\n")};
    const QStringList names = {QStringLiteral("A"),    QStringLiteral("X->C"), QString(),
                               QStringLiteral("H1"),   QStringLiteral("-"),    QStringLiteral("x "),
                               QString::fromUtf8("中")};
    for (int round = 0; round < 8000; ++round) {
        KinematicCase data = randomCase(static_cast<unsigned>(round % 50), round % 2 == 0);
        data.tool.installationName = names[round % names.size()];
        const QString text = randomText(random, alphabets[round % alphabets.size()]);
        const int mode = round % 3;
        ASSERT_EQ(transformed(data, mode, text), literalText(data, mode, text))
            << "round " << round << ": " << text.toStdString();
    }
}

TEST(KinematicText, LongLinesAndRuns_AreHandled) {
    const QString digits(200000, '1');
    EXPECT_EQ(transformed(bareCase(), 0, "X" + digits), "X" + digits);
    const QString letters(200000, 'X');
    EXPECT_EQ(transformed(bareCase(), 0, letters), letters);
    EXPECT_EQ(transformed(bareCase(), 0, QString(200000, '\n')), QString());
    EXPECT_EQ(transformed(bareCase(), 0, QString(200000, ' ')), QString());
}
