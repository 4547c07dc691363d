#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

class MachineScene;

/// Draws scenes without a window, and where EGL is there without a display.
namespace OffscreenRenderer {

/// A null image, and why in `problem`, when there is no OpenGL. The camera's clipping planes are fitted to
/// the scene; the rest of it stays as it is.
[[nodiscard]] QImage render(MachineScene& scene, const QSize& size_px, const QColor& background,
                            QString& problem);

}  // namespace OffscreenRenderer
