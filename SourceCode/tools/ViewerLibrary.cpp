#include "tools/ViewerLibrary.h"

#include <Inventor/Qt/SoQt.h>

#include <QEvent>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QStringList>
#include <QTimer>
#include <QWidget>

namespace {

bool canMakeContext() {
    static const QStringList kWithout{QStringLiteral("offscreen"), QStringLiteral("minimal"),
                                      QStringLiteral("linuxfb"), QStringLiteral("vnc")};
    if (kWithout.contains(QGuiApplication::platformName()))
        return false;
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    return context.create() && context.makeCurrent(&surface);
}

class SurfaceKeeper : public QObject {
  public:
    explicit SurfaceKeeper(QWidget& surface) : QObject(&surface), surface_(surface) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        // Later: the surface is still to be told of the size that it has got.
        if (event->type() == QEvent::Resize && !isFilling())
            QTimer::singleShot(0, this, [this] {
                if (!isFilling())
                    surface_.setGeometry(surface_.parentWidget()->rect());
            });
        return QObject::eventFilter(watched, event);
    }

  private:
    [[nodiscard]] bool isFilling() const {
        return surface_.parentWidget() == nullptr || surface_.geometry() == surface_.parentWidget()->rect();
    }

    QWidget& surface_;
};

}  // namespace

bool displayHasOpenGl() {
    static const bool kHasOpenGl = canMakeContext();
    return kHasOpenGl;
}

void startViewerLibrary(QWidget* window) {
    if (SoQt::getTopLevelWidget() != nullptr)
        return;
    if (window == nullptr)
        window = new QWidget;  // owned by the process, never shown
    SoQt::init(window);
}

void keepSurfaceFilling(QWidget& surface) {
    surface.installEventFilter(new SurfaceKeeper(surface));  // owned by the surface
}
