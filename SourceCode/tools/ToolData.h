#pragma once

#include <Inventor/SbMatrix.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaType>
#include <QPixmap>
#include <QSize>
#include <QTreeWidgetItem>

#include "geometry/calc/MeshArrays.h"
#include "tools/calc/ToolRecord.h"

class SoSeparator;

/// One tool: a row of the tool trees, with what the scene and the collision pass need of it. Copies carry
/// the record and the row's texts; they stand in no tree.
class ToolData : public QTreeWidgetItem {
  public:
    static constexpr int kItemType = 1010;
    static constexpr int kColumnCount = 13;

    ToolData();
    explicit ToolData(ToolRecord record);
    ToolData(const ToolData& other);
    ToolData& operator=(const ToolData& other);
    ~ToolData() override;

    [[nodiscard]] const ToolRecord& record() const { return record_; }
    [[nodiscard]] ToolRecord& record() { return record_; }

    /// A new scene graph of the tool, in mm in the tool's frame with its mounting in front; the caller takes
    /// the first reference. nullptr (and a log line where there is something to say) when a chain saw has no
    /// readable model. A relative model path becomes absolute in the record.
    [[nodiscard]] SoSeparator* GetSeparator();

    /// The tool's mesh for collision tests, in mm in the tool's frame, drawn in by 0.9999 about its origin.
    /// Empty when there is none.
    [[nodiscard]] MeshArrays collisionMesh() const;

    /// Fills the tool from its group of the chain saw library and refreshes the row.
    void LoadChainSawData(const QString& group);

    [[nodiscard]] QJsonObject toJson() const;
    /// Both refresh the row. A chain saw takes its compensations from the library group that it names.
    void fromJson(const QJsonObject& object);
    void fromJsonArray(const QJsonArray& array);

    /// All of the other tool but its index; refreshes the row.
    void copyFrom(const ToolData& other);
    /// The values that a new tool starts with in the editor.
    void resetForNewTool();

    [[nodiscard]] SbMatrix mountMatrix() const;
    /// "%1 No:%2 Len:%3 Dia:%4" with spindle name, tool number, length and diameter.
    [[nodiscard]] QString displayText() const;
    /// The tool's kind in the user's language; empty for an unknown number.
    [[nodiscard]] QString typeText() const;
    /// Writes all columns of the row.
    void refreshRow();

    /// The picture, null when there is none or it cannot be read. Needs a QGuiApplication.
    [[nodiscard]] QPixmap picture() const;
    /// Keeps the picture as PNG, scaled to fit 600 by 600 pixels.
    void setPicture(const QPixmap& picture);
    /// Size of the picture in the tree.
    [[nodiscard]] QSize iconSize() const { return iconSize_; }

    /// The chain saw library file of the installation.
    [[nodiscard]] static QString chainSawLibraryPath();

  private:
    void takeCompensations();
    ToolRecord record_;
    QSize iconSize_{25, 25};
};

Q_DECLARE_METATYPE(ToolData)
