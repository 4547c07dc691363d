#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "machine/calc/MachineFile.h"
#include "support/TestSupport.h"

// The shipped machines are read without a message and hold together: chains name axes, models exist, limits
// contain zero and home.

namespace {

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList machineFiles() {
    const QDir folder(shippedInstallation() + QStringLiteral("/machineSample"));
    QStringList paths;
    for (const QString& name : folder.entryList({QStringLiteral("*.xml")}, QDir::Files))
        paths << folder.filePath(name);
    return paths;
}

void expectAxisHoldsTogether(const numericalAxisStruct& axis) {
    const double lower = axis.lower.toDouble();
    const double upper = axis.upper.toDouble();
    const double home = axis.homePosition.toDouble();
    EXPECT_LE(lower, 0.0) << axis.name.toStdString();
    EXPECT_GE(upper, 0.0) << axis.name.toStdString();
    EXPECT_TRUE(lower <= home && home <= upper) << axis.name.toStdString();
    EXPECT_GT(axis.maxVelocity.toDouble(), 0.0) << axis.name.toStdString();
    EXPECT_GT(axis.acceleration.toDouble(), 0.0) << axis.name.toStdString();
    EXPECT_GT(axis.jerk.toDouble(), 0.0) << axis.name.toStdString();
    EXPECT_TRUE(threeNumbers(axis.direction).has_value()) << axis.name.toStdString();
    EXPECT_TRUE(threeNumbers(axis.initialization).has_value()) << axis.name.toStdString();
    EXPECT_TRUE(threeNumbers(axis.color).has_value()) << axis.name.toStdString();
    EXPECT_TRUE(QFileInfo(shippedInstallation() + QLatin1Char('/') + axis.modelPath).isFile())
        << axis.name.toStdString() << ' ' << axis.modelPath.toStdString();
}

}  // namespace

TEST(ShippedMachines, AreReadWithoutAMessage) {
    ASSERT_GE(machineFiles().size(), 4);
    for (const QString& path : machineFiles()) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(bytesOf(path), diagnostics);
        ASSERT_TRUE(machine) << path.toStdString();
        EXPECT_TRUE(machine->valid) << path.toStdString();
        EXPECT_TRUE(diagnostics.entries.empty()) << path.toStdString();
        for (const auto& axis : machine->numericalAxes)
            expectAxisHoldsTogether(*axis);
    }
}

TEST(ShippedMachines, ChainsOfWorkCoordinateSystemsNameLinearAxesOneToThree) {
    for (const QString& path : machineFiles()) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(bytesOf(path), diagnostics);
        ASSERT_TRUE(machine) << path.toStdString();
        EXPECT_FALSE(machine->workCoordinateSystems.empty()) << path.toStdString();
        for (const auto& system : machine->workCoordinateSystems) {
            ASSERT_FALSE(system->kinematicChain.isEmpty()) << path.toStdString();
            for (const QString& chain : system->kinematicChain) {
                const AxisMap axes = machine->axisMap(chain, false);
                EXPECT_TRUE(axes.contains(1) && axes.contains(2) && axes.contains(3)) << chain.toStdString();
                EXPECT_TRUE(machine->userCommand.startList.contains(chain)) << chain.toStdString();
            }
        }
    }
}

// The planner caps the speed along the path, all axes in one space: only a rapid feed that every axis can
// follow keeps a rapid move within the axes' own speeds.
TEST(ShippedMachines, RapidFeedIsWithinReachOfEveryAxisOfAChain) {
    for (const QString& path : machineFiles()) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(bytesOf(path), diagnostics);
        ASSERT_TRUE(machine) << path.toStdString();
        for (const auto& system : machine->workCoordinateSystems) {
            for (const QChar letter : machine->axisMap(system->kinematicChain.first(), false))
                EXPECT_GE(machine->findAxis(letter)->maxVelocity.toDouble(),
                          machine->interpolationParameters.rapidThreshold)
                    << path.toStdString() << ' ' << QString(letter).toStdString();
        }
    }
}

TEST(ShippedMachines, HaveTheInterpolationTimesOfTheirControllers) {
    QList<unsigned> periods;
    for (const QString& path : machineFiles()) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(bytesOf(path), diagnostics);
        ASSERT_TRUE(machine) << path.toStdString();
        EXPECT_GE(machine->interpolationParameters.interpolationTime, 1U) << path.toStdString();
        EXPECT_GT(machine->interpolationParameters.rapidThreshold, 10000.0) << path.toStdString();
        periods << machine->interpolationParameters.interpolationTime;
    }
    EXPECT_TRUE(periods.contains(2U));
    EXPECT_TRUE(periods.contains(4U));
}
