#pragma once

#include <QString>

namespace TORNVALE {

/// What a long generation of many items tells the user, and how the user stops it. The window sets one that
/// shows a dialog; without one generation simply runs.
class GenerationProgress {
  public:
    virtual ~GenerationProgress() = default;
    /// `count` items are about to be generated, one after another.
    virtual void begin(int count) = 0;
    /// Before each item; false: the user wants to stop.
    [[nodiscard]] virtual bool step(const QString& itemName) = 0;
    virtual void end() = 0;

    /// nullptr for none; not owned.
    static void set(GenerationProgress* progress);
    [[nodiscard]] static GenerationProgress* current();
};

/// One run over items; runs inside a run belong to the outer one.
class GenerationRun {
  public:
    explicit GenerationRun(int count);
    ~GenerationRun();
    GenerationRun(const GenerationRun&) = delete;
    GenerationRun& operator=(const GenerationRun&) = delete;

    /// False when the user has stopped this run.
    [[nodiscard]] bool step(const QString& itemName);

    /// Whether items are being generated just now.
    [[nodiscard]] static bool isAny();
    /// Whether a run was stopped since the last call of this function: what it has changed is to be taken
    /// back.
    [[nodiscard]] static bool takeStopped();
};

}  // namespace TORNVALE
