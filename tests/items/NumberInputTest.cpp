#include "items/NumberInput.h"

#include <gtest/gtest.h>

#include <QTest>

#include "support/TestSupport.h"

using TORNVALE::NumberInput;

namespace {

NumberInput* input(QWidget& parent) {
    return new NumberInput({"Shift X", -100, 250, "%1: %2 to %3"}, 3, &parent);  // owned by the parent
}

}  // namespace

TEST(NumberInput, UntouchedNumber_IsExactAndAlwaysGood) {
    QWidget parent;
    NumberInput& number = *input(parent);
    for (const double value : {0.123456789, -1e-9, 1e6, 99.9999}) {
        number.setValue(value);
        EXPECT_EQ(number.text(), QString::number(value, 'f', 3));
        EXPECT_EQ(number.value(), value);
        EXPECT_EQ(number.isGood(), true);
        EXPECT_EQ(number.isTouched(), false);
    }
}

TEST(NumberInput, TypedNumber_CountsWithinItsRange) {
    QWidget parent;
    NumberInput& number = *input(parent);
    for (const auto& [text, value] :
         {std::pair{"12.5", 12.5}, {" -100 ", -100.0}, {"250", 250.0}, {"1e2", 100.0}, {"-.5", -0.5}}) {
        number.setText(text);
        EXPECT_EQ(number.isGood(), true) << text;
        EXPECT_EQ(number.value(), value) << text;
        EXPECT_EQ(number.toolTip(), QString());
    }
}

TEST(NumberInput, BadText_StaysAndSaysWhatBelongsThere) {
    QWidget parent;
    NumberInput& number = *input(parent);
    const QColor good = number.palette().color(QPalette::Base);
    for (const char* text :
         {"", "x", "1,5", "-100.001", "250.1", "nan", "inf", "1e400", "1 2", "0x10", "--1"}) {
        number.setText(text);
        EXPECT_EQ(number.isGood(), false) << text;
        EXPECT_EQ(number.text(), QString(text));
        EXPECT_EQ(number.toolTip(), QStringLiteral("Shift X: -100 to 250")) << text;
        EXPECT_NE(number.palette().color(QPalette::Base), good) << text;
    }
    number.setText("5");
    EXPECT_EQ(number.toolTip(), QString());
    EXPECT_EQ(number.palette().color(QPalette::Base), good);
}
