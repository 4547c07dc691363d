#pragma once

#include <QList>
#include <QString>
#include <memory>

#include "core/calc/WayPoint.h"

class FormatItems;
class ToolData;
class trajNode;
struct AuxiliaryAxis;
struct HoleShape;
struct RectangleShape;

namespace TORNVALE {

/// Type codes of the rows of the program tree; they stand in project documents.
enum ProgramRow : int {
    kIsoItem = 1001,
    kCurveItem = 1002,
    kDrillItem = 1003,
    kRectangleItem = 1004,
    kProgramGroup = 1005,
    kProgramRoot = 1006,
};

/// One program item as the pipeline behind it sees it: its scene path, the planner and the post-processor.
class ProgramItem {
  public:
    virtual ~ProgramItem() = default;

    /// kIsoItem to kRectangleItem.
    [[nodiscard]] virtual int itemType() const = 0;
    [[nodiscard]] virtual const QString& itemName() const = 0;   ///< unique in its group
    [[nodiscard]] virtual const QString& chainName() const = 0;  ///< the item's kinematic chain
    [[nodiscard]] virtual bool isActive() const = 0;             ///< checked: takes part in the program
    [[nodiscard]] virtual const ToolData* toolData() const = 0;  ///< the item's own copy, never nullptr
    [[nodiscard]] virtual double rpm() const = 0;                ///< negative: reverse

    [[nodiscard]] virtual const QString& LeadIn() const = 0;    ///< machine axes, rapid, to the start
    [[nodiscard]] virtual const QString& LeadOut() const = 0;   ///< machine axes, rapid, off the end
    [[nodiscard]] virtual const QString& IsoCode() const = 0;   ///< machine axes, one line a period
    [[nodiscard]] virtual const QString& WorkCode() const = 0;  ///< work coordinates, as generated

    /// From machine axes to where the tool's tip is in the frame of the item's user coordinate system; the
    /// path in the scene goes through it. By default the points are that already.
    virtual void toScene(WayPoints& /*points*/) const {}
    /// What stands for the item in the scene beside its path; nullptr for kinds that have none.
    [[nodiscard]] virtual const HoleShape* holeShape() const { return nullptr; }
    [[nodiscard]] virtual const RectangleShape* rectangleShape() const { return nullptr; }
    /// The movable points of a curve, in the frame of its user coordinate system; nullptr for other kinds.
    [[nodiscard]] virtual const QList<QList<double>>* controlPoints() const { return nullptr; }
    /// The user has dragged control point `index` there (mm, same frame).
    virtual void moveControlPoint(int /*index*/, double /*x*/, double /*y*/, double /*z*/) {}

    /// The node that shows the item; it makes itself known here, and nullptr when it goes.
    virtual void setTrajNode(trajNode* node) = 0;
    [[nodiscard]] virtual trajNode* pathNode() const = 0;
};

/// One group of the program tree, the items of a work coordinate system, as the output stage sees it.
class ProgramGroup {
  public:
    virtual ~ProgramGroup() = default;

    [[nodiscard]] virtual QString wcsName() const = 0;
    /// In program order, unchecked ones included.
    [[nodiscard]] virtual QList<ProgramItem*> programItems() const = 0;
    /// nullptr when the group's chain has none.
    [[nodiscard]] virtual std::shared_ptr<AuxiliaryAxis> auxiliaryAxis() const = 0;
    /// Header and tail records of the group's chains; nullptr is a fault of the program.
    [[nodiscard]] virtual FormatItems* headerTail() const = 0;
};

}  // namespace TORNVALE
