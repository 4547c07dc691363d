#include "app/batch/BatchMachine.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <QBuffer>
#include <QFile>
#include <limits>
#include <map>

#include "app/MachineScene.h"
#include "app/OffscreenRenderer.h"
#include "app/batch/BatchFiles.h"
#include "app/batch/BatchResults.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "machine/AxisBase.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "machine/readConfig.h"
#include "nc/commandProcessor.h"
#include "setup/WorkCoordinateSystem.h"

namespace {

constexpr int kLinesPerNote = 100000;

/// Calls `visit(line, number)` for each line that is not blank, until it returns false or the line `last` is
/// behind. Gives the number of lines, blank ones included; numbers count from 1.
template <typename Visit>
int forEachLine(const QString& code, const Visit& visit, int last = std::numeric_limits<int>::max()) {
    int number = 0;
    for (int from = 0; from < code.size() && number < last;) {
        const int feed = code.indexOf(QLatin1Char('\n'), from);
        const int to = feed < 0 ? code.size() : feed;
        ++number;
        const QString line = QStringView(code).mid(from, to - from).trimmed().toString();
        if (!line.isEmpty() && !visit(line, number))
            return number;
        from = to + 1;
    }
    return number;
}

Outcome badInput(const BatchCall& call, const QString& text) {
    return {std::nullopt, Failure{ExitStatus::BadInput, call.input, text}};
}

Outcome tooFewLines(const BatchCall& call, int lines) {
    return badInput(call, QStringLiteral("has %1 lines, expected at least %2").arg(lines).arg(call.line));
}

/// The path of the tool's tip on the table that carries the work, which moves below it.
class ToolPath {
  public:
    /// The point where the tool's tip is now.
    void add(const MotionNodeManager& machine, const WorkCoordinateSystem* zone) {
        constexpr std::size_t kMostPoints = 200000;
        const SpindleNode* const spindle = working(machine);
        if (zone == nullptr || spindle == nullptr || skipped_++ % stride_ != 0)
            return;
        const float length = spindle->tool().record().length;
        const Eigen::Vector3f tip =
            spindle->collisionObject()->getTransform() * Eigen::Vector3f(0, 0, -length);
        const Eigen::Vector3f onTable = zone->carrierTransform().inverse() * tip;
        points_.emplace_back(onTable.x(), onTable.y(), onTable.z());
        if (points_.size() < kMostPoints)
            return;
        // A longer program keeps every other point.
        for (std::size_t i = 0; 2 * i < points_.size(); ++i)
            points_[i] = points_[2 * i];
        points_.resize(points_.size() / 2);
        stride_ *= 2;
    }

    /// Hangs the path on the table.
    void show(WorkCoordinateSystem* zone) const {
        if (zone == nullptr || points_.size() < 2)
            return;
        constexpr float kWidth = 3;
        auto* const group = new SoSeparator;   // owned by the zone
        auto* const light = new SoLightModel;  // owned by the group
        light->model = SoLightModel::BASE_COLOR;
        group->addChild(light);
        auto* const color = new SoBaseColor;  // owned by the group
        color->rgb.setValue(0.85F, 0.25F, 0.1F);
        group->addChild(color);
        auto* const style = new SoDrawStyle;  // owned by the group
        style->lineWidth = kWidth;
        group->addChild(style);
        auto* const line = new SoLineSet;             // owned by the group
        auto* const vertices = new SoVertexProperty;  // owned by the line
        vertices->vertex.setValues(0, static_cast<int>(points_.size()), points_.data());
        line->vertexProperty = vertices;
        line->numVertices = static_cast<int>(points_.size());
        group->addChild(line);
        zone->addChild(group);
    }

  private:
    /// The spindle whose tool the program mounted, otherwise the first that holds one.
    [[nodiscard]] static const SpindleNode* working(const MotionNodeManager& machine) {
        const SpindleNode* found = nullptr;
        for (const SpindleNode* spindle : machine.spindles()) {
            if (spindle->collisionObject() == nullptr)
                continue;
            if (spindle->hasToolChanger())
                return spindle;
            found = found == nullptr ? spindle : found;
        }
        return found;
    }

    std::vector<SbVec3f> points_;
    std::size_t skipped_ = 0;
    std::size_t stride_ = 1;
};

QColor backgroundOfSettings() {
    const QStringList parts = ParaReader()
                                  .value(QStringLiteral("MainInterface/BackGroundColor"))
                                  .toString()
                                  .split(QLatin1Char(' '));
    double rgb[3] = {0.9, 0.92, 0.94};
    for (int i = 0; i < 3 && parts.size() == 3; ++i)
        rgb[i] = qBound(0.0, parts[i].toDouble(), 1.0);
    return QColor::fromRgbF(rgb[0], rgb[1], rgb[2]);
}

std::optional<Failure> loadView(MachineScene& scene, const QString& path, ExitStatus statusOfFailure) {
    const std::variant<QByteArray, Failure> bytes = readBytes(path, statusOfFailure);
    if (const Failure* failure = std::get_if<Failure>(&bytes))
        return *failure;
    if (scene.setCameraText(QString::fromUtf8(std::get<QByteArray>(bytes))))
        return std::nullopt;
    return Failure{statusOfFailure, path,
                   QStringLiteral("is no view, expected a file that the window saved")};
}

/// The view that was asked for, otherwise the installation's own of its own machine, otherwise all.
std::optional<Failure> aim(MachineScene& scene, const BatchCall& call) {
    constexpr float kUsualAspect = 1.6F;
    const SbViewportRegion picture(static_cast<short>(call.size_px[0]), static_cast<short>(call.size_px[1]));
    if (call.cameraFile)
        return loadView(scene, *call.cameraFile, ExitStatus::BadInput);
    const QString path = installationPath(QStringLiteral("camera.txt"));
    if (call.machineFile || !QFile::exists(path)) {
        scene.viewAll(picture);
        return std::nullopt;
    }
    if (std::optional<Failure> failure = loadView(scene, path, ExitStatus::BadInstallation))
        return failure;
    // A view of the whole machine stays one when the picture is narrower than a window.
    if (scene.isAllInSight(kUsualAspect) && !scene.isAllInSight(picture.getViewportAspectRatio()))
        scene.fit(picture);
    return std::nullopt;
}

}  // namespace

BatchMachine::BatchMachine(const QVector<ToolRecord>& tools) {
    for (const ToolRecord& tool : tools)
        tools_.push_back(std::make_unique<ToolData>(tool));
    make();
}

void BatchMachine::make() {
    QList<ToolData*> installed;
    for (const std::unique_ptr<ToolData>& tool : tools_)
        installed.append(tool.get());
    own_.reset();
    own_ = std::make_unique<MotionNodeManager>(ConfigReader::instance().description());
    machine_ = own_.get();
    machine_->UpdateToolList(installed);
    machine_->commandProcessor().UpdateToolList(installed);
}

BatchMachine::BatchMachine(MotionNodeManager& machineOfJob) : machine_(&machineOfJob), isJob_(true) {}

BatchMachine::~BatchMachine() = default;

Outcome BatchMachine::run(const BatchCall& call, const QString& code) {
    if (call.command == BatchCommand::Simulate)
        return simulate(call, code);
    return isJob_ ? pictureOfJob(call, code) : picture(call, code);
}

Outcome BatchMachine::simulate(const BatchCall& call, const QString& code) {
    // A part that is not there touches nothing: no collision found would say nothing.
    for (const AxisBase* part : machine_->axes()) {
        if (!part->record().modelPath.isEmpty() && part->collisionObject() == nullptr)
            return {std::nullopt,
                    Failure{ExitStatus::BadInstallation, machine_->machine().path,
                            QStringLiteral("the model of %1 cannot be used, expected a mesh in %2")
                                .arg(part->name(), part->record().modelPath)}};
    }
    SimulationResult result;
    std::map<std::pair<QStringList, QStringList>, int> known;
    int current = 0;
    QObject::connect(machine_, &MotionNodeManager::contactFound,
                     [&result, &known, &current](const QStringList& first, const QStringList& second) {
                         const auto [pair, isNew] =
                             known.emplace(std::pair(first, second), static_cast<int>(result.pairs.size()));
                         const QString arrow = QStringLiteral("->");
                         if (isNew)
                             result.pairs.emplace_back(first.join(arrow), second.join(arrow));
                         result.contacts.push_back({current, pair->second});
                     });
    forEachLine(code, [this, &call, &result, &current](const QString& line, int number) {
        current = number;
        ++result.lines;
        machine_->executeLine(line);
        if (number % kLinesPerNote == 0)
            printProgress(call.input, QStringLiteral("%1 lines played").arg(number));
        return !call.stopAtFirst || result.contacts.empty();
    });
    constexpr double kMsPerSecond = 1000.0;
    result.seconds =
        result.lines * (machine_->machine().interpolationParameters.interpolationTime / kMsPerSecond);
    Outcome outcome;
    outcome.result = simulationJson(result);
    if (!result.contacts.empty()) {
        const SimulatedContact& first = result.contacts.front();
        const auto& [one, other] = result.pairs[static_cast<std::size_t>(first.pair)];
        outcome.failure =
            Failure{ExitStatus::ProgramAtFault, QStringLiteral("%1:%2").arg(call.input).arg(first.line),
                    QStringLiteral("collision: %1 touches %2").arg(one, other)};
    }
    return outcome;
}

/// The path is that of the whole program, but the machine is to stand where the line leaves it: a new one is
/// played up to there. Gives the zone of the new machine.
WorkCoordinateSystem* BatchMachine::standBehind(int line, const QString& code,
                                                const WorkCoordinateSystem* zone) {
    const QString name = zone != nullptr ? zone->displayName() : QString();
    make();
    machine_->switchCollision(false);
    forEachLine(
        code,
        [this](const QString& text, int) {
            machine_->executeLine(text);
            return true;
        },
        line);
    return zone != nullptr ? machine_->findWorkCoordinateSystem(name) : nullptr;
}

std::variant<WorkCoordinateSystem*, Failure> BatchMachine::table(const BatchCall& call) const {
    const auto& zones = machine_->workCoordinateSystems();
    if (!call.workCoordinate)
        return zones.isEmpty() ? nullptr : zones.first();
    if (WorkCoordinateSystem* zone = machine_->findWorkCoordinateSystem(*call.workCoordinate))
        return zone;
    QStringList names;
    for (const WorkCoordinateSystem* zone : zones)
        names.append(zone->displayName());
    return Failure{ExitStatus::WrongCall, QStringLiteral("--wcs"),
                   QStringLiteral("%1 is no work coordinate system of the machine, expected one of %2")
                       .arg(*call.workCoordinate, names.join(QStringLiteral(", ")))};
}

Outcome BatchMachine::picture(const BatchCall& call, const QString& code) {
    const std::variant<WorkCoordinateSystem*, Failure> found = table(call);
    if (const Failure* failure = std::get_if<Failure>(&found))
        return {std::nullopt, *failure};
    auto* zone = std::get<WorkCoordinateSystem*>(found);
    machine_->switchCollision(false);
    ToolPath path;
    const int lines = forEachLine(code, [this, &path, zone](const QString& line, int) {
        machine_->executeLine(line);
        path.add(*machine_, zone);
        return true;
    });
    if (call.line > lines)
        return tooFewLines(call, lines);
    if (call.line > 0)
        zone = standBehind(call.line, code, zone);
    path.show(zone);
    return render(call);
}

/// Its items draw their paths themselves.
Outcome BatchMachine::pictureOfJob(const BatchCall& call, const QString& code) {
    if (call.workCoordinate)
        return {std::nullopt, Failure{ExitStatus::WrongCall, QStringLiteral("--wcs"),
                                      QStringLiteral("is for machine code only, a project draws the paths of "
                                                     "all its items")}};
    machine_->switchCollision(false);
    const int lines = forEachLine(
        code,
        [this](const QString& line, int) {
            machine_->executeLine(line);
            return true;
        },
        call.line > 0 ? call.line : std::numeric_limits<int>::max());
    if (call.line > lines)
        return tooFewLines(call, lines);
    return render(call);
}

/// The machine as it stands, parts that touch marked.
Outcome BatchMachine::render(const BatchCall& call) {
    machine_->collisionPass();
    MachineScene scene(*machine_->root());
    if (const std::optional<Failure> failure = aim(scene, call))
        return {std::nullopt, *failure};
    scene.addHeadLight();
    QString problem;
    const QImage image = OffscreenRenderer::render(scene, QSize(call.size_px[0], call.size_px[1]),
                                                   backgroundOfSettings(), problem);
    if (image.isNull())
        return {std::nullopt, Failure{ExitStatus::BadInstallation, QStringLiteral("picture"), problem}};
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return {png, std::nullopt};
}
