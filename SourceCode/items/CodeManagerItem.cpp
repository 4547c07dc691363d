#include "items/CodeManagerItem.h"

#include <Inventor/SbRotation.h>

#include <QBrush>
#include <QDebug>
#include <QFile>
#include <QIcon>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <utility>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/PlaybackText.h"
#include "items/UserTopItem.h"
#include "items/calc/ItemText.h"
#include "machine/MotionNodeManager.h"
#include "machine/Transform.h"
#include "machine/calc/AxisLimits.h"
#include "machine/readConfig.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/trajNode.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace TORNVALE {

namespace {

const QColor kChecked(255, 255, 255);
const QColor kUnchecked(255, 255, 0);
const QColor kFailed(255, 0, 0);
const QColor kInLimits(0, 255, 0);
const QColor kOverLimit(255, 0, 0);

quint64 nextItemId() {
    static quint64 last = 0;
    return ++last;
}

QString itemText(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("CodeManagerItem"), QLatin1String(key));
}

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

/// Degrees to radians as everywhere where a rotation of the scene is made: single precision, divided first.
SbRotation rotationAbout(const SbVec3f& axis, float angle_deg) {
    return {axis, angle_deg / 180.0F * 3.1415927F};
}

}  // namespace

/// While it lives the item changes itself: check marks are no action of the user.
class CodeManagerItem::Guard {
  public:
    explicit Guard(CodeManagerItem& item) : item_(item), before_(std::exchange(item.changingItself_, true)) {}
    ~Guard() { item_.changingItself_ = before_; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

  private:
    CodeManagerItem& item_;
    bool before_;
};

CodeManagerItem::CodeManagerItem(int type, const QString& displayName, const QString& icon,
                                 const char* typeName)
    : QTreeWidgetItem(type), tool_(std::make_unique<ToolData>()), id_(nextItemId()) {
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled);
    setCheckState(kNameColumn, Qt::Checked);
    record_.DisplayName = displayName;
    setText(kKindColumn, displayName);
    setIcon(kTypeColumn, QIcon(icon));
    for (int column = kToolColumn; column < kColumnCount; ++column)
        setTextAlignment(column, int(Qt::AlignRight) | int(Qt::AlignVCenter));
    ToolsManager& tools = ToolsManager::instance();
    tools.addObserver(this, typeName);
    toolList_ = tools.installedTools();
    changingItself_ = false;
}

CodeManagerItem::~CodeManagerItem() {
    changingItself_ = true;
    leaveScene();
    ToolsManager::instance().removeObserver(this);
}

UserTopItem* CodeManagerItem::group() const {
    return dynamic_cast<UserTopItem*>(QTreeWidgetItem::parent());
}

// --- tool ---

void CodeManagerItem::SetTool(ToolData* tool, bool generate) {
    if (tool == nullptr)
        return;
    changed();
    *tool_ = *tool;
    record_.ItemRpm = static_cast<double>(tool->record().rpm);
    const QString& wanted = tool->record().installationName;
    if (wanted.size() > 1) {
        record_.Chain.clear();
        if (const workCoordinateSystemStruct* zone = machine().findWorkCoordinateSystem(record_.WCSName)) {
            const auto chain = std::find_if(zone->kinematicChain.begin(), zone->kinematicChain.end(),
                                            [&wanted](const QString& name) { return name.contains(wanted); });
            if (chain != zone->kinematicChain.end())
                record_.Chain = *chain;
        }
    } else {
        const UserTopItem* parent = group();
        if (parent == nullptr)
            qFatal("parent is not UserTopItem");
        record_.Chain = parent->chain();
    }
    if (generate)
        doIt();
}

void CodeManagerItem::UpdateToolList(QList<ToolData*> tools) {
    toolList_ = std::move(tools);
    const ToolRecord& own = tool_->record();
    ToolData* found = nullptr;
    // Numbers start anew on every spindle: of several tools of the number the item's own spindle decides.
    for (ToolData* tool : std::as_const(toolList_)) {
        if (tool->record().toolNo != own.toolNo)
            continue;
        if (found == nullptr || tool->record().spindleNo == own.spindleNo)
            found = tool;
        if (tool->record().spindleNo == own.spindleNo)
            break;
    }
    if (found == nullptr) {
        qWarning() << "tool not found.will keep last tool";
        return;
    }
    UserTopItem* parent = group();
    if (parent == nullptr)
        return;
    SetTool(found, true);
    Q_EMIT parent->edited(QStringLiteral("ChangeTool"));
}

void CodeManagerItem::adoptTool(const QJsonValue& tool) {
    ToolData read;
    if (tool.isArray() && !tool.toArray().isEmpty())
        read.fromJsonArray(tool.toArray());
    else
        read.fromJson(tool.toObject());
    SetTool(&read, false);
}

const ToolData* CodeManagerItem::toolData() const {
    return tool_.get();
}

// --- place in the scene ---

userCoordinateSystem* CodeManagerItem::ucs() const {
    const MotionNodeManager* manager = MotionNodeManager::instance();
    const WorkCoordinateSystem* zone =
        manager == nullptr ? nullptr : manager->findWorkCoordinateSystem(record_.WCSName);
    return zone == nullptr ? nullptr : zone->userCoordinateSystem(record_.UserCoordiSystemId);
}

void CodeManagerItem::MapItemToNode() {
    if (MotionNodeManager::instance() == nullptr) {
        qWarning().noquote() << itemText("MachineNodeIsNullptrErrorMsg");
        return;
    }
    userCoordinateSystem* system = ucs();
    if (system == nullptr)
        return;
    if (trajNode* node = trajNode::addProgram(*system, this))
        node->setShown(isActive());
}

void CodeManagerItem::toScene(WayPoints& points) const {
    constexpr int kBackToTheTip = 1;
    const TransformationOperator transformation(tool_.get(), 0, record_.UserCoordinate, record_.Chain,
                                                record_.WCSName, kBackToTheTip);
    transformation.transformPoints(points);
}

void CodeManagerItem::leaveScene() {
    if (node_ == nullptr)
        return;
    trajNode* node = std::exchange(node_, nullptr);
    node->forgetItem();
    node->moveTo(nullptr);
}

void CodeManagerItem::changeUserCoordinateSystem(int id) {
    changed();
    record_.lastUserCoordinateSystemId = record_.UserCoordiSystemId;
    record_.UserCoordiSystemId = id;
    leaveScene();
}

void CodeManagerItem::refreshUserCoordinateIds() {
    if (const UserTopItem* parent = group())
        userCoordinateIds_ = parent->userCoordinateIds();
}

void CodeManagerItem::takePlaceFrom(const UserTopItem& parent) {
    changed();
    record_.Chain = parent.chain();
    record_.WCSName = parent.wcsName();
    userCoordinateIds_ = parent.userCoordinateIds();
    if (!userCoordinateIds_.contains(record_.UserCoordiSystemId))
        record_.UserCoordiSystemId = userCoordinateIds_.value(0);
    leaveScene();
}

// --- generation ---

void CodeManagerItem::prepare() {
    changed();
    if (const userCoordinateSystem* system = ucs())
        record_.UserCoordinate = system->translation();
}

void CodeManagerItem::closeGeneration() {
    for (CodeManagerItem* neighbour : {previousActive(), nextActive()}) {
        if (neighbour != nullptr && neighbour->type() == kCurveItem)
            neighbour->doIt();
    }
}

void CodeManagerItem::regenerate() {
    if (group() == nullptr)
        return;
    const double before = exitFifth();
    doIt();
    UserTopItem* parent = group();
    if (parent != nullptr && exitFifth() != before)
        parent->regenerateAfter(this);
}

void CodeManagerItem::updateTime() {
    record_.Time = runTime_s(record_.LeadIn, record_.IsoCode, record_.LeadOut,
                             machine().interpolationParameters.interpolationTime);
}

SbMatrix CodeManagerItem::rotationMatrix() const {
    const AxisMap letters = machine().axisMap(record_.Chain, false);
    SbVec3f directions[2];
    for (int i = 0; i < 2; ++i) {
        const numericalAxisStruct* axis = machine().findAxis(letters.value(4 + i));
        const std::optional<SbVec3f> direction = axis ? threeNumbers(axis->direction) : std::nullopt;
        if (!direction)
            return SbMatrix::identity();
        directions[i] = *direction;
    }
    SbMatrix matrix;
    matrix.setRotate(rotationAbout(directions[1], record_.Fifth) *
                     rotationAbout(directions[0], record_.Fourth));
    return matrix;
}

// --- limits, neighbours ---

QString CodeManagerItem::joinedCode() const {
    return record_.LeadIn + QLatin1Char('\n') + record_.IsoCode + QLatin1Char('\n') + record_.LeadOut;
}

bool CodeManagerItem::isInLimits() const {
    if (!isActive())
        return true;
    Diagnostics diagnostics;
    auto rows = axisLimitRows(machine(), machine().axisMap(record_.Chain, true), diagnostics);
    if (!rows)
        qFatal("%s", qPrintable(diagnostics.entries.back().text));
    return !checkAxisLimits(*rows, joinedCode());
}

bool CodeManagerItem::isActive() const {
    return checkState(kNameColumn) == Qt::Checked;
}

CodeManagerItem* CodeManagerItem::sibling(int step) const {
    const QTreeWidgetItem* parent = QTreeWidgetItem::parent();
    if (parent == nullptr)
        return nullptr;
    const int index = parent->indexOfChild(const_cast<CodeManagerItem*>(this)) + step;
    return index < 0 ? nullptr : dynamic_cast<CodeManagerItem*>(parent->child(index));
}

CodeManagerItem* CodeManagerItem::activeNeighbour(int step) const {
    const QTreeWidgetItem* parent = QTreeWidgetItem::parent();
    if (parent == nullptr)
        return nullptr;
    const int index = parent->indexOfChild(const_cast<CodeManagerItem*>(this));
    for (int i = index + step; i >= 0 && i < parent->childCount(); i += step) {
        auto* item = dynamic_cast<CodeManagerItem*>(parent->child(i));
        if (item != nullptr && item->isActive() && item->chainName() == chainName())
            return item;
    }
    return nullptr;
}

CodeManagerItem* CodeManagerItem::previousActive() const {
    return activeNeighbour(-1);
}

CodeManagerItem* CodeManagerItem::nextActive() const {
    return activeNeighbour(1);
}

double CodeManagerItem::previousFifth() const {
    const CodeManagerItem* previous = previousActive();
    return previous == nullptr ? 0 : previous->exitFifth();
}

double CodeManagerItem::exitFifth() const {
    return lastAxisValue(record_.LeadOut, machine().axisMap(record_.Chain, false).value(5));
}

// --- columns ---

void CodeManagerItem::setName(const QString& name) {
    changed();
    record_.Name = name;
    setText(kNameColumn, name);
}

void CodeManagerItem::setChecked(bool checked) {
    setCheckState(kNameColumn, checked ? Qt::Checked : Qt::Unchecked);
}

void CodeManagerItem::takeCheckState(bool checked) {
    // An item that has ended without code stays unchecked, whatever the document says.
    if (record_.IsoCode.isEmpty() || checked == isActive())
        return;
    {
        const Guard guard(*this);
        setChecked(checked);
    }
    paintRow(checked ? kChecked : kUnchecked);
    paintLimits();
    if (node_ != nullptr)
        node_->setShown(checked);
}

void CodeManagerItem::showColumns() {
    setText(kNameColumn, record_.Name);
    setText(kKindColumn, record_.DisplayName);
    setText(kToolColumn, tool_->displayText());
    setText(kSystemColumn, QString::number(record_.UserCoordiSystemId));
    setText(kRpmColumn, QString::number(record_.ItemRpm));
    const UserTopItem* parent = group();
    const std::shared_ptr<AuxiliaryAxis> axis = parent ? parent->auxiliaryAxis() : nullptr;
    setText(kAuxiliaryColumn, axis ? auxiliaryWord(*axis) : QString());
}

void CodeManagerItem::paintRow(const QColor& colour) {
    for (int column = 0; column < kColumnCount; ++column)
        setBackground(column, colour);
}

void CodeManagerItem::paintLimits() {
    const bool inLimits = isInLimits();
    setText(kLimitColumn, itemText(inLimits ? "InLimited" : "OverLimited"));
    setBackground(kLimitColumn, inLimits ? kInLimits : kOverLimit);
}

void CodeManagerItem::refresh() {
    showColumns();
    if (record_.IsoCode.isEmpty()) {
        markFailed();
    } else {
        paintRow(isActive() ? kChecked : kUnchecked);
        paintLimits();
    }
    if (node_ != nullptr)
        node_->UpdateNode();
    else if (group() != nullptr)
        MapItemToNode();
    if (node_ != nullptr)
        node_->setShown(isActive());
    if (UserTopItem* parent = group())
        Q_EMIT parent->itemRefreshed(this);
}

void CodeManagerItem::markFailed() {
    const Guard guard(*this);
    const bool wasActive = isActive();
    setChecked(false);
    UserTopItem* parent = group();
    if (wasActive && parent != nullptr)
        parent->regenerateAfter(this);
    setText(kLimitColumn, {});
    paintRow(kFailed);
}

// --- check mark ---

void CodeManagerItem::setData(int column, int role, const QVariant& value) {
    const bool isCheck = column == kNameColumn && role == Qt::CheckStateRole;
    const bool before = isCheck && isActive();
    QTreeWidgetItem::setData(column, role, value);
    if (isCheck)
        changed();
    if (!isCheck || changingItself_ || before == isActive())
        return;
    UserTopItem* parent = group();
    if (parent == nullptr)
        return;
    parent->changeTogether([this] { checkChanged(); });
    Q_EMIT parent->edited(QStringLiteral("CheckItem"));
}

void CodeManagerItem::checkChanged() {
    const bool checked = isActive();
    if (!checked)
        doIt();
    paintRow(checked ? kChecked : kUnchecked);
    paintLimits();
    if (record_.IsoCode.isEmpty())
        markFailed();
    if (node_ != nullptr)
        node_->setShown(isActive());
    checkNeighbouringCurves(isActive());
    if (UserTopItem* parent = group())
        parent->regenerateAfter(this);
}

void CodeManagerItem::checkNeighbouringCurves(bool checked) {
    if (type() == kCurveItem && !checked)
        return;
    for (const int step : {-1, 1}) {
        CodeManagerItem* neighbour = sibling(step);
        if (neighbour == nullptr || (type() != kCurveItem && neighbour->type() != kCurveItem))
            continue;
        neighbour->setChecked(checked);
        if (type() == kCurveItem && step < 0)
            neighbour->doIt();
    }
}

// --- document of one item, undo ---

void CodeManagerItem::WriteTo() {
    const QString path =
        userDialogs().saveFile(itemText("Title"), QStringLiteral("."), QStringLiteral("Text Files(*.txt)"));
    if (path.isEmpty())
        return;
    const QJsonDocument document(inspectionBlock(record_, type(), tool_->toJson()));
    QFile file(path);
    // The write is tried all the same; without an open file it does nothing.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        qWarning().noquote() << itemText("SaveErrorMsg") << path;
    if (file.isOpen())
        file.write(document.toJson());
    file.close();
}

SharedItemState CodeManagerItem::state() const {
    if (state_ == nullptr || stateRevision_ != revision_) {
        state_ = std::make_shared<const ItemState>(
            ItemState{type(), id_, isActive(), record_, kindRecord(), tool_->record()});
        stateRevision_ = revision_;
    }
    return state_;
}

void CodeManagerItem::restore(const ItemState& state) {
    const Guard guard(*this);
    changed();
    id_ = state.id;
    if (record_.UserCoordiSystemId != state.record.UserCoordiSystemId ||
        record_.WCSName != state.record.WCSName)
        leaveScene();
    record_ = state.record;
    tool_->record() = state.tool;
    tool_->refreshRow();
    setKindRecord(state.kind);
    refreshUserCoordinateIds();
    const bool isNew = state.checked && state.record.IsoCode.isEmpty();
    setChecked(state.checked && !isNew);
    const userCoordinateSystem* system = ucs();
    // The code of a state fits the origin of that moment only.
    if (system != nullptr && system->translation() != record_.UserCoordinate && !record_.IsoCode.isEmpty())
        doIt();
    else
        refresh();
    if (isNew)
        markNew();
}

/// No code, and still checked: nothing was generated yet that could have failed.
void CodeManagerItem::markNew() {
    leaveScene();
    setChecked(true);
    paintRow(kChecked);
    if (UserTopItem* parent = group())
        Q_EMIT parent->itemRefreshed(this);
}

bool sameState(const ItemState& one, const ItemState& other) {
    return one.type == other.type && one.id == other.id && one.checked == other.checked &&
           one.record == other.record && one.kind == other.kind &&
           toolToJson(one.tool) == toolToJson(other.tool);
}

}  // namespace TORNVALE
