#pragma once

#include <QWidget>
#include <memory>

class SoSeparator;
class SoQtExaminerViewer;

/// A 3D view of one scene graph. The viewer itself is made when the view is shown for the first time, and
/// only where a display with OpenGL is there: elsewhere the view keeps its graph and stays empty.
class ToolSceneView : public QWidget {
    Q_OBJECT
  public:
    explicit ToolSceneView(QWidget* parent = nullptr);
    ~ToolSceneView() override;
    ToolSceneView(const ToolSceneView&) = delete;
    ToolSceneView& operator=(const ToolSceneView&) = delete;

    /// True when a viewer can be made on this display.
    [[nodiscard]] static bool canShow();

    /// Shows `graph` (nullptr: nothing) and places the camera so that all of it is seen. Takes a reference.
    void setScene(SoSeparator* graph);
    [[nodiscard]] SoSeparator* scene() const;
    [[nodiscard]] bool hasViewer() const { return viewer_ != nullptr; }
    [[nodiscard]] QSize sizeHint() const override { return {240, 220}; }

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void makeViewer();
    void aimCamera();
    void fillView();
    void renderSoon();
    SoSeparator* root_;  ///< holds one reference
    std::unique_ptr<SoQtExaminerViewer> viewer_;
};
