#include <gtest/gtest.h>

#include <QDir>
#include <limits>
#include <random>

#include "GeometryTestSupport.h"
#include "geometry/SharedMethods.h"
#include "geometry/calc/MeshReader.h"

namespace {

MeshArrays readStl(const QString& path) {
    MeshArrays mesh;
    SharedMethods::ReadSTLFile(path, mesh.vertices, mesh.indices, false);
    return mesh;
}

MeshArrays earlier() {
    MeshArrays mesh;
    mesh.vertices = {SbVec3f(1, 2, 3)};
    mesh.indices = {0, 0, 0, -1};
    return mesh;
}

/// The file leaves empty arrays and one line in the log.
void expectRefused(const QByteArray& content, const char* what) {
    SCOPED_TRACE(what);
    const GeometryInstallation installation;
    const QString path = installation.stl(QStringLiteral("bad.stl"), content);
    const LogCapture log;
    MeshArrays mesh = earlier();
    SharedMethods::ReadSTLFile(path, mesh.vertices, mesh.indices, true);
    EXPECT_EQ(mesh.vertices.size(), 0);
    EXPECT_EQ(mesh.indices.size(), 0);
    EXPECT_EQ(log.count(QStringLiteral("Failed to load STL file: ") + path), 1) << log.all().toStdString();
}

}  // namespace

TEST(ReadSTLFile, BinaryFile_GivesEachTriangleItsOwnVertices) {
    const GeometryInstallation installation;
    const MeshArrays mesh = readStl(installation.stl(QStringLiteral("a.stl"), binaryStl(twoTriangles())));
    ASSERT_EQ(mesh.vertices.size(), 6);
    EXPECT_EQ(mesh.vertices[0], SbVec3f(0, 0, 0));
    EXPECT_EQ(mesh.vertices[1], SbVec3f(10, 0, 0));
    EXPECT_EQ(mesh.vertices[4], SbVec3f(10.125F, 10.5F, 0));
    EXPECT_EQ(mesh.indices, (QVector<int>{0, 1, 2, -1, 3, 4, 5, -1}));
}

TEST(ReadSTLFile, BinaryAndTextFile_GiveTheSameArrays) {
    const GeometryInstallation installation;
    const QVector<Triangle> box = boxTriangles(SbVec3f(1.5F, 2.25F, 100));
    const MeshArrays binary = readStl(installation.stl(QStringLiteral("b.stl"), binaryStl(box)));
    const MeshArrays text = readStl(installation.stl(QStringLiteral("t.STL"), textStl({box})));
    EXPECT_EQ(binary.vertices.size(), 36);
    EXPECT_EQ(binary.vertices, text.vertices);
    EXPECT_EQ(binary.indices, text.indices);
}

// The missing offset stays: documents and collision results depend on it.
TEST(ReadSTLFile, TwoSolids_ConcatenateVerticesAndKeepEachSolidsNumbering) {
    const GeometryInstallation installation;
    const QVector<Triangle> first = twoTriangles();
    const QVector<Triangle> second{Triangle{SbVec3f(7, 7, 7), SbVec3f(8, 7, 7), SbVec3f(7, 8, 7)}};
    const MeshArrays mesh = readStl(installation.stl(QStringLiteral("two.stl"), textStl({first, second})));
    ASSERT_EQ(mesh.vertices.size(), 9);
    EXPECT_EQ(mesh.vertices[6], SbVec3f(7, 7, 7));
    EXPECT_EQ(mesh.indices, (QVector<int>{0, 1, 2, -1, 3, 4, 5, -1, 0, 1, 2, -1}));
}

TEST(ReadSTLFile, MissingFile_LeavesTheArraysAndLogs) {
    const GeometryInstallation installation;
    for (const QString& path :
         {installation.file(QStringLiteral("none.stl")), installation.path(), QString()}) {
        const LogCapture log;
        MeshArrays mesh = earlier();
        SharedMethods::ReadSTLFile(path, mesh.vertices, mesh.indices, false);
        EXPECT_EQ(mesh.vertices, earlier().vertices);
        EXPECT_EQ(mesh.indices, earlier().indices);
        EXPECT_EQ(log.count(QStringLiteral("SharedMethods::ReadSTLFile Failed to open STL file: ") + path), 1)
            << log.all().toStdString();
    }
}

TEST(ReadSTLFile, WhatIsNoStl_IsRefused) {
    expectRefused("", "no byte");
    expectRefused("solid", "one word");
    expectRefused(QByteArray(10, '\0'), "ten zeros");
    expectRefused("\x89PNG\r\n\x1a\n" + QByteArray(500, 'x'), "a picture");
    expectRefused("ply\nformat ascii 1.0\n", "another mesh format");
    expectRefused("solid a\nfacet normal 0 0", "a text that breaks off");
    expectRefused("solid a\nfacet normal 0 0 1\nouter loop\nvertex 1 2", "a vertex that breaks off");
}

TEST(ReadSTLFile, TruncatedBinaryFile_IsRefused) {
    const QByteArray whole = binaryStl(boxTriangles(SbVec3f(1, 1, 1)));
    for (const int size : {80, 83, 84, 100, 133, 134, 135, static_cast<int>(whole.size()) - 1})
        expectRefused(whole.left(size), "truncated");
}

TEST(ReadSTLFile, TriangleCountWithoutTriangles_IsRefusedWithoutMemory) {
    expectRefused(stlClaiming(0), "no triangle");
    expectRefused(stlClaiming(1000000), "a million");
    expectRefused(stlClaiming(0xFFFFFFFFU), "four thousand million");
    // 50 * 2^31 is 0 in 32 bits, so that a careless reader finds the size right.
    expectRefused(stlClaiming(0x80000000U), "a count that wraps");
    QByteArray text = stlClaiming(1000000);
    text.replace(0, 5, "solid");
    expectRefused(text, "a million behind the word solid");
}

TEST(ReadSTLFile, VertexThatIsNoNumber_IsRefused) {
    QVector<Triangle> triangles = twoTriangles();
    triangles[1][2] = SbVec3f(0, std::numeric_limits<float>::quiet_NaN(), 0);
    expectRefused(binaryStl(triangles), "not a number");
    triangles[1][2] = SbVec3f(std::numeric_limits<float>::infinity(), 0, 0);
    expectRefused(binaryStl(triangles), "infinite");
    triangles[1][2] = SbVec3f(0, 0, 0);
    QByteArray text = textStl({triangles});
    text.replace("vertex 10.125", "vertex nan");
    expectRefused(text, "not a number in a text");
}

TEST(ReadSTLFile, MoreSolidsThanAnyModelHas_AreRefused) {
    expectRefused(QByteArray("solid\nendsolid\n").repeated(10001), "10001 solids");
}

TEST(ReadSTLFile, EmptySolid_GivesNoTriangleAndNoMessage) {
    const GeometryInstallation installation;
    const QString path = installation.stl(QStringLiteral("empty.stl"), "solid empty\nendsolid empty\n");
    const LogCapture log;
    const MeshArrays mesh = readStl(path);
    EXPECT_EQ(mesh.vertices.size(), 0);
    EXPECT_EQ(mesh.indices.size(), 0);
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

TEST(ReadSTLFile, FileNameOutsideAscii_IsRead) {
    const GeometryInstallation installation;
    const MeshArrays mesh =
        readStl(installation.stl(QStringLiteral("модель 桌子.stl"), binaryStl(twoTriangles())));
    EXPECT_EQ(mesh.vertices.size(), 6);
}

TEST(ReadSTLFile, DamagedFiles_GiveNothingOrAWellFormedMesh) {
    const GeometryInstallation installation;
    const QVector<Triangle> box = boxTriangles(SbVec3f(1, 2, 3));
    std::mt19937 random(20);  // NOLINT(cert-msc51-cpp): the same files each time
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = round % 2 == 0 ? binaryStl(box) : textStl({box, box});
        const int changes = 1 + static_cast<int>(random() % 8);
        for (int i = 0; i < changes; ++i)
            bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] =
                static_cast<char>(random() % 256);
        if (round % 3 == 0)
            bytes.truncate(static_cast<int>(random() % static_cast<unsigned>(bytes.size())));
        const LogCapture log;
        const MeshArrays mesh = readStl(installation.stl(QStringLiteral("damaged.stl"), bytes));
        SCOPED_TRACE("round " + std::to_string(round) + ": " + bytes.toBase64().toStdString());
        ASSERT_EQ(mesh.indices.size() % 4, 0);
        ASSERT_EQ(allFinite(mesh.vertices), true);
        for (int i = 0; i < mesh.indices.size(); ++i) {
            if (i % 4 == 3) {
                ASSERT_EQ(mesh.indices[i], -1);
            } else {
                ASSERT_GE(mesh.indices[i], 0);
                ASSERT_LT(mesh.indices[i], mesh.vertices.size());
            }
        }
    }
}

TEST(MeshReader, GoodFile_HasAllFlags) {
    const GeometryInstallation installation;
    const MeshReading reading =
        readMesh(installation.stl(QStringLiteral("a.stl"), binaryStl(twoTriangles())));
    EXPECT_EQ(reading.hasScene, true);
    EXPECT_EQ(reading.hasMeshes, true);
    EXPECT_EQ(reading.isComplete, true);
    EXPECT_EQ(reading.error, QString());
    EXPECT_EQ(reading.mesh.isEmpty(), false);
}
