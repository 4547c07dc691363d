#include "app/OffscreenRenderer.h"

#include <Inventor/C/glue/gl.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QDebug>

#include "app/MachineScene.h"

#ifdef TORNVALE_HAS_EGL
#include <EGL/egl.h>
#include <EGL/eglext.h>
#endif

namespace {

#ifdef TORNVALE_HAS_EGL

/// A context on a buffer of its own that needs no display.
struct EglContext {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
};

EGLDisplay openDisplay() {
    static const EGLDisplay kDisplay = [] {
        EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
        if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE) {
            display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
            if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE)
                display = EGL_NO_DISPLAY;
        }
        return display;
    }();
    return kDisplay;
}

void destruct(cc_glglue_offscreen_data data) {
    auto* const made = static_cast<EglContext*>(data);
    eglMakeCurrent(made->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (made->surface != EGL_NO_SURFACE)
        eglDestroySurface(made->display, made->surface);
    if (made->context != EGL_NO_CONTEXT)
        eglDestroyContext(made->display, made->context);
    delete made;
}

SbBool makeCurrent(cc_glglue_offscreen_data data) {
    const auto* const made = static_cast<EglContext*>(data);
    return eglMakeCurrent(made->display, made->surface, made->surface, made->context) == EGL_TRUE ? TRUE
                                                                                                  : FALSE;
}

void reinstatePrevious(cc_glglue_offscreen_data data) {
    eglMakeCurrent(static_cast<EglContext*>(data)->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

cc_glglue_offscreen_data createOffscreen(unsigned int width, unsigned int height) {
    const EGLDisplay display = openDisplay();
    if (display == EGL_NO_DISPLAY || eglBindAPI(EGL_OPENGL_API) == EGL_FALSE)
        return nullptr;
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, wanted, &config, 1, &count) == EGL_FALSE || count < 1)
        return nullptr;
    const EGLint size[] = {EGL_WIDTH, static_cast<EGLint>(width), EGL_HEIGHT, static_cast<EGLint>(height),
                           EGL_NONE};
    auto* const made = new EglContext;  // owned by the renderer, which calls destruct
    made->display = display;
    made->surface = eglCreatePbufferSurface(display, config, size);
    made->context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (made->surface != EGL_NO_SURFACE && made->context != EGL_NO_CONTEXT && makeCurrent(made) != FALSE) {
        reinstatePrevious(made);
        return made;
    }
    destruct(made);
    return nullptr;
}

/// False without OpenGL; the library's own renderer must not be asked then.
bool useEgl(unsigned int width, unsigned int height) {
    static cc_glglue_offscreen_cb_functions functions{createOffscreen, makeCurrent, reinstatePrevious,
                                                      destruct};
    cc_glglue_offscreen_data probe = createOffscreen(width, height);
    if (probe == nullptr)
        return false;
    destruct(probe);
    cc_glglue_context_set_offscreen_cb_functions(&functions);
    return true;
}

#else

/// Other systems' renderers need no help.
bool useEgl(unsigned int /*width*/, unsigned int /*height*/) {
    return true;
}

#endif

/// While it lives the scene library's notes go to the log: it misses a display that nobody needs here.
class NotesToLog {
  public:
    NotesToLog() : handler_(SoDebugError::getHandlerCallback()), data_(SoDebugError::getHandlerData()) {
        SoDebugError::setHandlerCallback(
            [](const SoError* error, void*) { qDebug() << error->getDebugString().getString(); }, nullptr);
    }
    ~NotesToLog() { SoDebugError::setHandlerCallback(handler_, data_); }
    NotesToLog(const NotesToLog&) = delete;
    NotesToLog& operator=(const NotesToLog&) = delete;

  private:
    SoErrorCB* handler_;
    void* data_;
};

}  // namespace

QImage OffscreenRenderer::render(MachineScene& scene, const QSize& size_px, const QColor& background,
                                 QString& problem) {
    constexpr int kFineUpTo_px = 4096;
    const NotesToLog notes;
    // Drawn larger and scaled down: edges without steps.
    const int fine = qMax(size_px.width(), size_px.height()) * 2 <= kFineUpTo_px ? 2 : 1;
    const QSize drawn = size_px * fine;
    if (!useEgl(static_cast<unsigned int>(drawn.width()), static_cast<unsigned int>(drawn.height()))) {
        problem = QStringLiteral("there is no OpenGL for a picture of %1 by %2 points")
                      .arg(drawn.width())
                      .arg(drawn.height());
        return {};
    }
    const SbViewportRegion viewport(static_cast<short>(drawn.width()), static_cast<short>(drawn.height()));
    scene.fitClipping(viewport);
    SoOffscreenRenderer renderer(viewport);
    renderer.setBackgroundColor(SbColor(static_cast<float>(background.redF()),
                                        static_cast<float>(background.greenF()),
                                        static_cast<float>(background.blueF())));
    if (renderer.render(scene.root()) == FALSE) {
        problem = QStringLiteral("OpenGL cannot draw the machine");
        return {};
    }
    constexpr int kBytesPerPoint = 3;
    const QImage picture(renderer.getBuffer(), drawn.width(), drawn.height(), drawn.width() * kBytesPerPoint,
                         QImage::Format_RGB888);
    return picture.mirrored().scaled(size_px, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
