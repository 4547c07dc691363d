#pragma once

#include <QDir>
#include <QDomDocument>
#include <QString>
#include <QVector>
#include <memory>
#include <optional>

#include "nc/calc/PostProcessorFile.h"

namespace TORNVALE {

/// What is written before and behind the program of one chain.
struct PrePostAction {
    QString Chain;
    QString PreAction;   ///< lines, each ended by a line feed
    QString PostAction;  ///< the same
    explicit PrePostAction(ChainActions actions);
    ~PrePostAction();
    PrePostAction(const PrePostAction&) = delete;
    PrePostAction& operator=(const PrePostAction&) = delete;
};

/// How NC programs are written for one controller: the XML file that "StatusPreProcessing/PostProcessor" of
/// the settings names, relative to the installation folder or absolute. A bad file leaves the defaults and
/// says so in the log.
class PostProcessorConfigulation {
  public:
    /// Reads the file.
    PostProcessorConfigulation();

    QDomElement root;                             ///< null when the file could not be read
    QString Rapid;                                ///< line where motion changes to rapid
    QString Linear;                               ///< line where motion changes to feed
    QString RapidMovement{QStringLiteral("G1")};  ///< word of rapid lines
    int AccelerationScheme = 1;                   ///< for the controller; nothing here depends on it
    QString Prepend;                              ///< text in front of each "G1" line
    /// Where NC programs go. A relative "OutputDir" is meant from the installation folder; without one it is
    /// the current directory.
    QDir OutputDir;
    bool UserHeaderTail = true;  ///< false: programs start and end where their items do
    int MultiChain = 0;          ///< 0 sequential, 1 tandem

    /// Order in which axes are brought in and out: groups of axis ids, one group after the other.
    [[nodiscard]] const AxisSequences& entrySequences() const { return entrySequences_; }
    [[nodiscard]] const AxisSequences& exitSequences() const { return exitSequences_; }
    [[nodiscard]] const QVector<std::shared_ptr<PrePostAction>>& prePostActions() const { return actions_; }
    /// The first actions of this chain; nullptr when it has none.
    [[nodiscard]] const PrePostAction* actionsOf(const QString& chain) const;

    /// The first pattern ("Configulation") with this name; a null element when there is none.
    [[nodiscard]] QDomElement pattern(const QString& name) const { return findPattern(root, name); }

    /// The patterns of the file, read afresh; empty when it cannot be read.
    [[nodiscard]] static QVector<PatternRow> GetPatternData();

  private:
    void readFile();
    void takeRegulation();
    void takeActions();

    QDomDocument document_;  // root lives in it
    AxisSequences entrySequences_;
    AxisSequences exitSequences_;
    QVector<std::shared_ptr<PrePostAction>> actions_;
};

}  // namespace TORNVALE
