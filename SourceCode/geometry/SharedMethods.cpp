#include "geometry/SharedMethods.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include "geometry/calc/MeshReader.h"

namespace SharedMethods {

void ReadSTLFile(const QString& path, QVector<SbVec3f>& vertices, QVector<int>& indices, bool /*unused*/) {
    QFile file(path);
    // Opening a pipe would wait for its writer.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug().noquote() << "SharedMethods::ReadSTLFile"
                           << "Failed to open STL file: " + path;
        return;
    }
    vertices.clear();
    indices.clear();
    const MeshReading reading = readMesh(path);
    if (!reading.hasScene || !reading.hasMeshes) {
        qDebug().noquote() << "SharedMethods::ReadSTLFile"
                           << "Failed to load STL file: " + path + " (" + reading.error + ')';
        return;
    }
    vertices = reading.mesh.vertices;
    indices = reading.mesh.indices;
}

}  // namespace SharedMethods
