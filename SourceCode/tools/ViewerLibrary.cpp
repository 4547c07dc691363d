#include "tools/ViewerLibrary.h"

#include <Inventor/Qt/SoQt.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QStringList>
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
