#pragma once

#include <QMap>
#include <QString>
#include <functional>
#include <vector>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AxisSequences.h"
#include "nc/calc/PlanItem.h"
#include "nc/calc/SpindleModel.h"

/// What a chain needs beside its items.
struct ChainJob {
    QString header;     ///< emitted line: where the machine stands before the first item
    QString tail;       ///< emitted lines: where it goes after the last
    QString homeLine;   ///< emitted line: every axis at home
    QString preAction;  ///< written before and after the items as they stand
    QString postAction;
    AxisMap letters;  ///< machine letters of the chain, id 6 left out
    AxisSequences entry;
    AxisSequences exit;
    QMap<QString, double> endCoordinates;  ///< a spindle's name as key keeps its shaft running at the end
    double preLaunchTime_s = 10.0;
    double period_s = 0.002;            ///< every line lasts this long
    unsigned interpolationTime_ms = 2;  ///< the same as the machine file has it
    /// Emitted code to one line per period, at the feed of its last line; the flag rounds the corners.
    std::function<QString(const QString& code, bool densePoint)> retime;
};

/// Writes the program of one chain: the bodies of its items as they are, and between them the way from item
/// to item and the commands of the spindles. One planner writes one text.
///
/// What holds for every text: a shaft turns at its item's speed when the body begins, no command is given
/// twice, no tool is changed while a shaft turns, and never do more than two shafts turn.
class ChainPlanner {
  public:
    ChainPlanner(const ChainJob& job, SpindleModel& spindles, Diagnostics& diagnostics);

    /// With early starts: the next item's spindle starts preLaunchTime_s before the end of the present body.
    /// Fatal diagnostics (and an empty text): "spindle is nullptr", "not contain lead in",
    /// "Id error.not contains.". No items: an empty text.
    [[nodiscard]] QString PlanningWithPreBoot(const std::vector<PlanItem>& items);
    /// The same walk without early starts; corners of the joins are not rounded.
    [[nodiscard]] QString planPlainly(const std::vector<PlanItem>& items);

  private:
    /// An item that works, and the curves that lead on from it.
    struct Station {
        const PlanItem* item;
        std::size_t index;                ///< in the list of all items
        QString curves;                   ///< code of the curves behind the item
        const PlanItem* curve = nullptr;  ///< the first of them
    };
    /// The way from one station to the next, or to the tail.
    struct Way {
        const PlanItem& next;  ///< whose tool the way needs
        QString curves;
        QString path;  ///< curves and what follows them
        bool startsSpindle;
    };

    QString plan(const std::vector<PlanItem>& items, bool startsEarly);
    [[nodiscard]] bool write(const std::vector<PlanItem>& items);
    void findStations(const std::vector<PlanItem>& items);
    void reserve(const std::vector<PlanItem>& items);
    void writeCurves();
    bool changeFirstTool();
    bool writeApproach(bool isToolChanged);
    void writeBody(std::size_t k);
    void writeStop(const std::vector<PlanItem>& items, const Station& station);
    bool writeWayOn(const Station& station, const PlanItem& next);
    bool writeEnd(const Station& station);
    bool writeToolChange(const PlanItem& from, const Way& way);
    void writePath(const QString& code, bool densePoint);
    void writePostAction();
    bool refuse(const char* text);

    const ChainJob& job_;
    SpindleModel& spindles_;
    Diagnostics& diagnostics_;
    bool startsEarly_ = false;
    QString leadingCurves_;
    std::vector<Station> stations_;
    QString out_;
    bool isTooLong_ = false;
};
