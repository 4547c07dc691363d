#pragma once

#include <QString>
#include <map>
#include <string>
#include <vector>

#include "planning/PlanningTestSupport.h"

/// Runs a program as the machine of the tests would: reads each line by its own letters, keeps what every
/// shaft does and where the axes stand, and writes down what a machine operator would object to.
class ProgramInterpreter {
  public:
    struct Options {
        double preLaunchTime_s = 0;
        unsigned period_ms = 4;
        bool startsEarly = false;
        double largestStep = planningtest::kLargestStep;
        bool curvesAreExact = true;  ///< their points are lines of the program
    };
    ProgramInterpreter(const std::vector<PlanItem>& items, Options options);

    void run(const QString& program);

    [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }
    [[nodiscard]] std::string report() const;
    /// Commands by their text, blocks of ten counted as one: "M3 S6000" -> 1.
    [[nodiscard]] const std::map<std::string, int>& commands() const { return commands_; }
    [[nodiscard]] int earlyStarts() const { return earlyStarts_; }

  private:
    struct Shaft {
        bool isRunning = false;
        double speed = 0;
        int neededDelays = 0;
    };
    using Words = planningtest::SpindleWords;

    void command(const QString& line, int count);
    void obey(const QString& line);
    void motion(const QString& line);
    void follow(const planningtest::Position& position);
    void beginBody(std::size_t index);
    void endBody();
    void start(const Words& spindle, double speed);
    void stop(const Words& spindle);
    void change(const Words& spindle, int tool);
    void finish();
    void checkCurves(std::size_t from, std::size_t to);
    void checkEarlyStart();
    void checkToolOf(std::size_t index);
    [[nodiscard]] int linesOfWait() const;
    void object(const std::string& text);
    [[nodiscard]] std::size_t nextWorking(std::size_t index) const;
    [[nodiscard]] int runningShafts() const;
    [[nodiscard]] int shaftOf(std::size_t index) const;
    static const Words& wordsOf(int spindle);

    const std::vector<PlanItem>& items_;
    Options options_;
    std::vector<std::string> faults_;
    std::map<std::string, int> commands_;
    std::map<int, Shaft> shafts_;
    std::map<int, int> held_;        ///< spindle -> tool
    std::map<int, int> turnedWith_;  ///< spindle -> tool that it has worked with since it stood
    std::map<int, bool> checked_;
    bool hasMoved_ = false;
    bool isBehindChange_ = false;
    planningtest::Position position_{};
    std::vector<planningtest::Position> way_;  ///< since the last body
    std::size_t current_ = 0;                  ///< item of the present or next body
    std::size_t last_ = 0;                     ///< item of the body before
    bool isFirst_ = true;
    QStringList body_;  ///< lines of the present body
    int bodyLine_ = 0;  ///< the next of them
    bool isInBody_ = false;
    int lineNumber_ = 0;
    int earlyStarts_ = 0;
};
