#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <deque>
#include <memory>
#include <random>
#include <vector>

#include "machine/calc/MachineDescription.h"
#include "nc/calc/ChainPlanner.h"

// A five-axis machine with seven spindles, programs of random items for it, and a re-timing that is a
// straight line. Nothing here shares code with the planner.

namespace planningtest {

constexpr double kRapid = 36000;    ///< mm per minute
constexpr double kLargestStep = 5;  ///< of every axis from line to line, mm or degrees
inline const QString kChain = QStringLiteral("X->Y->Z->C->A");
inline const QString kHeader = QStringLiteral("G1 X0.000 Y0.000 Z150.000 C0.000 A0.000 F36000");
inline const QString kTail = QStringLiteral("G1 X-40.000 Y10.000 Z150.000 C0.000 A0.000 F36000");

/// The commands of one spindle. T1 and T6 have magazines, T2 and T5 share a shaft, and only T5 says so.
struct SpindleWords {
    int number;
    const char* start;
    const char* stop;
    const char* check;
    const char* change;
    const char* range;
    int shaft;
    const char* coaxial;
};
extern const std::array<SpindleWords, 7> kSpindles;

/// Home: X 10, Y 20, Z 150, C 0, A 0. Letters of the axes as in kChain.
std::unique_ptr<MachineDescription> planningMachine(unsigned interpolationTime_ms = 4);

using Position = std::array<double, 5>;
inline constexpr Position kHome{10, 20, 150, 0, 0};
QString lineOf(const Position& position, double feed);
Position positionOf(const QString& line);
QStringList linesOf(const QString& text);  ///< empty lines left out

/// Straight from point to point in steps of at most kLargestStep, every point included.
QString straightRetime(const QString& code);

/// Items with the tools that they point to.
struct TestItems {
    std::deque<ToolRecord> tools;
    std::vector<PlanItem> items;

    PlanItem& add(int spindle, int tool, double rpm, int bodyLines = 20);
    PlanItem& addCurve(int spindle, int tool);
    /// Curves get their points, from the item before (or the header) to the item behind (or the tail).
    void connectCurves();
};

/// The feed by which the lines of item `index` are known.
double feedOfBody(std::size_t index);

TestItems randomItems(std::mt19937& random);
/// What the items are, to be printed when a check fails.
std::string description(const TestItems& program);

ChainJob jobFor(const MachineDescription& machine, double preLaunchTime_s);

}  // namespace planningtest
