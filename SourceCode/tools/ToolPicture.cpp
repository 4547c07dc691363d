#include "tools/ToolPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace {

constexpr int kLargestSide = 600;
constexpr qint64 kMostPixels = qint64{1} << 28;

QImage read(QImageReader& reader) {
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!reader.canRead() || qint64{size.width()} * size.height() > kMostPixels)
        return {};
    return reader.read();
}

QImage fitted(const QImage& image) {
    if (image.width() <= kLargestSide && image.height() <= kLargestSide)
        return image;
    return image.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

QImage toolImageFromFile(const QString& path) {
    QImageReader reader(path);
    return fitted(read(reader));
}

QImage toolImageFromBytes(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return read(reader);
}

QByteArray toolImageBytes(const QImage& image) {
    QByteArray bytes;
    if (image.isNull())
        return bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    fitted(image).save(&buffer, "PNG");
    return bytes;
}
