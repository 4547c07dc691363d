#include <QTemporaryFile>
#include <cstddef>
#include <cstdint>

#include "geometry/calc/MeshReader.h"

namespace {

bool isWellFormed(const MeshArrays& mesh) {
    if (mesh.indices.size() % 4 != 0 || !allFinite(mesh.vertices))
        return false;
    for (int i = 0; i < mesh.indices.size(); ++i) {
        const int index = mesh.indices[i];
        if (i % 4 == 3 ? index != -1 : (index < 0 || index >= mesh.vertices.size()))
            return false;
    }
    return true;
}

}  // namespace

// Any bytes as an STL file: a well-formed mesh, or none and a reason.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QTemporaryFile file(QStringLiteral("XXXXXX.stl"));
    if (!file.open())
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.flush();
    const MeshReading reading = readMesh(file.fileName());
    if (reading.hasScene ? !isWellFormed(reading.mesh) : reading.error.isEmpty())
        __builtin_trap();
    return 0;
}
