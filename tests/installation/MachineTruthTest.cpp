#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSettings>
#include <memory>
#include <random>

#include "installation/MachineSceneModel.h"
#include "machine/calc/Kinematics.h"
#include "machine/calc/MachineFile.h"
#include "support/TestSupport.h"

// A program says where the tool tip is on the work piece. Here the tip is carried through the scene and the
// programmed point through the table, for every shipped machine, tool, spindle and work coordinate system:
// both must come to the same place.

namespace {

constexpr double kAgreement_mm = 0.001;

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QVector<ToolRecord> shippedTools() {
    Diagnostics diagnostics;
    const auto library = readToolLibrary(bytesOf(shippedInstallation() + QStringLiteral("/toollib.json")),
                                         QStringLiteral("3.3.0.5"), diagnostics);
    return library ? library->tools : QVector<ToolRecord>();
}

struct Setting {
    const MachineDescription& machine;
    const workCoordinateSystemStruct& system;
    QString chain;
    ToolRecord tool;
};

WayPoint randomWayPoint(std::mt19937& random, const Setting& setting) {
    std::uniform_real_distribution<double> place(-800.0, 800.0);
    std::uniform_real_distribution<double> angle(-115.0, 115.0);
    const AxisMap axes = setting.machine.axisMap(setting.chain, false);
    WayPoint point;
    for (int entry = 0; entry < 3; ++entry)
        point.append(place(random));
    for (const int id : {4, 5})
        point.append(axes.contains(id) ? angle(random) : 0.0);
    point.append(5000.0);
    return point;
}

double largestDeviation(const Setting& setting, int rounds, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> offset(-200.0F, 200.0F);
    const AxisMap axes = setting.machine.axisMap(setting.chain, false);
    double largest = 0.0;
    for (int round = 0; round < rounds; ++round) {
        const SbVec3f user(offset(random), offset(random), offset(random));
        Diagnostics diagnostics;
        const auto transform =
            KinematicTransform::make(setting.machine, kinematicTool(setting.tool), 0.0, user, setting.chain,
                                     setting.system.name, 0, diagnostics);
        if (!transform)
            return 1e9;
        WayPoints points{randomWayPoint(random, setting)};
        const WayPoint programmed = points.front();
        transform->transformPoints(points);

        MachineSceneModel scene(setting.machine);
        for (auto it = axes.begin(); it != axes.end(); ++it)
            scene.setValue(QString(it.value()), points.front()[it.key() - 1]);
        const Eigen::Vector3d tip = scene.toolTip(setting.tool);
        const Eigen::Vector3d work =
            scene.workPoint(setting.system, Eigen::Vector3d(user[0], user[1], user[2]),
                            Eigen::Vector3d(programmed[0], programmed[1], programmed[2]));
        largest = std::max(largest, (tip - work).norm());
    }
    return largest;
}

struct UsedMachine {
    QString name;
    std::unique_ptr<MachineDescription> machine;
};

/// The machine that the shipped settings name.
UsedMachine usedMachine() {
    const QSettings settings(shippedInstallation() + QStringLiteral("/data.ini"), QSettings::IniFormat);
    UsedMachine used;
    used.name = settings.value(QStringLiteral("Config/UsedConfig")).toString();
    Diagnostics diagnostics;
    used.machine =
        readMachineFile(bytesOf(shippedInstallation() + QLatin1Char('/') + used.name), diagnostics);
    return used;
}

}  // namespace

TEST(ShippedMachines, ToolTipOfTheSceneStandsOnTheProgrammedPoint) {
    const QVector<ToolRecord> tools = shippedTools();
    ASSERT_GE(tools.size(), 10);
    int settings = 0;
    const QDir folder(shippedInstallation() + QStringLiteral("/machineSample"));
    for (const QString& name : folder.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(bytesOf(folder.filePath(name)), diagnostics);
        ASSERT_TRUE(machine && machine->valid) << name.toStdString();
        for (const auto& system : machine->workCoordinateSystems) {
            for (const QString& chain : system->kinematicChain) {
                for (const ToolRecord& tool : tools) {
                    if (machine->findSpindle(tool.spindleNo) == nullptr)
                        continue;
                    const Setting setting{*machine, *system, chain, tool};
                    EXPECT_LT(largestDeviation(setting, 200, 4711), kAgreement_mm)
                        << name.toStdString() << ' ' << system->name.toStdString() << ' '
                        << chain.toStdString() << " tool " << tool.index;
                    ++settings;
                }
            }
        }
    }
    EXPECT_GE(settings, 20);
}

TEST(ShippedMachines, EveryToolHasItsSpindleOnTheFirstMachine) {
    const UsedMachine used = usedMachine();
    ASSERT_TRUE(used.machine) << used.name.toStdString();
    for (const ToolRecord& tool : shippedTools()) {
        const spindleStruct* spindle = used.machine->findSpindle(tool.spindleNo);
        ASSERT_NE(spindle, nullptr) << "tool " << tool.index;
        EXPECT_EQ(tool.installationName, spindle->parent) << "tool " << tool.index;
    }
}
