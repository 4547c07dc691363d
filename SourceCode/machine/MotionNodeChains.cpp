#include <QDebug>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QVBoxLayout>
#include <cstdlib>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "machine/MotionNodePrivate.h"
#include "machine/NonNumericalAxis.h"
#include "machine/SpindleStatusWidget.h"
#include "machine/calc/ChainText.h"
#include "machine/calc/NodeKinematics.h"
#include "machine/numerialAxis.h"

// How the manager builds its machine, step by step.

namespace {

void logStep(int step) {
    const QString group = QStringLiteral("MotionNodeManager/InitialChainInfo");
    const QString key = QStringLiteral("S%1").arg(step);
    qInfo().noquote() << TORNVALE::LanguageReader::instance().text(group, key);
}

void logBuilt(const QString& name, const QElapsedTimer& timer) {
    qInfo().noquote() << QStringLiteral("\t\tName:") + name + QStringLiteral("Time:") +
                             QString::number(timer.elapsed()) + QStringLiteral(" ms");
}

void debugText(const char* key) {
    qDebug().noquote() << managerText(key);
}

}  // namespace

void MotionNodeManager::InitializeChain() {
    BuildNumericalAxis();
    logStep(1);
    BuildNonNumericalAxis();
    logStep(2);
    buildSpindles();
    buildSpindleStatusWindow();
    logStep(3);
    InitialNumericalAxisOnChain();
    logStep(4);
    InitialSpindleOnChain();
    logStep(5);
    InitialNonNumericalAxisOnChain();
    logStep(6);
    InitialWorkCoordinateSystems();
    logStep(7);
    mountFixtures();
    logStep(8);
    listenToNodes(this);
    setCollisionEnabled();
    logStep(9);
}

// --- nodes ---

void MotionNodeManager::BuildNumericalAxis() {
    for (const auto& record : machine().numericalAxes) {
        QElapsedTimer timer;
        timer.start();
        auto* axis = new numericalAxis;  // owned by the nodes
        pimpl_->nodes.add(axis);
        axis->set(*record);
        logBuilt(record->name, timer);
    }
}

void MotionNodeManager::BuildNonNumericalAxis() {
    for (const auto& record : machine().nonNumericalAxes) {
        QElapsedTimer timer;
        timer.start();
        auto* part = new NonNumericalAxis;  // owned by the nodes
        part->ref();
        part->set(*record);
        logBuilt(record->name, timer);
        if (!part->name().isEmpty())
            pimpl_->nodes.add(part);
        part->unref();
    }
}

void MotionNodeManager::buildSpindles() {
    for (const auto& record : machine().spindles) {
        auto* spindle = new SpindleNode;  // owned by the nodes
        pimpl_->nodes.add(spindle);
        spindle->Setup(record.get());
    }
    for (SpindleNode* spindle : spindles()) {
        for (SpindleNode* other : spindles()) {
            if (other->displayName() == spindle->record().coaxial) {
                spindle->setCoaxialPartner(other);
                break;
            }
        }
    }
}

void MotionNodeManager::buildSpindleStatusWindow() {
    auto* window = new QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint);  // owned by this manager
    pimpl_->spindleStatus = window;
    window->setObjectName(QStringLiteral("SpindleStatus"));
    auto* form = new QFormLayout(window);  // owned by the window
    QSet<const QWidget*> placed;
    for (SpindleNode* spindle : spindles()) {
        SpindleNode* const partner = spindle->coaxialPartner();
        auto* row = new QVBoxLayout;  // owned by the form
        for (SpindleNode* member : {spindle, partner}) {
            QWidget* const status = member == nullptr ? nullptr : member->statusWidget();
            if (status != nullptr && !placed.contains(status)) {
                placed.insert(status);
                row->addWidget(status);
            }
        }
        if (row->count() == 0)
            delete row;
        else
            form->addRow(row);
    }
}

// --- chains ---

/// Chains that share their head put it on the root again each time.
void MotionNodeManager::addToRoot(SoNode* node) {
    if (node != nullptr)
        root()->addChild(node);
}

void MotionNodeManager::InitialNumericalAxisOnChain() {
    for (const QString& entry : machine().machineParameters.kinematicChain) {
        for (const QStringList& names : splitChains(entry)) {
            if (names.isEmpty()) {
                debugText("ChainFormatErrorMsg");
                continue;
            }
            addToRoot(findAxis(names.first()));
            for (int i = 0; i + 1 < names.size(); ++i) {
                AxisBase* const parent = findAxis(names[i]);
                AxisBase* const child = findAxis(names[i + 1]);
                if (parent != nullptr && child != nullptr)
                    parent->addChild(child);
            }
        }
    }
}

void MotionNodeManager::InitialSpindleOnChain() {
    for (SpindleNode* spindle : spindles()) {
        auto* axis = dynamic_cast<AxisBase*>(findNodeByPath(carrierPath(spindle->record().parent)));
        if (axis != nullptr) {
            axis->addChild(spindle);
            continue;
        }
        addToRoot(spindle);
        debugText("SpindleWithoutParentErrorMsg");
    }
}

void MotionNodeManager::InitialNonNumericalAxisOnChain() {
    for (AxisBase* axis : axes()) {
        const auto* part = dynamic_cast<NonNumericalAxis*>(axis);
        if (part == nullptr)
            continue;
        if (part->parentName().isEmpty())
            addToRoot(axis);
        else if (AxisBase* carrier = findAxis(part->parentName()))
            carrier->addChild(axis);
    }
}

void MotionNodeManager::InitialWorkCoordinateSystems() {
    for (const auto& record : machine().workCoordinateSystems) {
        auto* zone = new WorkCoordinateSystem;  // owned by the nodes
        pimpl_->nodes.add(zone);
        zone->set(*record);
        if (AxisBase* carrier = findAxis(record->parent)) {
            carrier->addChild(zone);
            continue;
        }
        zone->standAtOrigin();
        addToRoot(zone);
    }
}

void MotionNodeManager::listenToNodes(ChainListener* listener) {
    for (AxisBase* axis : axes())
        axis->setChainListener(listener);
    for (SpindleNode* spindle : spindles())
        spindle->setChainListener(listener);
    for (WorkCoordinateSystem* zone : workCoordinateSystems())
        zone->setChainListener(listener);
}

void MotionNodeManager::fillCommandMaps() {
    CommandProcessor& processor = *pimpl_->processor;
    connect(&processor, &CommandProcessor::updateCollisionObject, this,
            &MotionNodeManager::UpdateCollisionObject);
    for (AxisBase* axis : axes()) {
        if (axis->record().kind == AxisRecord::Numerical)
            processor.addCommandMap({{axis->name(), axis}});
    }
    for (SpindleNode* spindle : spindles())
        processor.addCommandMap(spindle->commandMap());
    for (SpindleNode* spindle : spindles()) {
        if (spindle->hasToolChanger())
            processor.addToolChangeCommandMap(spindle->toolChangeMap());
    }
}

// --- repeats ---

namespace {

QStringList partsOf(const ParaReader& settings, const char* key) {
    const QVariant value = settings.value(QString::fromLatin1(key));
    return value.toString().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The clones of one axis; ends the process when one cannot be made.
QVector<AxisBase*> clonesOf(const AxisBase* axis, int count) {
    constexpr int kMostRepeats = 100;
    if (count > kMostRepeats)
        qWarning().noquote() << "MotionNode/AxisNodeRepeatCount" << count << "is bounded to" << kMostRepeats;
    QVector<AxisBase*> clones;
    for (int i = 0; i < qMin(count, kMostRepeats); ++i) {
        AxisBase* const clone = axis == nullptr ? nullptr : axis->clone();
        if (clone == nullptr) {
            qWarning().noquote() << "Failed Clone Node." << __FILE__ << __LINE__;
            std::exit(1);
        }
        clones.append(clone);
    }
    return clones;
}

}  // namespace

void MotionNodeManager::InitialRepeatNode() {
    const ParaReader settings;
    if (!settings.isTrue(QStringLiteral("MotionNode/IsRepeatNodesEnable")))
        return;
    const QStringList steps = partsOf(settings, "MotionNode/AxisNodeRepeatTransformations");
    const QStringList countList = partsOf(settings, "MotionNode/AxisNodeRepeatCount");
    const QStringList nameList = partsOf(settings, "MotionNode/AxisNodeRepeatNames");
    if (countList.size() != nameList.size())
        qFatal("countList.size() != nameList.size() ");
    const SbVec3f step(steps.value(0).toFloat(), steps.value(1).toFloat(), steps.value(2).toFloat());
    AxisBase* previous = nullptr;
    QVector<AxisBase*> previousClones;
    for (int i = 0; i < nameList.size(); ++i) {
        AxisBase* const axis = findAxis(nameList[i]);
        const QVector<AxisBase*> clones = clonesOf(axis, countList[i].toInt());
        for (int j = 0; j < clones.size(); ++j) {
            axis->addRepeat(*clones[j]);
            if (previous != nullptr) {
                // One for one; what the axis above lacks has nothing to stand on.
                if (j < previousClones.size())
                    previousClones[j]->addChild(clones[j]);
                continue;
            }
            clones[j]->applyOffsetMatrix(translationMatrix(step * static_cast<float>(j + 1)));
            AxisBase* const carrier = axis->parentAxis();
            carrier != nullptr ? carrier->addChild(clones[j]) : root()->addChild(clones[j]);
        }
        previous = axis;
        previousClones = clones;
    }
    repeatSpindles(previousClones);
}

void MotionNodeManager::repeatSpindles(const QVector<AxisBase*>& carriers) {
    for (SpindleNode* spindle : spindles()) {
        for (AxisBase* carrier : carriers) {
            SpindleNode* const copy = spindle->clone();
            carrier->addChild(copy);
            spindle->addRepeat(*copy);
        }
    }
}
