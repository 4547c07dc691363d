#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

/// Re-timing of paths: a polyline in any number of dimensions becomes a smooth motion in time.
namespace TA {

/// Takes the language tag of the caller ("zh", "en"). Messages of this library are English whatever
/// the tag; the call exists so that a program can announce itself once at its start.
void Initialize(std::string language);

/// "trace", "debug", "info", "warn", "error" or "off"; any other text counts as "error". From "debug"
/// down every plan writes one line to the standard error stream.
void SetLoggerLevel(std::string level);

/// A motion along a blended polyline, from rest on its first point to rest on its last.
///
/// Units are those of the points (a mm, a degree: all entries form one vector space) and seconds.
/// Objects never change after Create; any number of threads may read one at the same time.
class Trajectory {
  public:
    using Option = std::variant<std::string, double, bool, int, std::vector<double>>;
    using Options = std::unordered_map<std::string, Option>;

    /// Plans the motion. Every point has the same number of entries. Options (README.md has the table):
    ///   "algorithm"          "toppra", "trapezoidal" (limits per axis) or "trapezoidal_constant_speed"
    ///   "path_type"          "bezier_quadratic_blend", for the last algorithm "circle_blend"
    ///   "tolerance_blend"    largest distance between the path and the polyline
    ///   "speed"              largest |dq/dt|;  "vel_limits": the same (number) or one limit per axis
    ///   "acc_limits"         per axis, at every instant;  "acceleration": largest |d2q/dt2|
    ///   "tolerance_overlap", "tolerance_colinear", "step_size"
    /// Throws std::invalid_argument with a sentence that names the option or the point at fault.
    static std::shared_ptr<Trajectory> Create(const std::vector<std::vector<double>>& points,
                                              const Options& options);

    ~Trajectory();
    Trajectory(const Trajectory&) = delete;
    Trajectory& operator=(const Trajectory&) = delete;

    /// Seconds; 0 when fewer than two of the points are distinct.
    double GetDuration() const;

    /// The position at a time, which is clamped to [0, GetDuration()]; both ends are the exact points.
    /// Reading in order of time takes constant time, anything else a binary search.
    std::vector<double> GetPosition(double time_s) const;

    /// The same into a vector of the caller, which is resized and keeps its memory from call to call.
    void GetPosition(double time_s, std::vector<double>& position) const;

  private:
    struct Plan;
    explicit Trajectory(std::unique_ptr<Plan> plan);
    std::unique_ptr<Plan> m_plan;
};

}  // namespace TA
