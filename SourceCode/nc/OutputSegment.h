#pragma once

#include <QList>
#include <QString>
#include <QVector>
#include <cstdint>
#include <functional>
#include <memory>

#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/ChainPosition.h"
#include "nc/calc/PostProcessorFile.h"

namespace TORNVALE {

class ProgramItem;

/// The items of one chain in a segment, and what the planner made of them.
struct ChainRecord {
    QString Chain;
    QList<ProgramItem*> items;  ///< checked ones, in tree order
    /// The planned program, its lines separated by line feeds; kept whole, since it has a line a period.
    QString outputLines;
    QString header;  ///< where the chain goes before its first item, a line of emitted code
    QString tail;    ///< and behind its last
    std::uint32_t runTime_ms = 0;
};

/// The program of one group: what runs in one work coordinate system.
struct WorkCoodinateSegment {
    QString name;  ///< of the work coordinate system
    int MultiChain = 0;
    QVector<ChainRecord> chains;  ///< one for each chain that an item uses
    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis;
    QString text;  ///< all chains joined
};

/// What the planner gets to join the items of one chain.
struct ChainPlan {
    QString header;
    QString tail;
    QString chain;
    QString preAction;
    QString postAction;
    AxisSequences entrySequences;
    AxisSequences exitSequences;
    QList<ProgramItem*> items;
    ChainPosition startCoordinates;  ///< where the chain's axes stand before
    ChainPosition endCoordinates;    ///< and where they are wanted behind
    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis;
};

/// Makes the text of one chain of a plan.
using PlanChain = std::function<QString(const ChainPlan&)>;

}  // namespace TORNVALE
