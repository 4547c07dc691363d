#pragma once

#include <QList>

#include "machine/calc/MachineDescription.h"

/// The process's machine: reads the machine file once and keeps its records for the life of the process.
class ConfigReader {
  public:
    /// The process-wide reader, made at first use.
    static ConfigReader& instance();

    /// Reads the file; messages go to the log in debug level, the valid flag tells whether a check failed.
    void SetConfig(const QString& path);

    /// Takes a description that was made elsewhere (tests, the batch tool's checks).
    void setDescription(std::unique_ptr<MachineDescription> description);

    [[nodiscard]] bool isValid() const { return description_->valid; }
    /// Everything that was read, with the look-ups.
    [[nodiscard]] const MachineDescription& description() const { return *description_; }

    [[nodiscard]] QList<numericalAxisStruct*> numericalAxes() const;
    [[nodiscard]] QList<spindleStruct*> spindles() const;
    [[nodiscard]] QList<workCoordinateSystemStruct*> workCoordinateSystems() const;
    /// "CW" for 0, "CCW" for 1 in the user's language, "Unknown" for any other number.
    [[nodiscard]] static QString rotationDirection(int direction);

  private:
    ConfigReader();
    std::unique_ptr<MachineDescription> description_;
};
