#include "geometry/calc/MeshReader.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <assimp/Importer.hpp>
#include <cctype>
#include <exception>

namespace {

constexpr qint64 kLargestFile = qint64{1} << 30;
constexpr qint64 kBinaryHeader = 84;  ///< 80 bytes of text and the count of triangles
constexpr qint64 kBinaryTriangle = 50;
constexpr int kMostSolids = 10000;  ///< the importer spends over a kilobyte on each, however empty

bool isTextStl(const QByteArray& content) {
    int position = 0;
    while (position < content.size() && std::isspace(static_cast<unsigned char>(content[position])) != 0)
        ++position;
    // Many a binary file begins with "solid", too; a text has no zeros.
    return content.mid(position, 5) == "solid" && !content.contains('\0');
}

/// Why these bytes are not for the importer; empty when they are.
QString problemOf(const QByteArray& content) {
    if (content.size() >= kBinaryHeader) {
        const auto triangles = qFromLittleEndian<quint32>(content.constData() + 80);
        const qint64 expected = kBinaryHeader + kBinaryTriangle * qint64{triangles};
        if (expected == content.size())
            return {};
        // The importer computes with 32 bits and would take this for a binary file.
        if (static_cast<quint32>(expected) == static_cast<quint32>(content.size()))
            return QStringLiteral("the file is too small for its number of triangles");
    }
    if (!isTextStl(content))
        return QStringLiteral(
            "not an STL file: the size does not fit the number of triangles, and the text "
            "does not begin with \"solid\"");
    if (content.count("endsolid") > kMostSolids)
        return QStringLiteral("more than %1 solids").arg(kMostSolids);
    return {};
}

QString problemOfFile(const QString& path) {
    if (!QFileInfo(path).isFile())
        return QStringLiteral("not a file");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    if (file.size() > kLargestFile)
        return QStringLiteral("the file is larger than 1 GiB");
    if (file.size() == 0)
        return QStringLiteral("the file is empty");
    uchar* bytes = file.map(0, file.size());
    if (bytes == nullptr)
        return file.errorString();
    // Only looks at the mapped bytes, which stay until `file` goes.
    return problemOf(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes),  // NOLINT
                                             static_cast<int>(file.size())));
}

/// No offset for what stands in front of the mesh: each keeps its own numbering.
void appendMesh(const aiMesh& mesh, QVector<SbVec3f>& vertices, QVector<int>& indices) {
    vertices.reserve(vertices.size() + static_cast<int>(mesh.mNumVertices));
    for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
        const aiVector3D& vertex = mesh.mVertices[i];
        vertices.append(SbVec3f(vertex.x, vertex.y, vertex.z));
    }
    indices.reserve(indices.size() + 3 * static_cast<int>(mesh.mNumFaces));
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        for (unsigned corner = 0; corner < face.mNumIndices; ++corner)
            indices.append(static_cast<int>(face.mIndices[corner]));
    }
}

MeshReading readingOf(const aiScene& scene) {
    MeshReading reading;
    reading.hasScene = true;
    reading.hasMeshes = scene.mMeshes != nullptr && scene.mNumMeshes > 0;
    reading.isComplete = (scene.mFlags & AI_SCENE_FLAGS_INCOMPLETE) == 0 && scene.mRootNode != nullptr;
    QVector<int> indices;
    for (unsigned i = 0; reading.hasMeshes && i < scene.mNumMeshes; ++i)
        appendMesh(*scene.mMeshes[i], reading.mesh.vertices, indices);
    reading.mesh.indices = withSeparators(indices);
    return reading;
}

}  // namespace

MeshReading readMesh(const QString& path) {
    MeshReading failed;
    failed.error = problemOfFile(path);
    if (!failed.error.isEmpty())
        return failed;
    try {
        Assimp::Importer importer;
        const aiScene* scene = importer.ReadFile(path.toUtf8().toStdString(), aiProcess_Triangulate);
        if (scene == nullptr) {
            failed.error = QString::fromUtf8(importer.GetErrorString());
            return failed;
        }
        MeshReading reading = readingOf(*scene);
        if (allFinite(reading.mesh.vertices))
            return reading;
        failed.error = QStringLiteral("a vertex is not a finite number");
    } catch (const std::exception& error) {
        failed.error = QString::fromUtf8(error.what());
    }
    return failed;
}
