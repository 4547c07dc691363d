#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

// Pictures of tools: kept as PNG bytes, at most 600 pixels wide and high.

/// A picture file, scaled to fit 600 by 600 with its aspect kept; null when it cannot be read.
[[nodiscard]] QImage toolImageFromFile(const QString& path);
/// The same for the bytes of a picture; their size stays. Null when they are no picture, or one so large
/// that its decoding would take over a gigabyte.
[[nodiscard]] QImage toolImageFromBytes(const QByteArray& bytes);

/// As PNG, scaled to fit. Empty for a null image.
[[nodiscard]] QByteArray toolImageBytes(const QImage& image);
