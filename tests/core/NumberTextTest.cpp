#include "core/calc/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/TestSupport.h"

namespace {

QString fixed3(double value) {
    std::string text;
    appendFixed3(text, value);
    return QString::fromStdString(text);
}

QString fixed0(double value) {
    std::string text;
    appendFixed0(text, value);
    return QString::fromStdString(text);
}

double anyNumber(std::mt19937_64& random) {
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-8, 14);
    return mantissa(random) * std::pow(10.0, exponent(random));
}

}  // namespace

TEST(NumberText, Fixed3_IsWhatQStringWrites) {
    std::mt19937_64 random(20240517);
    for (int i = 0; i < 200000; ++i) {
        const double value = anyNumber(random);
        ASSERT_EQ(fixed3(value), QString::number(value, 'f', 3)) << std::hexfloat << value;
        ASSERT_EQ(fixed0(value), QString::number(value, 'f', 0)) << std::hexfloat << value;
    }
}

TEST(NumberText, Fixed3OfTies_IsWhatQStringWrites) {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<int> thousandths(-20'000'000, 20'000'000);
    for (int i = 0; i < 100000; ++i) {
        const double tie = (thousandths(random) + 0.5) / 1000.0;
        for (const double value : {tie, std::nextafter(tie, 1e9), std::nextafter(tie, -1e9)}) {
            ASSERT_EQ(fixed3(value), QString::number(value, 'f', 3)) << std::hexfloat << value;
            ASSERT_EQ(fixed0(value * 1000.0), QString::number(value * 1000.0, 'f', 0))
                << std::hexfloat << value;
        }
    }
}

TEST(NumberText, Fixed3OfSpecialValues_IsWhatQStringWrites) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value :
         {0.0, -0.0, -0.0001, 0.0001, 0.0005, -0.0005, 0.9995, 999.9996, 1e9, -1e9, 1e300, 0.0015, infinity,
          -infinity, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min(),
          std::numeric_limits<double>::max()}) {
        EXPECT_EQ(fixed3(value), QString::number(value, 'f', 3)) << value;
        EXPECT_EQ(fixed0(value), QString::number(value, 'f', 0)) << value;
    }
}

TEST(NumberText, NumberFromRun_ReadsWhatQStringReads) {
    for (const char* text : {"",
                             "-",
                             ".",
                             "-.",
                             "5",
                             "-5",
                             "5.",
                             ".5",
                             "-.5",
                             "1-2",
                             "1.2.3",
                             "--5",
                             "5-",
                             "0012",
                             "123456789.123456789",
                             "-0",
                             "00000000000000000001.5",
                             "-123456789012345678901234567890",
                             "0.1",
                             "999999999999999.9",
                             "1..",
                             "-.-"}) {
        const QString run = QString::fromLatin1(text);
        bool ok = false;
        const double expected = run.toDouble(&ok);
        const std::optional<double> value = numberFromRun(run);
        ASSERT_EQ(value.has_value(), ok) << text;
        if (ok) {
            EXPECT_EQ(*value, expected) << text;
        }
    }
}

TEST(NumberText, NumberFromRunOfRandomRuns_ReadsWhatQStringReads) {
    std::mt19937_64 random(99);
    const QString alphabet = QStringLiteral("0123456789.-0123456789");
    std::uniform_int_distribution<int> length(1, 22);
    std::uniform_int_distribution<int> pick(0, alphabet.size() - 1);
    for (int i = 0; i < 100000; ++i) {
        QString run;
        for (int n = length(random); n > 0; --n)
            run += alphabet[pick(random)];
        bool ok = false;
        const double expected = run.toDouble(&ok);
        const std::optional<double> value = numberFromRun(run);
        ASSERT_EQ(value.has_value(), ok) << run.toStdString();
        if (ok) {
            ASSERT_EQ(*value, expected) << run.toStdString();
        }
    }
}

TEST(NumberText, NumberFromRunThatOverflows_IsNoNumber) {
    EXPECT_FALSE(numberFromRun(QString(400, QLatin1Char('9'))).has_value());
}

TEST(NumberText, ReadWord_TakesTheFirstOccurrenceOnly) {
    EXPECT_EQ(readWord(u"G1 X1.5 X2", u'X'), 1.5);
    EXPECT_FALSE(readWord(u"G1 X X2", u'X').has_value());
    EXPECT_FALSE(readWord(u"G1 x2", u'X').has_value());
    EXPECT_FALSE(readWord(u"G1 X1-2", u'X').has_value());
    EXPECT_EQ(readWord(u"G1 X-.5Y3", u'X'), -0.5);
}

TEST(LineReader, CountsEmptyLinesAndTrims) {
    LineReader reader(u"\uFEFFG1 X1\r\n\n\t G0 \r\nend");
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line().toString(), QStringLiteral("G1 X1"));
    ASSERT_TRUE(reader.next());
    EXPECT_TRUE(reader.line().isEmpty());
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line().toString(), QStringLiteral("G0"));
    EXPECT_EQ(reader.lineNumber(), 3);
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line().toString(), QStringLiteral("end"));
    EXPECT_FALSE(reader.next());
}
