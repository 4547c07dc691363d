#include "geometry/calc/MeshArrays.h"

#include <algorithm>
#include <cmath>

QVector<int> withSeparators(const QVector<int>& indices) {
    QVector<int> separated;
    separated.reserve(indices.size() + indices.size() / 3);
    for (int i = 0; i < indices.size(); ++i) {
        separated.append(indices[i]);
        if (i % 3 == 2)
            separated.append(-1);
    }
    return separated;
}

bool indicesFit(const int* indices, int indexCount, int vertexCount) {
    return std::all_of(indices, indices + indexCount,
                       [vertexCount](int index) { return index < vertexCount; });
}

bool allFinite(const QVector<SbVec3f>& vertices) {
    return std::all_of(vertices.begin(), vertices.end(), [](const SbVec3f& vertex) {
        return std::isfinite(vertex[0]) && std::isfinite(vertex[1]) && std::isfinite(vertex[2]);
    });
}

void scaleAboutOrigin(QVector<SbVec3f>& vertices, float factor) {
    for (SbVec3f& vertex : vertices)
        vertex *= factor;
}
