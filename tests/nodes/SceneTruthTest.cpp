// The shipped machines, built as nodes from their files and models: where everything stands in the scene, and
// where the collision objects stand, must be where a scene in double precision has it.

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTemporaryFile>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/modelNode.h"
#include "installation/MachineSceneModel.h"
#include "machine/SpindleClass.h"
#include "machine/calc/MachineFile.h"
#include "nodes/NodesTestSupport.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolData.h"

namespace {

constexpr double kAgreement_mm = 0.001;

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// Models, tools and texts come from the shipped installation.
class ShippedFolder {
  public:
    ShippedFolder() {
        setInstallationFolder(shippedInstallation());
        TORNVALE::LanguageReader::instance().reload();
        getUniquelyIdentifies::instance().reload();
    }
    ~ShippedFolder() { setInstallationFolder(QString()); }
    ShippedFolder(const ShippedFolder&) = delete;
    ShippedFolder& operator=(const ShippedFolder&) = delete;
};

/// For spindles without a tool in the library.
ToolRecord plainTool(int spindleNo) {
    ToolRecord tool;
    tool.spindleNo = spindleNo;
    tool.transform = {1, 2, 3, 10, 20, 30};
    tool.contour = {SbVec3f(10, 0, 0), SbVec3f(10, 0, -100)};
    return tool;
}

/// A machine's scene: its axes along the chains, its zones, and its spindles with their first tool.
class Machine {
  public:
    explicit Machine(const QString& fileName) {
        box_.open();
        box_.write(binaryStl(boxTriangles(SbVec3f(10, 10, 10))));
        box_.close();
        Diagnostics diagnostics;
        description_ = readMachineFile(
            bytesOf(shippedInstallation() + QStringLiteral("/machineSample/") + fileName), diagnostics);
        for (const auto& record : description_->numericalAxes)
            axes_[record->name] = makeAxis(*record);
        for (const QString& entry : description_->machineParameters.kinematicChain) {
            for (const QString& chain : entry.split(QLatin1Char(';'), Qt::SkipEmptyParts))
                link(chain.trimmed().split(QStringLiteral("->"), Qt::SkipEmptyParts));
        }
        addParts();
        addZones();
        addSpindles();
    }
    void link(const QStringList& names) {
        root_->addChild(axes_.value(names.first()));
        for (int i = 0; i + 1 < names.size(); ++i)
            axes_.value(names[i])->addChild(axes_.value(names[i + 1]));
        for (const QString& name : names)
            inScene_.append(name);
    }
    void addParts() {
        for (const auto& record : description_->nonNumericalAxes)
            parts_[record->name] = makePart(*record);
        for (const auto& record : description_->nonNumericalAxes) {
            if (record->parent.isEmpty())
                root_->addChild(parts_.value(record->name));
            else
                carrier(record->parent)->addChild(parts_.value(record->name));
        }
    }
    [[nodiscard]] AxisBase* carrier(const QString& name) const {
        if (axes_.contains(name))
            return axes_.value(name);
        return parts_.value(name);
    }
    void addZones() {
        for (const auto& record : description_->workCoordinateSystems) {
            auto* zone = new WorkCoordinateSystem;  // owned by the scene
            zone->set(*record);
            if (record->parent.isEmpty()) {
                zone->standAtOrigin();
                root_->addChild(zone);
            } else {
                carrier(record->parent)->addChild(zone);
            }
            zone->userCoordinateSystem(0)->AddWorkPiece(box_.fileName());
            zones_.append(zone);
        }
    }
    void addSpindles() {
        Diagnostics diagnostics;
        const auto library = readToolLibrary(bytesOf(shippedInstallation() + QStringLiteral("/toollib.json")),
                                             QStringLiteral("1.0.0.0"), diagnostics);
        for (const auto& record : description_->spindles) {
            auto* spindle = new SpindleNode;  // owned by the scene
            spindle->Setup(record.get());
            const QStringList path = record->parent.split(QStringLiteral("->"), Qt::SkipEmptyParts);
            axes_.value(path.last())->addChild(spindle);
            spindle->setTool(ToolData(plainTool(spindle->number())));
            for (const ToolRecord& tool : library->tools) {
                if (tool.spindleNo == spindle->number())
                    spindle->setTool(ToolData(tool));
            }
            spindles_.append(spindle);
        }
    }

    ShippedFolder shipped_;
    QTemporaryFile box_{QDir::tempPath() + QStringLiteral("/cubeXXXXXX.stl")};
    std::unique_ptr<MachineDescription> description_;
    Held<SoSeparator> root_{new SoSeparator};  // owned by its reference
    QMap<QString, numericalAxis*> axes_;
    QMap<QString, NonNumericalAxis*> parts_;
    QStringList inScene_;
    QVector<WorkCoordinateSystem*> zones_;
    QVector<SpindleNode*> spindles_;
};

class SceneTruth : public ::testing::TestWithParam<const char*> {};

/// The oracle's pose of an axis: where it carries a point.
Eigen::Vector3d carried(const MachineSceneModel& oracle, const QString& axis, const Eigen::Vector3d& point) {
    workCoordinateSystemStruct onAxis;
    onAxis.parent = axis;
    return oracle.workPoint(onAxis, Eigen::Vector3d::Zero(), point);
}

/// One round: the machine and the oracle at the same random values.
class Round {
  public:
    Round(Machine& machine, std::mt19937& random, std::string where)
        : machine_(machine), random_(random), oracle_(*machine.description_), where_(std::move(where)) {
        std::uniform_real_distribution<float> value(-180, 1400);
        for (const QString& name : machine_.inScene_) {
            const float set = value(random_);
            machine_.axes_.value(name)->setValue(set);
            oracle_.setValue(name, double{set});
        }
    }

    void compareAxes() {
        for (const QString& name : machine_.inScene_) {
            numericalAxis* axis = machine_.axes_.value(name);
            const Eigen::Vector3d point = randomPoint();
            compare(axis->shapeSwitch(), axis->collisionObject(), point, carried(oracle_, name, point), name);
        }
    }
    void compareParts() {
        for (const auto& record : machine_.description_->nonNumericalAxes) {
            NonNumericalAxis* part = machine_.parts_.value(record->name);
            const Eigen::Vector3d point = randomPoint();
            compare(part->shapeSwitch(), part->collisionObject(), point, placeOn(record->name, point),
                    record->name);
        }
    }
    void compareZones() {
        for (WorkCoordinateSystem* zone : machine_.zones_) {
            userCoordinateSystem* system = zone->userCoordinateSystem(0);
            const Eigen::Vector3f shift = (randomPoint() * 20).cast<float>();
            system->setTranslation(SbVec3f(shift.x(), shift.y(), shift.z()));
            const Eigen::Vector3d point = randomPoint();
            UserModelNode* piece = system->userModels()[0];
            const Eigen::Vector3d placed = point + shift.cast<double>();
            const QString& parent = zone->record().parent;
            const Eigen::Vector3d expected =
                parent.isEmpty() ? oracle_.workPoint(zone->record(), shift.cast<double>(), point)
                                 : placeOn(parent, placed);
            compare(piece->faceSet(), piece->collisionObject(), point, expected, zone->displayName());
        }
    }
    void compareSpindles() {
        for (SpindleNode* spindle : machine_.spindles_) {
            const ToolRecord& tool = spindle->tool().record();
            const Eigen::Vector3d tip =
                tool.isChainSaw() ? Eigen::Vector3d(-double{tool.toolTip[0]}, 0, -double{tool.toolTip[2]})
                                  : Eigen::Vector3d(0, 0, -double{tool.length});
            compare(spindle->toolShape(), spindle->collisionObject(), tip, oracle_.toolTip(tool),
                    spindle->displayName());
        }
    }

  private:
    /// Where a point on an axis or a part stands. Parts stand as their file says, zones shift what they
    /// stand on.
    [[nodiscard]] Eigen::Vector3d placeOn(const QString& name, const Eigen::Vector3d& point) const {
        if (name.isEmpty())
            return point;
        if (machine_.inScene_.contains(name))
            return carried(oracle_, name, point);
        for (const auto& part : machine_.description_->nonNumericalAxes) {
            if (part->name != name)
                continue;
            Eigen::Vector3d placed = point + vectorOf(part->initialization);
            for (const auto& zone : machine_.description_->workCoordinateSystems) {
                if (zone->parent == name)
                    placed += vectorOf(zone->initialization);
            }
            return placeOn(part->parent, placed);
        }
        ADD_FAILURE() << name.toStdString();
        return point;
    }
    [[nodiscard]] Eigen::Vector3d randomPoint() {
        std::uniform_real_distribution<double> part(-5, 5);
        const double x = part(random_);
        const double y = part(random_);
        return {x, y, part(random_)};
    }
    void compare(SoNode* shape, const fcl::CollisionObject<float>* object, const Eigen::Vector3d& point,
                 const Eigen::Vector3d& expected, const QString& name) {
        EXPECT_LT((placeInScene(machine_.root_.get(), shape, point) - expected).norm(), kAgreement_mm)
            << where_ << " scene of " << name.toStdString();
        ASSERT_NE(object, nullptr) << where_ << ' ' << name.toStdString();
        EXPECT_LT((placeOf(object->getTransform(), point) - expected).norm(), kAgreement_mm)
            << where_ << " object of " << name.toStdString();
    }

    Machine& machine_;
    std::mt19937& random_;
    MachineSceneModel oracle_;
    std::string where_;
};

}  // namespace

TEST_P(SceneTruth, NodesAndCollisionObjectsStandWhereTheOracleHasThem) {
    Machine machine{QLatin1String(GetParam())};
    ASSERT_GE(machine.inScene_.size(), 3);
    ASSERT_FALSE(machine.zones_.isEmpty());
    ASSERT_FALSE(machine.spindles_.isEmpty());
    std::mt19937 random(2024);
    for (int number = 0; number < 60; ++number) {
        Round round(machine, random, GetParam() + std::string(" seed 2024 round ") + std::to_string(number));
        round.compareAxes();
        round.compareParts();
        round.compareZones();
        round.compareSpindles();
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, SceneTruth,
                         ::testing::Values("TornBridge5.xml", "TornNest3.xml", "TornPortal5.xml"),
                         [](const ::testing::TestParamInfo<const char*>& kind) {
                             return std::string(kind.param).substr(0, std::string(kind.param).find('.'));
                         });
