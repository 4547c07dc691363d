#include "MotionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace support;
using TA::Trajectory;

namespace {

const Points line{{0.0, 0.0}, {10.0, 0.0}, {10.0, 10.0}};

std::string complaint(const Points& points, const Trajectory::Options& options) {
    try {
        Trajectory::Create(points, options);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

Trajectory::Options good(Algorithm algorithm) {
    return optionsOf(algorithm, equalLimits(2, 100.0, 1000.0, 0.5));
}

/// The option's name must be in the sentence.
void expectRefused(Algorithm algorithm, const std::string& name, const Trajectory::Option& value) {
    Trajectory::Options options = good(algorithm);
    options[name] = value;
    EXPECT_NE(complaint(line, options).find("\"" + name + "\""), std::string::npos)
        << name << " in algorithm " << static_cast<int>(algorithm) << ": " << complaint(line, options);
}

const std::vector<std::string> numbers(Algorithm algorithm) {
    if (algorithm == Algorithm::Toppra)
        return {"tolerance_blend", "tolerance_overlap", "tolerance_colinear", "step_size", "speed"};
    if (algorithm == Algorithm::ConstantSpeed)
        return {"tolerance_blend", "tolerance_overlap", "tolerance_colinear", "speed", "acceleration"};
    return {"tolerance_blend", "tolerance_overlap", "tolerance_colinear", "vel_limits"};
}

}  // namespace

TEST(Options, EachOneMissing_IsNamed) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const Trajectory::Options all = good(algorithm);
        EXPECT_EQ(complaint(line, all), "");
        for (const auto& [name, value] : all) {
            Trajectory::Options options = all;
            options.erase(name);
            EXPECT_EQ(complaint(line, options), "Option \"" + name + "\" is missing.");
        }
    }
}

TEST(Options, WrongKind_IsNamed) {
    for (const Algorithm algorithm : everyAlgorithm) {
        for (const std::string& name : numbers(algorithm)) {
            expectRefused(algorithm, name, std::string("1"));
            expectRefused(algorithm, name, true);
        }
        expectRefused(algorithm, "algorithm", 2.0);
        expectRefused(algorithm, "path_type", 1);
    }
    expectRefused(Algorithm::Toppra, "speed", std::vector<double>{1.0, 1.0});
    expectRefused(Algorithm::Toppra, "acc_limits", 1000.0);
    expectRefused(Algorithm::Trapezoidal, "acc_limits", 1000.0);
}

TEST(Options, NotFinite_IsNamed) {
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        for (const Algorithm algorithm : everyAlgorithm)
            for (const std::string& name : numbers(algorithm))
                expectRefused(algorithm, name, value);
        expectRefused(Algorithm::Toppra, "vel_limits", std::vector<double>{1.0, value});
        expectRefused(Algorithm::Trapezoidal, "acc_limits", std::vector<double>{value, 1.0});
    }
}

TEST(Options, LimitsThatAreNotPositive_AreNamed) {
    for (const double value : {0.0, -1.0}) {
        expectRefused(Algorithm::Toppra, "speed", value);
        expectRefused(Algorithm::Toppra, "step_size", value);
        expectRefused(Algorithm::Toppra, "vel_limits", std::vector<double>{1.0, value});
        expectRefused(Algorithm::Toppra, "acc_limits", std::vector<double>{1.0, value});
        expectRefused(Algorithm::ConstantSpeed, "speed", value);
        expectRefused(Algorithm::ConstantSpeed, "acceleration", value);
        expectRefused(Algorithm::Trapezoidal, "vel_limits", value);
        expectRefused(Algorithm::Trapezoidal, "acc_limits", std::vector<double>{value, 1.0});
    }
    for (const Algorithm algorithm : everyAlgorithm)
        for (const char* name : {"tolerance_blend", "tolerance_overlap", "tolerance_colinear"})
            expectRefused(algorithm, name, -0.1);
}

TEST(Options, EntriesThatAreNotThoseOfAPoint_AreNamed) {
    expectRefused(Algorithm::Toppra, "vel_limits", std::vector<double>{1.0});
    expectRefused(Algorithm::Toppra, "acc_limits", std::vector<double>{1.0, 1.0, 1.0});
    expectRefused(Algorithm::Trapezoidal, "acc_limits", std::vector<double>{});
}

TEST(Options, UnknownTexts_AreNamed) {
    for (const Algorithm algorithm : everyAlgorithm) {
        expectRefused(algorithm, "algorithm", std::string("spline"));
        expectRefused(algorithm, "path_type", std::string("clothoid"));
    }
    expectRefused(Algorithm::Toppra, "path_type", std::string("circle_blend"));
    expectRefused(Algorithm::ConstantSpeed, "path_type", std::string("bezier_quadratic_blend"));
}

TEST(Options, WholeNumbers_CountAsNumbers) {
    Trajectory::Options options = good(Algorithm::Trapezoidal);
    const double expected = Trajectory::Create(line, options)->GetDuration();
    options["vel_limits"] = 100;
    EXPECT_EQ(Trajectory::Create(line, options)->GetDuration(), expected);
}

TEST(Options, UnknownNames_AreIgnored) {
    Trajectory::Options options = good(Algorithm::Trapezoidal);
    options["jerk_limits"] = std::string("none");
    EXPECT_EQ(complaint(line, options), "");
}

TEST(Points, UnequalLengths_NameTheIndex) {
    EXPECT_EQ(complaint({{0.0, 0.0}, {1.0, 0.0}, {1.0}}, good(Algorithm::Trapezoidal)),
              "Point 2 has 1 entries, but point 0 has 2.");
}

TEST(Points, NotFinite_NamesTheIndex) {
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()})
        for (const Algorithm algorithm : everyAlgorithm)
            EXPECT_EQ(complaint({{0.0, 0.0}, {1.0, value}, {1.0, 0.0}}, good(algorithm)),
                      "Point 1 has an entry that is not finite.");
}

TEST(Points, BeyondTheRangeOfDoubles_NameTheIndex) {
    for (const Algorithm algorithm : everyAlgorithm)
        EXPECT_EQ(complaint({{0.0, 0.0}, {1e300, 0.0}}, good(algorithm)),
                  "Point 1 is too far from the point before it.");
}

TEST(Points, SizesThatNoDurationCanHold_AreRefused) {
    Trajectory::Options options = good(Algorithm::ConstantSpeed);
    options["speed"] = 1e-300;
    EXPECT_NE(complaint({{0.0, 0.0}, {1e100, 0.0}}, options), "");
}
