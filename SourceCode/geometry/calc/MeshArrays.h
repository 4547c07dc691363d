#pragma once

#include <Inventor/SbVec3f.h>

#include <QVector>

/// A mesh in memory, lengths in mm: vertices, and indices in face-set form, three vertex indices and -1 for
/// each triangle. Every user relies on that stride of 4.
struct MeshArrays {
    QVector<SbVec3f> vertices;
    QVector<int> indices;

    [[nodiscard]] bool isEmpty() const { return vertices.isEmpty() || indices.isEmpty(); }
};

/// Indices with -1 behind every third one; what is left over at the end (one or two) stays as it is.
[[nodiscard]] QVector<int> withSeparators(const QVector<int>& indices);

/// True when no index points behind the vertices. Negative indices separate the faces.
[[nodiscard]] bool indicesFit(const int* indices, int indexCount, int vertexCount);

/// True when every coordinate is a finite number.
[[nodiscard]] bool allFinite(const QVector<SbVec3f>& vertices);

/// Each vertex times `factor` about the origin: 0.9999 keeps a mounted tool from touching its own spindle.
void scaleAboutOrigin(QVector<SbVec3f>& vertices, float factor);
