#pragma once

#include <QWidget>

/// When the environment variable TORNVALE_SNAPSHOT names a file: a picture of the window goes there as soon
/// as it is shown and painted, and the program ends, with status 1 when the file cannot be written. That is
/// how the program is shown where nobody sits in front of it.
void scheduleSnapshot(QWidget& window);
