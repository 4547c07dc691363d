#include "GeometryTestSupport.h"

#include <Inventor/SoDB.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QDataStream>
#include <QImage>
#include <ostream>

#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"

namespace {

class SceneLibrary : public ::testing::Environment {
  public:
    void SetUp() override { SoDB::init(); }
};

// NOLINTNEXTLINE(cert-err58-cpp): the test program registers it before its main.
const ::testing::Environment* const kSceneLibrary = ::testing::AddGlobalTestEnvironment(new SceneLibrary);

const QByteArray kEnglish = R"({
  "UserModelNode": {
    "PixmapNotExistedErrorMsg": "No texture:", "VerticesIndicesIsEmptyErrorMsg": "No mesh in the document:",
    "Name": "Name:", "Parent": "Parent:", "Path": "Path:", "CollisionObjectCenter": "Centre:",
    "CollisionObjectMax": "Max:", "CollisionObjectMin": "Min:", "CollisionObjectTransform": "Pose:"},
  "CollisionObjectBuilder": {
    "Title": "Collision objects", "VerticeIsEmptyErrorMsg": "No vertices", "BuildErrorMsg": "Not built"}
})";

QByteArray picture() {
    QImage image(4, 2, QImage::Format_RGB888);
    image.fill(Qt::red);
    image.setPixelColor(0, 0, Qt::blue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray number(float value) {
    return QByteArray::number(static_cast<double>(value), 'g', 9);
}

}  // namespace

void PrintTo(const SbVec3f& vector, std::ostream* out) {
    *out << '(' << vector[0] << ' ' << vector[1] << ' ' << vector[2] << ')';
}

QByteArray stlClaiming(quint32 count) {
    QByteArray bytes(80, ' ');
    QDataStream stream(&bytes, QIODevice::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << count;
    return bytes;
}

QByteArray binaryStl(const QVector<Triangle>& triangles) {
    QByteArray bytes = stlClaiming(static_cast<quint32>(triangles.size()));
    QDataStream stream(&bytes, QIODevice::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const Triangle& triangle : triangles) {
        stream << 0.0F << 0.0F << 1.0F;
        for (const SbVec3f& vertex : triangle)
            stream << vertex[0] << vertex[1] << vertex[2];
        stream << quint16{0};
    }
    return bytes;
}

QByteArray textStl(const QVector<QVector<Triangle>>& solids) {
    QByteArray text;
    for (const QVector<Triangle>& solid : solids) {
        text += "solid part\n";
        for (const Triangle& triangle : solid) {
            text += "facet normal 0 0 1\nouter loop\n";
            for (const SbVec3f& vertex : triangle)
                text +=
                    "vertex " + number(vertex[0]) + ' ' + number(vertex[1]) + ' ' + number(vertex[2]) + '\n';
            text += "endloop\nendfacet\n";
        }
        text += "endsolid part\n";
    }
    return text;
}

QVector<Triangle> twoTriangles() {
    return {Triangle{SbVec3f(0, 0, 0), SbVec3f(10, 0, 0), SbVec3f(0, 10, 0)},
            Triangle{SbVec3f(10, 0, 0), SbVec3f(10.125F, 10.5F, 0), SbVec3f(0, 10, 0)}};
}

MeshArrays boxMesh(const SbVec3f& halfSize) {
    MeshArrays mesh;
    for (int i = 0; i < 8; ++i) {
        mesh.vertices.append(SbVec3f((i & 1) != 0 ? halfSize[0] : -halfSize[0],
                                     (i & 2) != 0 ? halfSize[1] : -halfSize[1],
                                     (i & 4) != 0 ? halfSize[2] : -halfSize[2]));
    }
    mesh.indices = {0, 2, 1, -1, 1, 2, 3, -1, 4, 5, 6, -1, 5, 7, 6, -1, 0, 1, 4, -1, 1, 5, 4, -1,
                    2, 6, 3, -1, 3, 6, 7, -1, 0, 4, 2, -1, 2, 4, 6, -1, 1, 3, 5, -1, 3, 7, 5, -1};
    return mesh;
}

QVector<Triangle> boxTriangles(const SbVec3f& halfSize) {
    const MeshArrays mesh = boxMesh(halfSize);
    QVector<Triangle> triangles;
    for (int i = 0; i < mesh.indices.size(); i += 4) {
        triangles.append(Triangle{mesh.vertices[mesh.indices[i]], mesh.vertices[mesh.indices[i + 1]],
                                  mesh.vertices[mesh.indices[i + 2]]});
    }
    return triangles;
}

GeometryInstallation::GeometryInstallation() {
    write(QStringLiteral("data.ini"), "[MainInterface]\nLanguage=English\n");
    write(QStringLiteral("language/english.json"), kEnglish);
    write(QStringLiteral("data/UniquelyIdentifies.json"), R"({"workPieceFlag": "work piece"})");
    write(QStringLiteral("oak.jpg"), picture());
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
}

QString GeometryInstallation::stl(const QString& name, const QByteArray& content) const {
    write(name, content);
    return file(name);
}
