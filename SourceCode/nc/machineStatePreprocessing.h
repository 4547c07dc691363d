#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <memory>

#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/AxisSequences.h"
#include "nc/itemStruct.h"

namespace TORNVALE {

class ProgramItem;

/// Joins the items of one chain into one NC text: lead moves, tool changes, spindle start, stop and check
/// commands, delays. It keeps a model of every spindle, so that nothing is switched twice, and starts the
/// next item's spindle early, inside the present item's code, when the settings ask for it.
///
/// A handle: copies share one record, so the spindles' states go on from chain to chain. Make one for each
/// run. What cannot be joined ends the process through qFatal with
///   "spindle is nullptr"      the first item's tool names a spindle that the machine lacks,
///   "not contain lead in"     an item whose first approach line is needed has an empty LeadIn,
///   "Id error.not contains."  the chain has no axis of id 3 where the tool must go up.
/// A join that cannot be re-timed shows the box of the time optimiser and is missing in the text.
class machineStatePreprocessing {
  public:
    /// Spindles and interpolation period of the process's machine; every spindle stands.
    machineStatePreprocessing();

    /// The NC text of the checked `items`, which all run on `chain`, every line ended by a line feed; empty
    /// when none is checked. `header` and `tail` are the positions before the first and after the last item
    /// (emitted lines), `preAction` and `postAction` texts that are written as they stand. `endCoordinates`:
    /// a key that is the name of a spindle keeps that spindle's shaft running at the end; `startCoordinates`
    /// are kept with the run. The settings "StatusPreProcessing/IsPreLaunch" and "PreLaunchTime" (seconds)
    /// are read at each call.
    QString ProcessChain(const QString& header, const QString& tail, const QString& chain,
                         const QString& preAction, const QString& postAction,
                         const AxisSequences& entrySequences, const AxisSequences& exitSequences,
                         const QList<ProgramItem*>& items, const QMap<QString, double>& startCoordinates,
                         const QMap<QString, double>& endCoordinates,
                         const std::shared_ptr<AuxiliaryAxis>& auxiliaryAxis);

    /// The text with early starts, for the chain of the last ProcessChain; an empty list gives an empty text.
    QString PlanningWithPreBoot(const QList<itemStruct>& items);
    /// The same walk without early starts.
    QString planPlainly(const QList<itemStruct>& items);

  private:
    QString plan(const QList<itemStruct>& items, bool startsEarly);

    struct Record;
    std::shared_ptr<Record> record_;
};

}  // namespace TORNVALE
