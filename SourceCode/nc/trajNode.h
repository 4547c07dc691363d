#pragma once

#include <QString>
#include <QVector>
#include <memory>

#include "geometry/SceneWidget.h"

class QTreeWidgetItem;
class SbVec3f;
class SoSensor;
class myDragger;
class userCoordinateSystem;

namespace TORNVALE {
class ProgramItem;
}

/// What the scene shows of one program item: its tool path, the body that a drill or rectangle item stands
/// for, and for a curve its control points with a handle on one of them. Hangs under the user coordinate
/// system of the item.
///
/// Scene children: material; switch with draw style, path lines, dots, body; the handle while there is one.
///
/// Node and item know each other and neither owns the other. A node that goes takes itself out of the item.
/// An item that goes must call `forgetItem` before, and `moveTo(nullptr)` to take the node out of the scene.
class trajNode : public SceneWidget {
    Q_OBJECT
  public:
    /// `item` is a TORNVALE::ProgramItem; a row of another kind, or none, leaves the node empty. The node is
    /// not in `parent` yet, see `addProgram`.
    explicit trajNode(QTreeWidgetItem* item, SoNode* parent = nullptr);

    /// The node of the item, in this system: refreshed when there is one, which may come from another
    /// system, otherwise made. nullptr for a row that is no program item.
    static trajNode* addProgram(userCoordinateSystem& system, QTreeWidgetItem* item);

    /// Shows what the item says now. A code without lines leaves the path as it was.
    void UpdateNode();

    /// The first five values (X, Y, Z, axis 4, axis 5) of each way point of a code text in the emitted form,
    /// read for the chain of the item; nothing, and a warning in the log, when that is empty.
    void extract_waypoints_from_string(const QString& code, QVector<QVector<double>>& points) const;

    /// The item is the current row: highlight colour, and the dots of its control points.
    void setHighlighted(bool highlighted);
    [[nodiscard]] bool isHighlighted() const;
    void setShown(bool shown);
    [[nodiscard]] bool isShown() const;

    /// A click on the node at `point`, mm in the scene: the control point of a curve that is nearest to it
    /// gets the handle, in the place of an older one. The ends of a curve get none.
    void pickPoint(const SbVec3f& point);
    void removeDragger();
    /// nullptr unless a control point is being edited.
    [[nodiscard]] myDragger* dragger() const;

    /// Hangs the node into another system. nullptr takes it out of the scene, which deletes it unless
    /// somebody else holds a reference.
    void moveTo(userCoordinateSystem* system);
    [[nodiscard]] userCoordinateSystem* parentSystem() const;

    [[nodiscard]] QTreeWidgetItem* item() const;
    /// The item goes or wants no node: it is not called any more, and the node stays as it looks.
    void forgetItem();

  protected:
    ~trajNode() override;  // only Coin's count deletes

  private:
    struct Private;
    static void draggerMoved(void* node, SoSensor* sensor);
    void updatePath();
    void updateCurve();
    void updateHole();
    void updateRectangle();
    void updateColors();
    [[nodiscard]] bool hasChain() const;

    std::shared_ptr<Private> pimpl;
};
