#pragma once

#include "Path.h"
#include "PlanOptions.h"

#include <cstddef>

namespace TA {

/// The limits of one circular blend after the other; the interface is that of BezierBlend.
///
/// On an arc of radius r the acceleration has the parts u = dv/dt along and x/r across, x = v^2, and
/// its length keeps u^2 + (x/r)^2 <= A^2. With constant u the left side is convex in s, so it holds on
/// an interval when it holds at both ends, and of these the faster one decides. With X = x/(r A) at the
/// slower end and q the angle of the interval, the largest U = u/A solves
///   U^2 + (X + 2 q U)^2 = 1.
class CircleBlend {
  public:
    CircleBlend(const Path& path, const PlanOptions& options);

    void load(std::size_t corner);
    unsigned neededIntervals() const;
    void setIntervals(unsigned intervals);
    double place(unsigned j) const { return m_arc->length * j / m_intervals; }
    void speedCaps(double* caps) const;
    double entry(unsigned j, double cap, double next) const;
    double exit(unsigned j, double x, double next) const;

  private:
    double fasterEnd(double slower) const;

    const Path& m_path;
    double m_squaredSpeed;
    double m_acceleration;
    unsigned m_refinement;
    const Arc* m_arc = nullptr;
    double m_turn = 0.0;
    unsigned m_intervals = 1;
    double m_intervalAngle = 0.0;
    double m_topSpeed = 0.0;  ///< r A, the largest x that the arc bears
};

}  // namespace TA
