#pragma once

#include <string>
#include <vector>

/// Speed and acceleration of every axis by differences of one position a period, against the machine's
/// limits.
///
/// What three decimals explain, and no more: a position in the text is off by half of its last decimal,
/// 0.0005, so a first difference by twice and a second difference by four times that.
class LimitOracle {
  public:
    struct Axis {
        std::string letter;
        double speed = 0;         ///< mm or degrees per s
        double acceleration = 0;  ///< per s^2
    };
    LimitOracle(std::vector<Axis> axes, double period_s);

    /// The axes stand there one period later. `isFolded`: a line that stood twice was written once just
    /// before, so that where an axis turns back, both of its accelerations fall into one period.
    void step(const std::vector<double>& position, int line, bool isFolded = false);
    /// The axes stand still for a period.
    void hold(int line);
    /// Something else moves the axes, from rest to rest.
    void release(int line);

    [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }
    /// Largest share of the limit, allowance taken off: 1 is the limit.
    [[nodiscard]] double largestSpeed() const { return largestSpeed_; }
    [[nodiscard]] double largestAcceleration() const { return largestAcceleration_; }

  private:
    struct State {
        bool isPlaced = false;
        double position = 0;
        double speed = 0;
    };
    void stepAxis(std::size_t index, double position, int line, bool isFolded);

    std::vector<Axis> axes_;
    double period_s_;
    std::vector<State> states_;
    std::vector<std::string> faults_;
    double largestSpeed_ = 0;
    double largestAcceleration_ = 0;
};
