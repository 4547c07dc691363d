#pragma once

class QWidget;

/// Escape closes `window` as its close button does, whichever of its inputs has the focus. For free windows
/// that are no dialogs. A popup that is open takes the key first; inside another window nothing happens.
void closeOnEscape(QWidget& window);
