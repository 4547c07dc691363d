#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include "app/batch/BatchReport.h"

class MotionNodeManager;
class TreeWidgetManager;

/// A job as the window opens it, without a window: the machine with the job's tools, zones and work pieces,
/// and its programs, all generated.
class BatchProject {
  public:
    BatchProject();
    ~BatchProject();
    BatchProject(const BatchProject&) = delete;
    BatchProject& operator=(const BatchProject&) = delete;

    /// `place` names the document in errors.
    [[nodiscard]] std::optional<Failure> load(const QString& place, const QByteArray& document);

    /// The result of the command `items`; a failure names the first checked item that is at fault, or an
    /// item that has no code.
    [[nodiscard]] Outcome items(const QString& place) const;
    /// All groups in one machine program, as the playback of the whole job has it.
    [[nodiscard]] QString machineProgram() const;

    [[nodiscard]] MotionNodeManager& machine() const { return *machine_; }
    [[nodiscard]] TreeWidgetManager& programs() const { return *programs_; }

  private:
    std::unique_ptr<MotionNodeManager> machine_;
    std::unique_ptr<TreeWidgetManager> programs_;
};
