#include "MotionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

using namespace support;

namespace {

/// Paths with everything that programs contain: steps of 1e-6 to 200, duplicates, points on the last
/// segment's line, reversals, gentle and sharp turns, moves of one axis only.
class PathMaker {
  public:
    explicit PathMaker(unsigned seed) : m_random(seed) {}

    Points make() {
        const std::size_t dimension = 1 + m_random() % 6;
        const std::size_t count = 2 + m_random() % 25;
        std::vector<double> direction = turned(std::vector<double>(dimension, 0.0), 1.0);
        Points points{std::vector<double>(dimension, share() * 100.0)};
        const bool mixed = m_random() % 2 == 0;
        const double size = length();
        while (points.size() < count) {
            direction = next(direction);
            const double step = mixed ? length() : size * (0.5 + std::abs(share()));
            std::vector<double> point = points.back();
            for (std::size_t k = 0; k < dimension; ++k)
                point[k] += step * direction[k];
            points.push_back(m_random() % 10 == 0 ? points.back() : point);
        }
        return points;
    }

    reference::Limits limitsFor(std::size_t dimension) {
        reference::Limits limits =
            equalLimits(dimension, std::pow(10.0, 1.5 + 1.5 * share()), std::pow(10.0, 2.5 + share()), 1.0);
        limits.tolerance = std::pow(10.0, -1.5 + 1.5 * share());
        for (double& value : limits.axisAccelerations)
            value *= m_random() % 2 == 0 ? 1.0 : 0.1 + 0.9 * std::abs(share());
        if (m_random() % 3 == 0)
            for (std::size_t k = 0; k < dimension; ++k)
                limits.axisSpeeds.push_back(limits.speed * (0.2 + std::abs(share())));
        return limits;
    }

  private:
    double share() { return std::uniform_real_distribution<double>(-1.0, 1.0)(m_random); }
    double length() { return std::pow(10.0, -1.85 + 4.15 * share()); }

    std::vector<double> turned(std::vector<double> direction, double amount) {
        double square = 0.0;
        for (double& value : direction) {
            value += amount * share();
            square += value * value;
        }
        for (double& value : direction)
            value /= std::sqrt(square);
        return direction;
    }

    std::vector<double> next(std::vector<double> direction) {
        switch (m_random() % 8) {
            case 0:
                return direction;
            case 1:
                for (double& value : direction)
                    value = -value;
                return direction;
            case 2:
                return turned(direction, 1e-7);
            case 3:
                return turned(direction, 0.01);
            case 4: {
                std::vector<double> axis(direction.size(), 0.0);
                axis[m_random() % axis.size()] = m_random() % 2 == 0 ? 1.0 : -1.0;
                return axis;
            }
            case 5:
                return turned(direction, 0.3);
            default:
                return turned(direction, 5.0);
        }
    }

    std::mt19937 m_random;
};

bool moves(const Points& points) {
    for (const auto& point : points)
        if (point != points.front())
            return true;
    return false;
}

}  // namespace

TEST(RandomPaths, ThreeThousand_AllKeepEveryLimit) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        PathMaker maker(seed);
        const Points points = maker.make();
        const reference::Limits limits = maker.limitsFor(points.front().size());
        if (!moves(points)) {
            EXPECT_EQ(plan(Algorithm::Trapezoidal, points, limits)->GetDuration(), 0.0);
            continue;
        }
        ASSERT_EQ(faultsOfAll(points, limits, 600), "")
            << "seed " << seed << " speed " << limits.speed << " tolerance " << limits.tolerance << " points "
            << print(points);
    }
}

TEST(RandomPaths, UnitsOfCentimetresAndMetres_GiveTheSameDuration) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        PathMaker maker(seed);
        const Points points = maker.make();
        const reference::Limits limits = maker.limitsFor(points.front().size());
        const Algorithm algorithm = everyAlgorithm[seed % 3];
        const double expected = plan(algorithm, points, limits)->GetDuration();
        for (const double factor : {0.1, 0.001}) {
            const double duration =
                plan(algorithm, scaled(points, factor), scaled(limits, factor))->GetDuration();
            ASSERT_NEAR(duration, expected, 1e-5 * expected)
                << "seed " << seed << " points " << print(points);
        }
    }
}
