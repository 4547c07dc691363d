#include <TA/Trajectory.h>

#include "Log.h"
#include "Path.h"
#include "PlanOptions.h"
#include "Polyline.h"
#include "Profile.h"
#include "Simplify.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace TA {

struct Trajectory::Plan {
    Plan(Path path_, Profile profile_) : path(std::move(path_)), profile(std::move(profile_)) {}

    const Phase& phaseAt(double time_s) const;
    void position(double time_s, double* result) const;

    Path path;
    Profile profile;
    /// The phase that was read last. Only a guess where to look first: any value is right, so readers
    /// in several threads need no order between their loads and stores.
    mutable std::atomic<std::uint32_t> lastPhase{0};
};

namespace {

/// Phases that a reader in order passes between two samples at most, in nearly all cases.
constexpr std::size_t nearbyPhases = 8;

Path buildPath(const std::vector<std::vector<double>>& points, const PlanOptions& options) {
    Polyline line = readPolyline(points, options.overlapShare * options.blendTolerance);
    const double tolerance = std::max(0.0, options.blendTolerance - line.dropped);
    dropCollinear(line, options.colinearShare * tolerance, tolerance);
    return Path(std::move(line), options.shape, tolerance);
}

}  // namespace

/// The last phase that starts at or before the time.
const Phase& Trajectory::Plan::phaseAt(double time_s) const {
    const std::vector<Phase>& phases = profile.phases;
    const std::size_t last = phases.size() - 1;
    std::size_t at = lastPhase.load(std::memory_order_relaxed);
    if (phases[at].start_s <= time_s) {
        const std::size_t end = std::min(last, at + nearbyPhases);
        while (at < end && phases[at + 1].start_s <= time_s)
            ++at;
        if (at == last || time_s < phases[at + 1].start_s) {
            lastPhase.store(static_cast<std::uint32_t>(at), std::memory_order_relaxed);
            return phases[at];
        }
    }
    const auto behind =
        std::upper_bound(phases.begin(), phases.end(), time_s,
                         [](double time, const Phase& phase) { return time < phase.start_s; });
    at = static_cast<std::size_t>(behind - phases.begin()) - 1;
    lastPhase.store(static_cast<std::uint32_t>(at), std::memory_order_relaxed);
    return phases[at];
}

void Trajectory::Plan::position(double time_s, double* result) const {
    const Polyline& line = path.polyline();
    const bool inside = time_s > 0.0 && time_s < profile.duration_s;
    if (!inside) {
        const double* end = line.point(time_s >= profile.duration_s ? line.count - 1 : 0);
        std::copy(end, end + line.dimension, result);
        return;
    }
    const Phase& phase = phaseAt(time_s);
    const double t = time_s - phase.start_s;
    const double s = phase.parameter + t * (phase.speed + t * phase.halfAcceleration);
    if (phase.blend)
        path.positionOnBlend(phase.piece, s, result);
    else
        path.positionOnLine(phase.piece, s, result);
}

Trajectory::Trajectory(std::unique_ptr<Plan> plan) : m_plan(std::move(plan)) {}
Trajectory::~Trajectory() = default;

std::shared_ptr<Trajectory> Trajectory::Create(const std::vector<std::vector<double>>& points,
                                               const Options& options) {
    const PlanOptions checked = readOptions(options, points.empty() ? 0 : points.front().size());
    Path path = buildPath(points, checked);
    Profile profile;
    if (path.polyline().count > 1)
        profile = planProfile(path, checked);
    logPlan(points.size(), path.polyline().count, profile.duration_s);
    auto plan = std::make_unique<Plan>(std::move(path), std::move(profile));
    return std::shared_ptr<Trajectory>(new Trajectory(std::move(plan)));  // owned by the pointer at once
}

double Trajectory::GetDuration() const {
    return m_plan->profile.duration_s;
}

std::vector<double> Trajectory::GetPosition(double time_s) const {
    std::vector<double> position(m_plan->path.polyline().dimension);
    m_plan->position(time_s, position.data());
    return position;
}

void Trajectory::GetPosition(double time_s, std::vector<double>& position) const {
    position.resize(m_plan->path.polyline().dimension);
    m_plan->position(time_s, position.data());
}

}  // namespace TA
