#include "app/calc/MenuMnemonics.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

TEST(MenuMnemonics, EachTextTakesTheFirstFreeBeginningOfAWord) {
    EXPECT_EQ(withMnemonics({{"Save", "Save"}, {"Save as", "SaveAs"}, {"Quit", "Quit"}}),
              (QVector<QString>{"&Save", "Save &as", "&Quit"}));
}

TEST(MenuMnemonics, ThenAnyOtherLetter) {
    EXPECT_EQ(withMnemonics({{"Open", "a"}, {"open", "b"}, {"Opus", "c"}}),
              (QVector<QString>{"&Open", "o&pen", "Op&us"}));
}

TEST(MenuMnemonics, ATextWithoutPressableLettersTakesOneOfItsKey) {
    EXPECT_EQ(withMnemonics({{QString::fromUtf8("保存"), "Save"}, {QString::fromUtf8("另存为"), "SaveAs"}}),
              (QVector<QString>{QString::fromUtf8("保存(&S)"), QString::fromUtf8("另存为(&A)")}));
}

TEST(MenuMnemonics, CyrillicLettersAreKeysOfTheirOwn) {
    EXPECT_EQ(withMnemonics({{QString::fromUtf8("Файл"), "FileMenu"}}),
              QVector<QString>{QString::fromUtf8("&Файл")});
}

TEST(MenuMnemonics, AMarkOfTheTextStaysAndIsTaken) {
    EXPECT_EQ(withMnemonics({{"S&ave", "x"}, {"Add", "y"}, {"&", "z"}}),
              (QVector<QString>{"S&ave", "A&dd", "&"}));
}

TEST(MenuMnemonics, WithoutAFreeLetterTheTextStaysAsItIs) {
    EXPECT_EQ(withMnemonics({{"a", "b"}, {"A", "B"}, {"a", "a"}}), (QVector<QString>{"&a", "A(&B)", "a"}));
}
