#pragma once

#include <QPixmap>
#include <QWidget>
#include <memory>

#include "tools/calc/ToolRecord.h"

class ToolData;
struct ToolEditorForm;

/// The window that edits one tool. Nothing is stored before the user accepts, but for the outline, which
/// "UpdateContourButton" stores at once.
class ToolEditor : public QWidget {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use.
    static ToolEditor& instance();
    /// Closes the window of the process and forgets its tool, when it has been made: the tool is going.
    /// nullptr: whichever tool it edits.
    static void release(const ToolData* tool);

    explicit ToolEditor(QWidget* parent = nullptr);
    ~ToolEditor() override;
    ToolEditor(const ToolEditor&) = delete;
    ToolEditor& operator=(const ToolEditor&) = delete;

    /// Shows the values of a tool, which stays the caller's. Does not open the window.
    void setTool(ToolData* tool);
    [[nodiscard]] ToolData* tool() const { return tool_; }

    /// Stores the inputs in the tool and refreshes its row. A number that cannot be read leaves its field as
    /// it was. Ends the process when the machine lacks the chosen spindle.
    void SetupTool();
    /// Fits tool numbers and direction to the spindle at `index` of the spindle box. Ends the process when
    /// the machine lacks it.
    void SpindleComboboxChanged(int index);

  Q_SIGNALS:
    /// A tool took over the inputs.
    void accepted(ToolData* tool);

  private:
    void connectInputs();
    void fillBoxes();
    void fillInputs();
    void typeChanged(int type);
    void indexEdited();
    void readNumbers(ToolRecord& record) const;
    void readRpm(ToolRecord& record);
    void storeContour(ToolRecord& record);
    void storePicture();
    void updateContour();
    void importPicture();
    void removePicture();
    void showPicture();
    void refreshPreview();
    [[nodiscard]] bool indexIsTaken(int index) const;

    std::unique_ptr<ToolEditorForm> form_;
    ToolData* tool_ = nullptr;
    QPixmap picture_;
    bool pictureChanged_ = false;
};
