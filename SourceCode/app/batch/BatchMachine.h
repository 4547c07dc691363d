#pragma once

#include <QList>
#include <QString>
#include <QVector>
#include <memory>
#include <variant>
#include <vector>

#include "app/batch/BatchReport.h"
#include "app/batch/CommandLine.h"
#include "tools/ToolData.h"

class MotionNodeManager;
class WorkCoordinateSystem;

/// The machine of the call as the window has it, without a window: programs are played on it and drawn.
class BatchMachine {
  public:
    /// For machine code: all of these tools are installed.
    explicit BatchMachine(const QVector<ToolRecord>& tools);
    /// The machine of a job, as it stands there.
    explicit BatchMachine(MotionNodeManager& machineOfJob);
    ~BatchMachine();
    BatchMachine(const BatchMachine&) = delete;
    BatchMachine& operator=(const BatchMachine&) = delete;

    /// The command is Simulate or Picture.
    [[nodiscard]] Outcome run(const BatchCall& call, const QString& code);

  private:
    void make();
    /// The work coordinate system of the call, nullptr on a machine without any.
    [[nodiscard]] std::variant<WorkCoordinateSystem*, Failure> table(const BatchCall& call) const;
    [[nodiscard]] WorkCoordinateSystem* standBehind(int line, const QString& code,
                                                    const WorkCoordinateSystem* zone);
    [[nodiscard]] Outcome simulate(const BatchCall& call, const QString& code);
    [[nodiscard]] Outcome picture(const BatchCall& call, const QString& code);
    [[nodiscard]] Outcome pictureOfJob(const BatchCall& call, const QString& code);
    [[nodiscard]] Outcome render(const BatchCall& call);

    std::vector<std::unique_ptr<ToolData>> tools_;
    std::unique_ptr<MotionNodeManager> own_;
    MotionNodeManager* machine_ = nullptr;  ///< own_, or that of a job
    bool isJob_ = false;
};
