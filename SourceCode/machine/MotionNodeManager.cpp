#include "machine/MotionNodeManager.h"

#include <QAction>
#include <QDebug>
#include <QIcon>
#include <QJsonArray>
#include <typeinfo>

#include "core/LanguageReader.h"
#include "geometry/collisionDetector.h"
#include "machine/FixtureMounter.h"
#include "machine/MotionNodePrivate.h"
#include "machine/PlaybackStop.h"
#include "machine/calc/ChainText.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

MotionNodeManager* theManager = nullptr;  // the process's machine, made and ended by the main window

const QString kArrow = QStringLiteral("->");

const QStringList& pathOf(const fcl::CollisionObject<float>& object) {
    static const QStringList kNone;
    const auto* path = static_cast<const QStringList*>(object.getUserData());
    return path == nullptr ? kNone : *path;
}

}  // namespace

QString managerText(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("MotionNodeManager"),
                                                     QString::fromLatin1(key));
}

MotionNodeManager::MotionNodeManager(const MachineDescription& machine, QWidget* parent)
    : QWidget(parent), pimpl_(std::make_unique<Private>(machine)) {
    setObjectName(QStringLiteral("machineNode"));
    if (theManager == nullptr)
        theManager = this;
    InitializeChain();
    resetMachine(false, true);
    refreshCollisionGroup({});
    pimpl_->processor = new CommandProcessor(this);  // owned by this widget
    fillCommandMaps();
    buildToolBar();
    InitialRepeatNode();
    TORNVALE::ToolsManager::instance().addObserver(this, typeid(*this).name());
}

MotionNodeManager::~MotionNodeManager() {
    TORNVALE::ToolsManager::instance().removeObserver(this);
    listenToNodes(nullptr);
    delete pimpl_->spindleStatus;
    delete pimpl_->toolBar;
    if (theManager == this)
        theManager = nullptr;
}

MotionNodeManager* MotionNodeManager::instance() {
    return theManager;
}

// --- motion ---

void MotionNodeManager::executeLine(const QString& line) {
    const QString text = line.trimmed();
    if (text == pimpl_->lastLine)
        return;
    pimpl_->lastLine = text;
    if (text.contains(QLatin1Char('M'))) {
        pimpl_->processor->ProcessWord(text);
    } else {
        WordReader words(text);
        while (words.next()) {
            if (pimpl_->processor->ProcessWord(words.word()))
                refreshCollisionGroup({});
        }
        if (pimpl_->collisionEnabled)
            collisionPass();
    }
    Q_EMIT showCommandString(line);
}

void MotionNodeManager::bringHome() {
    constexpr int kAuxiliary = 6;
    for (AxisBase* axis : axes()) {
        const AxisRecord& record = axis->record();
        if (record.kind != AxisRecord::Numerical)
            continue;
        axis->resetColour();
        axis->setValue(static_cast<float>(record.id == kAuxiliary ? record.lower : record.home));
    }
}

void MotionNodeManager::resetMachine(bool clearAll, bool remountFixtures) {
    bringHome();
    if (!clearAll)
        return;
    ResetCollided();
    if (pimpl_->mounter != nullptr) {
        for (AxisBase* axis : axes())
            pimpl_->mounter->removeFixtures(*axis);
    }
    for (WorkCoordinateSystem* zone : workCoordinateSystems())
        zone->reset();
    refreshCollisionGroup({});
    if (remountFixtures)
        mountFixtures();
}

void MotionNodeManager::mountFixtures() {
    for (const UserFixtureList& fixture : machine().fixtures) {
        fixture.print();
        AxisBase* const axis = findAxis(fixture.key);
        for (int i = 0; axis != nullptr && pimpl_->mounter != nullptr && i < fixture.number; ++i)
            pimpl_->mounter->addFixture(*axis, fixture.value, static_cast<float>(i) * fixture.distance);
    }
}

// --- collisions ---

void MotionNodeManager::setCollisionEnabled() {
    pimpl_->groups.make();
}

void MotionNodeManager::refreshCollisionGroup(const QStringList& chain) {
    pimpl_->groups.refresh(chain);
}

void MotionNodeManager::collisionPass() {
    ResetCollided();
    pimpl_->groups.pass([this](auto* one, auto* other) { return touch(one, other); });
}

bool MotionNodeManager::touch(fcl::CollisionObject<float>* one, fcl::CollisionObject<float>* other) {
    if (!collisionDetector::collide(one, other))
        return false;
    markCollided(pathOf(*one));
    markCollided(pathOf(*other));
    Q_EMIT contactFound(pathOf(*one), pathOf(*other));
    if (pimpl_->playback != nullptr && pimpl_->playback->stopOnContact())
        pimpl_->playback->stop();
    return true;
}

void MotionNodeManager::markCollided(const QStringList& chain) {
    pimpl_->marks.mark(chain);
}

void MotionNodeManager::ResetCollided() {
    pimpl_->marks.reset();
    Q_EMIT contactsReset();
}

bool MotionNodeManager::isCollisionEnabled() const {
    return pimpl_->collisionEnabled;
}

void MotionNodeManager::switchCollision(bool enabled) {
    pimpl_->collisionEnabled = enabled;
    ResetCollided();
}

const QMap<QString, CollisionObjects>& MotionNodeManager::collisionGroups() const {
    return pimpl_->groups.groups();
}

const QVector<SoNode*>& MotionNodeManager::collidedNodes() const {
    return pimpl_->marks.nodes();
}

// --- tools ---

void MotionNodeManager::UpdateToolList(QList<ToolData*> tools) {
    toolList_ = std::move(tools);
    for (SpindleNode* spindle : spindles())
        spindle->setTool(ToolData(spindle->tool()));
    for (const ToolData* tool : qAsConst(toolList_)) {
        SpindleNode* const spindle = findSpindle(tool->record().spindleNo);
        if (spindle == nullptr)
            qDebug().noquote() << QStringLiteral("主轴Id错误 ") << __FILE__ << " " << __LINE__;
        else if (!spindle->hasToolChanger())
            spindle->setTool(*tool);
    }
    pimpl_->groups.refreshSpindleGroups();
}

/// Spindles without a changer wear whatever is installed for them, so they hold on to nothing.
bool MotionNodeManager::canRemoveTool(ToolData* tool) {
    const ToolRecord& record = tool->record();
    const SpindleNode* const spindle = findSpindle(record.spindleNo);
    return !toolList_.contains(tool) || spindle == nullptr || !spindle->hasToolChanger() ||
           spindle->collisionObject() == nullptr || spindle->tool().record().toolNo != record.toolNo;
}

void MotionNodeManager::emptyToolChangers() {
    for (SpindleNode* spindle : spindles()) {
        if (spindle->hasToolChanger())
            spindle->setTool(ToolData());
    }
}

CommandProcessor& MotionNodeManager::commandProcessor() const {
    return *pimpl_->processor;
}

void MotionNodeManager::setPlayback(PlaybackStop* playback) {
    pimpl_->playback = playback;
    pimpl_->processor->setPlayback(playback);
}

PlaybackStop* MotionNodeManager::playback() const {
    return pimpl_->playback;
}

void MotionNodeManager::setFixtureMounter(FixtureMounter* mounter) {
    pimpl_->mounter = mounter;
}

// --- project form ---

QJsonObject MotionNodeManager::toJson() const {
    QJsonObject object;
    const QStringList heads = chainHeads(machine().machineParameters.kinematicChain);
    for (const AxisBase* axis : axes()) {
        const QStringList chain = axis->nodeChain();
        if (heads.contains(chain.first()))
            object.insert(chain.join(kArrow), axis->toJson());
    }
    for (const WorkCoordinateSystem* zone : workCoordinateSystems())
        object.insert(zone->displayName(), zone->toJson());
    return object;
}

void MotionNodeManager::fromJson(const QJsonObject& object, bool legacy) {
    resetMachine(true, false);
    if (legacy) {
        // The older form knows two tables, which are these two zones.
        const auto coordinates = [&object](const char* table) {
            return object.value(QLatin1String(table))
                .toObject()
                .value(QStringLiteral("coordinate"))
                .toArray();
        };
        if (WorkCoordinateSystem* left = findWorkCoordinateSystem(QStringLiteral("G54")))
            left->fromJsonArray(coordinates("Y"));
        if (WorkCoordinateSystem* right = findWorkCoordinateSystem(QStringLiteral("G55")))
            right->fromJsonArray(coordinates("V"));
    } else {
        for (auto member = object.begin(); member != object.end(); ++member) {
            // A user's system may have the name of a zone: zones are not searched in the scene.
            if (WorkCoordinateSystem* zone = findWorkCoordinateSystem(member.key()))
                zone->fromJson(member.value().toObject());
            else if (auto* axis = dynamic_cast<AxisBase*>(findNodeByPath(member.key().split(kArrow))))
                axis->fromJson(member.value().toObject());
        }
    }
    refreshCollisionGroup({});
}

// --- widgets ---

QList<QTreeWidgetItem*> MotionNodeManager::treeItems() const {
    QList<QTreeWidgetItem*> items;
    const auto add = [&items](QTreeWidgetItem* item) {
        if (item != nullptr && !items.contains(item))
            items.append(item);
    };
    for (const QString& entry : machine().machineParameters.kinematicChain) {
        for (const QString& chain : entry.split(QLatin1Char(';'))) {
            // Only a chain whose head has a one-letter name gets a row.
            AxisBase* const head = findAxis(chain.trimmed().left(1));
            add(head == nullptr ? nullptr : head->treeItem());
        }
    }
    for (WorkCoordinateSystem* zone : workCoordinateSystems())
        add(zone->parentAxis() == nullptr ? zone->treeItem() : nullptr);
    for (AxisBase* axis : axes()) {
        const bool isListed = axis->record().kind == AxisRecord::NonNumerical &&
                              machine().collisionObjectList.value(axis->name(), false);
        add(isListed ? axis->treeItem() : nullptr);
    }
    return items;
}

void MotionNodeManager::buildToolBar() {
    constexpr int kTableAxis = 5;
    auto* bar = new QToolBar(managerText("Title"), this);  // owned by this widget until a window takes it
    bar->setObjectName(QStringLiteral("MotionNodeToolBar"));
    pimpl_->toolBar = bar;
    const auto addSwitch = [bar](const char* key, const char* icon, bool isOn) {
        QAction* action = bar->addAction(QIcon(QString::fromLatin1(icon)), managerText(key));
        action->setObjectName(QString::fromLatin1(key));
        action->setCheckable(true);
        action->setChecked(isOn);
        return action;
    };
    connect(addSwitch("CollisionSwitcher", ":/Icon/collision.png", true), &QAction::toggled, this,
            &MotionNodeManager::switchCollision);
    connect(addSwitch("VisiableAxis", ":/Icon/visible.png", false), &QAction::toggled, this,
            [this](bool hidden) {
                for (AxisBase* axis : axes()) {
                    if (axis->record().id != kTableAxis)
                        axis->setVisible(!hidden);
                }
            });
}

QToolBar* MotionNodeManager::toolBar() const {
    return pimpl_->toolBar;
}

QWidget* MotionNodeManager::spindleStatusWindow() const {
    return pimpl_->spindleStatus;
}

// --- look-ups ---

SoSeparator* MotionNodeManager::root() const {
    return pimpl_->nodes.root();
}

const MachineDescription& MotionNodeManager::machine() const {
    return pimpl_->machine;
}

const QVector<AxisBase*>& MotionNodeManager::axes() const {
    return pimpl_->nodes.axes();
}

const QVector<SpindleNode*>& MotionNodeManager::spindles() const {
    return pimpl_->nodes.spindles();
}

const QVector<WorkCoordinateSystem*>& MotionNodeManager::workCoordinateSystems() const {
    return pimpl_->nodes.zones();
}

AxisBase* MotionNodeManager::findAxis(const QString& name) const {
    return pimpl_->nodes.findAxis(name);
}

SpindleNode* MotionNodeManager::findSpindle(int number) const {
    return pimpl_->nodes.findSpindle(number);
}

WorkCoordinateSystem* MotionNodeManager::findWorkCoordinateSystem(const QString& name) const {
    return pimpl_->nodes.findZone(name);
}

SoNode* MotionNodeManager::findNode(const QString& name, const QString& underName) const {
    return pimpl_->nodes.findNode(name, underName);
}

SoNode* MotionNodeManager::findNodeByPath(const QStringList& path) const {
    return pimpl_->nodes.findNodeByPath(path);
}
