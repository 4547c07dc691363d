#pragma once

#include <QWidget>

class ToolContourPicture;
class ToolData;
class ToolSceneView;

namespace TORNVALE {

/// The window that shows one tool in 3D; where no viewer can be made, its outline.
class ToolPreviewer : public QWidget {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use.
    static ToolPreviewer& instance();
    explicit ToolPreviewer(QWidget* parent = nullptr);

    /// Shows the graph of the tool, which the window keeps for itself, and opens the window.
    void preview(ToolData& tool);
    [[nodiscard]] const ToolSceneView& view() const { return *view_; }

  protected:
    /// Comes to the front.
    void showEvent(QShowEvent* event) override;

  private:
    ToolSceneView* view_;
    ToolContourPicture* picture_;
};

}  // namespace TORNVALE
