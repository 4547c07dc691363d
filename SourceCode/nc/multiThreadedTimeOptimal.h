#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <memory>
#include <vector>

#include "core/calc/WayPoint.h"
#include "nc/calc/AuxiliaryAxis.h"

namespace TA {
class Trajectory;
}

/// Re-times a path: hands its way points and limits to the trajectory library and samples the result once
/// per interpolation period. Runs on the calling thread in spite of its name.
class multiThreadedTimeOptimal {
  public:
    /// `points` without feed entries, all of the same size; one acceleration and jerk per entry (per s^2,
    /// per s^3); `speed` in mm per second. Reads algorithm and blend tolerance from the settings, the period
    /// from the machine.
    multiThreadedTimeOptimal(WayPoints points, std::vector<double> accelerations, std::vector<double> jerks,
                             double speed_mmPerS);

    /// The trajectory through the points; null for an unknown algorithm number.
    [[nodiscard]] std::shared_ptr<TA::Trajectory> algorithm(const WayPoints& points) const;

    /// One "G1" line per period with `letters` in the order of the entries; empty when there is no motion.
    [[nodiscard]] QString FormatIso(const QVector<QChar>& letters);

    /// Emitted code to one line per period at the feed of its last line times `factor`.
    [[nodiscard]] static QString TimeOptimizeCode(const QString& code, const QString& chain,
                                                  const std::shared_ptr<AuxiliaryAxis>& auxiliary,
                                                  double factor, bool densePoint);

  private:
    int algorithm_ = 2;
    double samplingPeriod_s_ = 0.004;
    double speed_mmPerS_;
    double toleranceBlend_mm_ = 0.01;
    std::vector<double> accelerations_;
    std::vector<double> jerks_;
    WayPoints points_;
};
