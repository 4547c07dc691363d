#include "app/Demonstration.h"

#include <gtest/gtest.h>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "support/TestSupport.h"

namespace {

/// The shipped installation and its first machine.
class DemonstrationTest : public ::testing::Test {
  protected:
    void SetUp() override {
        setInstallationFolder(shippedInstallation());
        TORNVALE::LanguageReader::instance().reload();
        ConfigReader::instance().SetConfig(installationPath(QStringLiteral("machineSample/TornBridge5.xml")));
    }
    void TearDown() override { setInstallationFolder({}); }
    QString problem_;
};

}  // namespace

TEST_F(DemonstrationTest, ShippedContour_BecomesADenseProgramWithinTheLimits) {
    const auto job = runDemonstration(QStringLiteral("programs/FiveAxisContour.nc"), 0, problem_);
    ASSERT_TRUE(job) << problem_.toStdString();
    EXPECT_EQ(job->workCoordinateName, QStringLiteral("G54"));
    EXPECT_EQ(job->chain, QStringLiteral("X->Z->C->A;Y"));
    EXPECT_FALSE(job->summary.isOverTravelLimits);
    EXPECT_FALSE(job->summary.isOverDynamicLimits);
    EXPECT_EQ(job->summary.axes.size(), 5U);
    EXPECT_EQ(job->timedPath.size(), job->summary.lines);
    EXPECT_DOUBLE_EQ(job->summary.seconds, static_cast<double>(job->summary.lines) * 0.004);
    EXPECT_GT(job->summary.lines, 10000U);
}

TEST_F(DemonstrationTest, TimedPath_ComesBackToTheProgrammedHeight) {
    const auto job = runDemonstration(QStringLiteral("programs/FiveAxisContour.nc"), 0, problem_);
    ASSERT_TRUE(job) << problem_.toStdString();
    // The lowest cut is programmed at Z 6, the highest place at Z 300: five machine axes move, the tip on the
    // work piece must not leave that.
    double lowest = 1e9;
    double highest = -1e9;
    for (const WayPoint& point : job->timedPath) {
        lowest = std::min(lowest, point[2]);
        highest = std::max(highest, point[2]);
    }
    EXPECT_NEAR(lowest, 6.0, 0.05);
    EXPECT_LT(highest, 300.05);
}

TEST_F(DemonstrationTest, ToolThatIsNotThere_IsNamed) {
    EXPECT_FALSE(runDemonstration(QStringLiteral("programs/FiveAxisContour.nc"), 77, problem_));
    EXPECT_TRUE(problem_.contains(QStringLiteral("77"))) << problem_.toStdString();
}

TEST_F(DemonstrationTest, ProgramThatIsNotThere_IsNamed) {
    EXPECT_FALSE(runDemonstration(QStringLiteral("programs/None.nc"), 0, problem_));
    EXPECT_TRUE(problem_.contains(QStringLiteral("None.nc"))) << problem_.toStdString();
}
