#pragma once

class QWidget;

/// True when a 3D viewer can be made on this display.
[[nodiscard]] bool displayHasOpenGl();

/// Starts the viewer library, once for all windows of the process; `window` is the one that it belongs to,
/// nullptr for a hidden one. Needs displayHasOpenGl().
void startViewerLibrary(QWidget* window = nullptr);

/// Keeps the drawing surface of a viewer as large as the widget that it fills. It is made as a window of the
/// screen before it is embedded, and its first size is asked of the window manager: one that answers late
/// gives the embedded surface that size again.
void keepSurfaceFilling(QWidget& surface);
