#include "core/calc/UniqueNumber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "support/TestSupport.h"

TEST(UniqueNumber, NoNames_Gives0) {
    EXPECT_EQ(nextNumberOfSceneNames({}), 0);
    EXPECT_EQ(nextNumberOfTexts({}), 0);
    EXPECT_EQ(nextUniqueNumber({}), 0);
}

TEST(UniqueNumber, UnbrokenNumbers_GiveTheLargestPlus1) {
    EXPECT_EQ(nextNumberOfSceneNames({"A0", "A1"}), 2);
    EXPECT_EQ(nextNumberOfTexts({"A0", "A1"}), 2);
}

TEST(UniqueNumber, FirstGap_IsFilled) {
    EXPECT_EQ(nextNumberOfSceneNames({"A0", "A2"}), 1);
    EXPECT_EQ(nextUniqueNumber({7, 3, 4}), 5);
    EXPECT_EQ(nextUniqueNumber({0, 1, 2, 5, 9}), 3);
}

TEST(UniqueNumber, Duplicate_HidesTheGapBehindIt) {
    EXPECT_EQ(nextNumberOfSceneNames({"A1", "A1", "A3"}), 4);
    EXPECT_EQ(nextUniqueNumber({1, 1, 3}), 4);
}

TEST(UniqueNumber, NumbersBelowTheSmallest_AreNotTakenAgain) {
    EXPECT_EQ(nextUniqueNumber({4, 5}), 6);
    EXPECT_EQ(nextUniqueNumber({4}), 5);
    EXPECT_EQ(nextUniqueNumber({-2}), -1);
}

TEST(UniqueNumber, RemovedMiddleOfThree_IsTakenNext) {
    EXPECT_EQ(nextNumberOfSceneNames({"UCS0", "UCS2"}), 1);
}

TEST(UniqueNumber, SceneName_CountsByItsLastDigitOnly) {
    EXPECT_EQ(nextNumberOfSceneNames({"Abc12"}), 3);
    // 9 and 0: sorted 0, 9, so the gap behind 0.
    EXPECT_EQ(nextNumberOfSceneNames({"Abc19", "Abc20"}), 1);
    EXPECT_EQ(nextNumberOfSceneNames({"Abc10"}), 1);
}

TEST(UniqueNumber, SceneNameWithoutASuitableDigit_IsSkipped) {
    EXPECT_EQ(nextNumberOfSceneNames({"Root", "", "_"}), 0);
    EXPECT_EQ(nextNumberOfSceneNames({"Root", "A4"}), 5);
    // A digit needs a word character in front of it; the first run that has such a pair counts.
    EXPECT_EQ(nextNumberOfSceneNames({"5"}), 0);
    EXPECT_EQ(nextNumberOfSceneNames({"5 A3 B8"}), 4);
    EXPECT_EQ(nextNumberOfSceneNames({"57"}), 8);
}

TEST(UniqueNumber, Text_CountsByItsFirstWholeRunOfDigits) {
    EXPECT_EQ(nextNumberOfTexts({"Abc12"}), 13);
    EXPECT_EQ(nextNumberOfTexts({"Abc19", "Abc20"}), 21);
    EXPECT_EQ(nextNumberOfTexts({"a3b99"}), 4);
    EXPECT_EQ(nextNumberOfTexts({"7"}), 8);
}

TEST(UniqueNumber, TextWithoutOrWithTooLargeNumber_IsSkipped) {
    EXPECT_EQ(nextNumberOfTexts({"none", "", "A99999999999999999999", "A4"}), 5);
    EXPECT_EQ(nextNumberOfTexts({"none"}), 0);
}

TEST(UniqueNumber, LargestInt_HasNoSuccessor) {
    EXPECT_EQ(nextNumberOfTexts({"A2147483647"}), -1);
    EXPECT_EQ(nextUniqueNumber({std::numeric_limits<int>::max() - 1}), std::numeric_limits<int>::max());
}

TEST(UniqueNumber, DistinctNumbers_GiveTheFirstFreeOneAboveTheSmallest) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 2000; ++round) {
        std::vector<int> all(20);
        for (int i = 0; i < 20; ++i)
            all[static_cast<std::size_t>(i)] = i;
        std::shuffle(all.begin(), all.end(), random);
        const std::vector<int> taken(all.begin(), all.begin() + 1 + static_cast<int>(random() % 19));
        int expected = *std::min_element(taken.begin(), taken.end());
        while (std::find(taken.begin(), taken.end(), expected) != taken.end())
            ++expected;
        EXPECT_EQ(nextUniqueNumber(taken), expected) << ::testing::PrintToString(taken);
    }
}
