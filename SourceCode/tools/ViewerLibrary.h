#pragma once

class QWidget;

/// True when a 3D viewer can be made on this display.
[[nodiscard]] bool displayHasOpenGl();

/// Starts the viewer library, once for all windows of the process; `window` is the one that it belongs to,
/// nullptr for a hidden one. Needs displayHasOpenGl().
void startViewerLibrary(QWidget* window = nullptr);
