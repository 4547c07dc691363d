#include "LimitOracle.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kHalfDecimal = 0.0005;
constexpr double kArithmetic = 1e-9;  // of the differences of doubles, as a share

}  // namespace

LimitOracle::LimitOracle(std::vector<Axis> axes, double period_s)
    : axes_(std::move(axes)), period_s_(period_s), states_(axes_.size()) {}

void LimitOracle::step(const std::vector<double>& position, int line, bool isFolded) {
    for (std::size_t i = 0; i < axes_.size(); ++i) {
        if (!std::isnan(position[i]))
            stepAxis(i, position[i], line, isFolded);
    }
}

void LimitOracle::hold(int line) {
    for (std::size_t i = 0; i < axes_.size(); ++i) {
        if (states_[i].isPlaced)
            stepAxis(i, states_[i].position, line, false);
    }
}

void LimitOracle::release(int line) {
    hold(line);  // it comes to rest first
    states_.assign(states_.size(), {});
}

void LimitOracle::stepAxis(std::size_t index, double position, int line, bool isFolded) {
    State& state = states_[index];
    const Axis& axis = axes_[index];
    if (!state.isPlaced)
        state = {true, position, 0};
    const double speed = (position - state.position) / period_s_;
    const double acceleration = (speed - state.speed) / period_s_;
    const double speedNoise = 2 * kHalfDecimal / period_s_;
    const double accelerationNoise = 4 * kHalfDecimal / (period_s_ * period_s_);
    const bool turnsBack = isFolded && speed * state.speed < 0;
    const double limit = axis.acceleration * (turnsBack ? 2 : 1);
    const auto object = [&](const char* what, double value) {
        faults_.push_back("line " + std::to_string(line) + ": " + axis.letter + " with " + what + ' ' +
                          std::to_string(value));
    };
    if (std::abs(speed) > (axis.speed + speedNoise) * (1 + kArithmetic))
        object("a speed of", speed);
    if (std::abs(acceleration) > (limit + accelerationNoise) * (1 + kArithmetic))
        object("an acceleration of", acceleration);
    largestSpeed_ = std::max(largestSpeed_, (std::abs(speed) - speedNoise) / axis.speed);
    largestAcceleration_ =
        std::max(largestAcceleration_, (std::abs(acceleration) - accelerationNoise) / limit);
    state = {true, position, speed};
}
