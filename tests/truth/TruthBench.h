#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <deque>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "NcPlayer.h"
#include "programs/ProgramBench.h"
#include "tools/ToolData.h"

class MachineDescription;
class UserTopItem;

/// What an item of a job is made of.
struct ItemPlan {
    QString group = QStringLiteral("G54");
    int spindle = 1;
    int tool = 1;
    double rpm = 6000;
    QString code;
    bool isChecked = true;
};

/// Real ISO items on a shipped machine, and the NC programs that come of them.
class TruthBench {
  public:
    explicit TruthBench(const QString& machine = QStringLiteral("TornBridge5"));

    [[nodiscard]] ProgramBench& programs() { return bench_; }
    [[nodiscard]] const MachineDescription& machine() const;

    /// Starts spindles so many seconds early from now on; nothing: not early.
    void startEarly(std::optional<double> time_s);
    /// A post-processor file of the shipped installation, or with `content` one of the test's own.
    void usePostProcessor(const QString& stem, const QByteArray& content = {});

    /// Empties all groups and fills them anew; items over a limit are unchecked.
    void build(const std::vector<ItemPlan>& plans);

    struct Program {
        QString nc;       ///< as the file gets it
        QString planned;  ///< without the pattern
        std::vector<PlayedItem> items;
        int groups = 0;
    };
    /// By the road of the window: groups of the pattern, over-limit items, post-processor.
    [[nodiscard]] Program generate(const QString& pattern);

    /// Everything that is wrong with the program, planned and written; empty when all is well.
    [[nodiscard]] std::string faultsOf(const Program& program);
    [[nodiscard]] int earlyStarts() const { return earlyStarts_; }
    [[nodiscard]] int toolChanges() const { return toolChanges_; }
    /// Lines that stood twice and were written once.
    [[nodiscard]] int foldedLines() const { return foldedLines_; }
    [[nodiscard]] double largestAcceleration() const { return largestAcceleration_; }
    [[nodiscard]] double largestSpeed() const { return largestSpeed_; }

    /// A few items for every group, seeded.
    [[nodiscard]] std::vector<ItemPlan> randomJob(std::mt19937& random) const;
    static std::string description(const std::vector<ItemPlan>& plans);

  private:
    ToolData& toolFor(const ItemPlan& plan);
    [[nodiscard]] NcDialect dialect(bool isWritten) const;
    [[nodiscard]] QStringList knownLines() const;
    std::string foldFaults(const NcText& planned, const NcText& written, std::vector<bool>& folded);
    std::string auditFaults(const Program& program) const;
    std::string played(const NcText& text, const NcDialect& dialect, const Program& program,
                       NcPlayer::Options options);

    ProgramBench bench_;
    std::deque<ToolData> tools_;
    std::optional<double> preLaunchTime_s_;
    QString postProcessor_;
    int earlyStarts_ = 0;
    int toolChanges_ = 0;
    int foldedLines_ = 0;
    double largestAcceleration_ = 0;
    double largestSpeed_ = 0;
};
