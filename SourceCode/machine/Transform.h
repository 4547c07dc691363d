#pragma once

#include <Inventor/SbVec3f.h>

#include <QString>
#include <memory>

#include "core/calc/WayPoint.h"

class ToolData;

/// Converts between a tool-tip program and machine axis values with the process's machine. Made for one
/// tool, one chain and one work coordinate system, and used for one program.
class TransformationOperator {
  public:
    /// `mode` 0: to the machine; 1: back to the tool tip. A text of the machine file that is not three
    /// numbers ends the process through qFatal.
    TransformationOperator(ToolData* tool, double extraLength_mm, const SbVec3f& userOffset_mm,
                           const QString& chain, const QString& workCoordinateName, int mode);
    ~TransformationOperator();
    TransformationOperator(const TransformationOperator&) = delete;
    TransformationOperator& operator=(const TransformationOperator&) = delete;

    [[nodiscard]] QString transformText(const QString& text);
    void transformPoints(WayPoints& points) const;

  private:
    struct Private;
    std::shared_ptr<Private> pimpl;
};
