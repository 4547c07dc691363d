// Physical truth of the whole machine as the window builds it: a programmed point goes through the kinematic
// transform to axis values, the machine is moved there, and the tip of the tool stands on the point of the
// work piece in the scene. What collides stands where it is drawn.

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QFile>
#include <random>
#include <string>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"
#include "machine/SpindleClass.h"
#include "machine/calc/Kinematics.h"
#include "machine/calc/MachineFile.h"
#include "motion/MotionTestSupport.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/calc/ToolRecord.h"

namespace {

constexpr double kAgreement_mm = 0.001;
constexpr unsigned kSeed = 99;

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class ShippedMachine {
  public:
    explicit ShippedMachine(const char* file) {
        setInstallationFolder(shippedInstallation());
        TORNVALE::LanguageReader::instance().reload();
        getUniquelyIdentifies::instance().reload();
        Diagnostics diagnostics;
        machine = readMachineFile(
            bytesOf(shippedInstallation() + QStringLiteral("/machineSample/") + QLatin1String(file)),
            diagnostics);
        manager = std::make_unique<MotionNodeManager>(*machine);
        const auto library = readToolLibrary(bytesOf(shippedInstallation() + QStringLiteral("/toollib.json")),
                                             QStringLiteral("3.3.0.5"), diagnostics);
        tools = library->tools;
    }
    ~ShippedMachine() {
        manager.reset();
        setInstallationFolder(QString());
    }
    ShippedMachine(const ShippedMachine&) = delete;
    ShippedMachine& operator=(const ShippedMachine&) = delete;

    std::unique_ptr<MachineDescription> machine;
    std::unique_ptr<MotionNodeManager> manager;
    QVector<ToolRecord> tools;
};

/// Where tool tip and programmed point stand for a random way point, and how far apart.
double tipFromPoint(ShippedMachine& shipped, WorkCoordinateSystem& zone, const QString& chain,
                    const ToolRecord& tool, std::mt19937& random) {
    std::uniform_real_distribution<double> place(-500, 500);
    std::uniform_real_distribution<double> angle(-100, 100);
    const AxisMap axes = shipped.machine->axisMap(chain, false);
    WayPoint point;
    for (int entry = 0; entry < 3; ++entry)
        point.append(place(random));
    for (const int id : {4, 5})
        point.append(axes.contains(id) ? angle(random) : 0.0);
    const Eigen::Vector3d programmed(point[0], point[1], point[2]);
    userCoordinateSystem& system = *zone.userCoordinateSystem(0);
    system.setTranslation(SbVec3f(float(place(random)), float(place(random)), float(place(random))));

    Diagnostics diagnostics;
    const auto transform =
        KinematicTransform::make(*shipped.machine, kinematicTool(tool), 0.0, system.translation(), chain,
                                 zone.displayName(), KinematicTransform::kToMachine, diagnostics);
    if (!transform)
        return 1e9;
    WayPoints points{point};
    transform->transformPoints(points);
    QString line;
    for (auto axis = axes.begin(); axis != axes.end(); ++axis)
        line += axis.value() + QString::number(points[0][axis.key() - 1], 'f', 6);
    shipped.manager->executeLine(line);

    const SpindleNode& spindle = *shipped.manager->findSpindle(tool.spindleNo);
    const Eigen::Vector3d tip = tool.isChainSaw()
                                    ? Eigen::Vector3d(-double{tool.toolTip[0]}, 0, -double{tool.toolTip[2]})
                                    : Eigen::Vector3d(0, 0, -double{tool.length});
    SoNode* const root = shipped.manager->root();
    const Eigen::Vector3d reached = placeInScene(root, spindle.toolShape(), tip);
    if (spindle.collisionObject() != nullptr) {
        EXPECT_LT((placeOf(spindle.collisionObject()->getTransform(), tip) - reached).norm(), kAgreement_mm)
            << "the collision object stands elsewhere, seed " << kSeed;
    }
    return (reached - placeInScene(root, system.switcher(), programmed)).norm();
}

class MotionTruth : public ::testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(MotionTruth, TheToolTipStandsOnTheProgrammedPoint) {
    ShippedMachine shipped(GetParam());
    shipped.manager->switchCollision(false);
    std::mt19937 random(kSeed);
    int settings = 0;
    for (const auto& record : shipped.machine->workCoordinateSystems) {
        WorkCoordinateSystem* zone = shipped.manager->findWorkCoordinateSystem(record->name);
        for (const ToolRecord& tool : qAsConst(shipped.tools)) {
            SpindleNode* spindle = shipped.manager->findSpindle(tool.spindleNo);
            if (spindle == nullptr)
                continue;
            spindle->setTool(ToolData(tool));
            for (int round = 0; round < 15; ++round) {
                for (const QString& chain : record->kinematicChain) {
                    EXPECT_LT(tipFromPoint(shipped, *zone, chain, tool, random), kAgreement_mm)
                        << record->name.toStdString() << " tool " << tool.index << " seed " << kSeed;
                    ++settings;
                }
            }
        }
    }
    EXPECT_GE(settings, 15);
}

TEST_P(MotionTruth, WhatCollidesStandsWhereItIsDrawn) {
    ShippedMachine shipped(GetParam());
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> value(-170, 800);
    for (int round = 0; round < 20; ++round) {
        QString line;
        for (const auto& axis : shipped.machine->numericalAxes)
            line += axis->name + QString::number(value(random), 'f', 3) + QLatin1Char(' ');
        shipped.manager->executeLine(line);
        for (AxisBase* axis : shipped.manager->axes()) {
            if (shipped.manager->findNode(axis->name()) == nullptr)
                continue;  // an auxiliary axis without a chain is in no scene
            const Eigen::Vector3d point(3, -2, 5);
            const Eigen::Vector3d drawn = placeInScene(shipped.manager->root(), axis->shapeSwitch(), point);
            ASSERT_NE(axis->collisionObject(), nullptr);
            EXPECT_LT((placeOf(axis->collisionObject()->getTransform(), point) - drawn).norm(), kAgreement_mm)
                << axis->name().toStdString() << " seed " << kSeed << " round " << round;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, MotionTruth,
                         ::testing::Values("TornBridge5.xml", "TornNest3.xml", "TornPortal5.xml"),
                         [](const ::testing::TestParamInfo<const char*>& kind) {
                             return std::string(kind.param).substr(0, std::string(kind.param).find('.'));
                         });
