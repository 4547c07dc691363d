#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>
#include <variant>

#include "app/batch/BatchReport.h"
#include "app/batch/CommandLine.h"

class MotionNodeManager;
class TreeWidgetManager;

/// Whether a text is a project document rather than machine code: those begin with a brace.
[[nodiscard]] bool looksLikeProject(const QByteArray& text);

/// A job as the window opens it, without a window: the machine with the job's tools, zones and work pieces,
/// and its programs, all generated.
class BatchProject {
  public:
    BatchProject();
    ~BatchProject();
    BatchProject(const BatchProject&) = delete;
    BatchProject& operator=(const BatchProject&) = delete;

    /// Before anything else; `place` names the document in errors.
    [[nodiscard]] std::optional<Failure> load(const QString& place, const QByteArray& document);

    /// The failure names the first item that has no code, or is checked and leaves the limits of the machine.
    [[nodiscard]] Outcome items(const QString& place) const;
    /// The NC program of the pattern of the call, otherwise of the first one; its lines, seconds and file
    /// as the summary.
    [[nodiscard]] Outcome generate(const BatchCall& call) const;
    /// All groups in one machine program, as the playback of the whole job has it.
    [[nodiscard]] std::variant<QString, Failure> machineProgram(const QString& place) const;

    [[nodiscard]] MotionNodeManager& machine() const { return *machine_; }
    [[nodiscard]] TreeWidgetManager& programs() const { return *programs_; }

  private:
    std::unique_ptr<MotionNodeManager> machine_;
    std::unique_ptr<TreeWidgetManager> programs_;
};
