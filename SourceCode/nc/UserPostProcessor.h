#pragma once

#include <QDomElement>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <optional>

#include "core/calc/Diagnostics.h"
#include "nc/OutputSegment.h"
#include "nc/PostProcessorConfigulation.h"
#include "nc/ProgramItem.h"

class OutputText;
class QActionGroup;
class QToolBar;
struct HeaderTailRecord;
struct SegmentRules;

namespace TORNVALE {

/// Writes the NC text of a project or of one group: plans each chain, joins the chains of a group, and sets
/// the groups into the pattern that the user has chosen. Process-wide, main thread.
class UserPostProcessor {
  public:
    /// Made at first use; reads the configuration then.
    static UserPostProcessor& instance();

    [[nodiscard]] const PostProcessorConfigulation& configuration() const { return *configuration_; }

    /// The tool bar with an action for each pattern of the file, the first one checked; made once. A file
    /// without patterns is told to the user. Owned by this object until a window takes it.
    [[nodiscard]] QToolBar* GetToolBar();

    /// Names of the patterns, in file order.
    [[nodiscard]] QStringList patternNames() const;
    /// Chooses a pattern as a click in the tool bar does; false when there is none of this name.
    bool choosePattern(const QString& name);
    /// Empty when none is chosen.
    [[nodiscard]] QString chosenPattern() const { return chosen_.value_or(QString()); }
    /// True with a chosen pattern; otherwise the user is told as GetToolBar does for a file without any.
    [[nodiscard]] bool hasPatternOrTells() const;
    /// The element of the chosen pattern; null when none is chosen.
    [[nodiscard]] QDomElement pattern() const;
    /// Names of the work coordinate systems of the chosen pattern, in its order.
    [[nodiscard]] QStringList GetCoordinateList() const;
    /// The NC file of a document: in the output directory, the document's base name between "Prefix" and
    /// "Suffix" of the chosen pattern; one that the pattern lacks is that of the root.
    [[nodiscard]] QString outputPath(const QString& documentPath) const;

    /// Writes the program of `groups` to `out`. With the pattern, its fixed lines and the processed text of
    /// each slot's group; without one chosen, nothing. Without the pattern, the planned texts of all groups,
    /// each followed by a line feed. A program of which a part is missing, since no text can hold it, is left
    /// out whole, with a warning.
    void ProcessGroups(QString& out, const QVector<ProgramGroup*>& groups, bool usePattern);

    /// Header and tail of a chain in the group of the segment that is being made, as the user wants them.
    /// Empty, with a warning, without a record. A group without its list ends the process.
    void GetUserHeaderTail(const QString& chain, QString& header, QString& tail) const;
    /// The same as the items give them: where the first begins and the last ends.
    void GetItemHeaderTail(const QString& chain, QString& header, QString& tail) const;

    /// Where the axes of a segment stand on its first and last motion line. Of a segment that is not planned
    /// yet the header counts as first line, the tail as last.
    [[nodiscard]] ChainPosition GetStartCoordinates(const WorkCoodinateSegment& segment) const;
    [[nodiscard]] ChainPosition GetEndCoordinates(const WorkCoodinateSegment& segment) const;

    /// What plans a chain, in place of machineStatePreprocessing, which an empty function brings back.
    void setPlanner(PlanChain planner) { planner_ = std::move(planner); }
    /// Reads the configuration anew and forgets the tool bar: for tests, which change the installation.
    void reload();

  private:
    using Segment = std::shared_ptr<WorkCoodinateSegment>;

    UserPostProcessor();
    bool checkAction(const std::optional<QString>& name) const;
    [[nodiscard]] QVector<Segment> makeSegments();
    void fillHeaders(WorkCoodinateSegment& segment) const;
    void processSegments(const QVector<Segment>& segments);
    void planSegment(const PlanChain& planner, const ChainPosition& before, const ChainPosition& after);
    void joinSegment(WorkCoodinateSegment& segment);
    [[nodiscard]] QString assembled(const QVector<Segment>& segments);
    void fillPattern(OutputText& out, QVector<Segment> segments);
    void appendSegment(OutputText& out, WorkCoodinateSegment& segment);
    [[nodiscard]] SegmentRules rulesOf(const WorkCoodinateSegment& segment) const;
    [[nodiscard]] const HeaderTailRecord* headerTailOf(const QString& chain) const;

    std::unique_ptr<PostProcessorConfigulation> configuration_;
    QVector<ProgramGroup*> groups_;  // of this run
    QPointer<QToolBar> toolBar_;
    QPointer<QActionGroup> actionGroup_;
    ChainPosition startCoordinates_;  // of the whole run
    bool lastSegment_ = false;
    bool usePattern_ = true;
    bool isIncomplete_ = false;  // a part of this run's program was left out
    Segment current_;
    std::optional<QString> chosen_;  // name of a pattern
    PlanChain planner_;
};

}  // namespace TORNVALE
