#include "ZipEntry.h"

#include <zlib.h>

#include <QtEndian>

// Layout of the records: APPNOTE.TXT of the zip format, 4.3.7, 4.3.12 and 4.3.16.

namespace {

constexpr int kEndSize = 22;
constexpr int kDirectoryEntrySize = 46;
constexpr int kLocalHeaderSize = 30;

template <typename Number>
int numberAt(const QByteArray& archive, int place) {
    if (place < 0 || place + static_cast<int>(sizeof(Number)) > archive.size())
        return -1;
    return static_cast<int>(qFromLittleEndian<Number>(archive.constData() + place));
}

std::optional<QByteArray> inflated(QByteArray packed, int size) {
    QByteArray content(size, '\0');
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(content.size());
    constexpr int kWithoutHeader = -MAX_WBITS;
    if (inflateInit2(&stream, kWithoutHeader) != Z_OK)
        return std::nullopt;
    const int end = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return end == Z_STREAM_END ? std::optional<QByteArray>(content) : std::nullopt;
}

std::optional<QByteArray> contentAt(const QByteArray& archive, int entry, int nameSize) {
    constexpr int kDeflated = 8;
    const int method = numberAt<quint16>(archive, entry + 10);
    const int packedSize = numberAt<quint32>(archive, entry + 20);
    const int size = numberAt<quint32>(archive, entry + 24);
    const int header = numberAt<quint32>(archive, entry + 42);
    const int extra = numberAt<quint16>(archive, header + 28);
    const QByteArray packed = archive.mid(header + kLocalHeaderSize + nameSize + extra, packedSize);
    if (header < 0 || extra < 0 || packed.size() != packedSize)
        return std::nullopt;
    return method == kDeflated ? inflated(packed, size) : packed;
}

}  // namespace

std::optional<QByteArray> zipEntry(const QByteArray& archive, const QByteArray& name) {
    const int end = archive.lastIndexOf(QByteArray("PK\x05\x06", 4));
    if (!archive.startsWith("PK") || end < 0 || end + kEndSize > archive.size())
        return std::nullopt;
    const int count = numberAt<quint16>(archive, end + 10);
    int entry = numberAt<quint32>(archive, end + 16);
    for (int i = 0; i < count; ++i) {
        if (entry < 0 || archive.mid(entry, 4) != QByteArray("PK\x01\x02", 4))
            return std::nullopt;
        const int nameSize = numberAt<quint16>(archive, entry + 28);
        const int others = numberAt<quint16>(archive, entry + 30) + numberAt<quint16>(archive, entry + 32);
        // A local header repeats the name, so its size is the same there.
        if (archive.mid(entry + kDirectoryEntrySize, nameSize) == name)
            return contentAt(archive, entry, nameSize);
        entry += kDirectoryEntrySize + nameSize + others;
    }
    return std::nullopt;
}
