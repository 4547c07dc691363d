#include "tools/ToolPreviewer.h"

#include <Inventor/nodes/SoSeparator.h>

#include <QIcon>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "tools/ToolContourPicture.h"
#include "tools/ToolData.h"
#include "tools/ToolSceneView.h"

namespace TORNVALE {

ToolPreviewer& ToolPreviewer::instance() {
    static ToolPreviewer* const kPreviewer = new ToolPreviewer;  // owned by the process, never destroyed
    return *kPreviewer;
}

ToolPreviewer::ToolPreviewer(QWidget* parent)
    : QWidget(parent),
      view_(new ToolSceneView(this)),           // owned by this window
      picture_(new ToolContourPicture(this)) {  // owned by this window
    setWindowFlag(Qt::Window);
    setWindowTitle(
        LanguageReader::instance().text(QStringLiteral("ToolsManager"), QStringLiteral("ToolPreview")));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/preview.png")));
    resize(480, 600);
    auto* layout = new QVBoxLayout(this);  // owned by this window
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    layout->addWidget(picture_);
    view_->setVisible(ToolSceneView::canShow());
    picture_->setVisible(!ToolSceneView::canShow());
    closeOnEscape(*this);
}

void ToolPreviewer::preview(ToolData& tool) {
    view_->setScene(tool.GetSeparator());
    picture_->setContour(tool.record().contour);
    setWindowTitle(
        LanguageReader::instance().text(QStringLiteral("ToolsManager"), QStringLiteral("ToolPreview")) +
        QStringLiteral(" - ") + tool.displayText());
    show();
    raise();
    activateWindow();
}

void ToolPreviewer::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    raise();
}

}  // namespace TORNVALE
