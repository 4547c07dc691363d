#pragma once

#include <QString>

#include "geometry/calc/MeshArrays.h"

/// What came out of a mesh file.
struct MeshReading {
    MeshArrays mesh;          ///< with separators; empty when the file could not be read
    bool hasScene = false;    ///< the importer made something of the file
    bool hasMeshes = false;   ///< and there is a mesh in it, which may be without a face
    bool isComplete = false;  ///< with a root node, and not marked as incomplete
    QString error;            ///< the importer's words, or why the file was not handed to it
};

/// Reads an STL file, binary or text, through the importer library: three vertices of its own for each
/// triangle, nothing welded. Of a file with several solids the vertices stand one behind the other while the
/// indices of each solid start at 0 again: old documents and their collision results depend on it.
///
/// The file is looked at before the importer sees it, for a small file must not make it claim gigabytes: no
/// regular file, more than 1 GiB, a triangle count that does not fit the size, more than 10,000 solids. A
/// vertex that is not a finite number spoils the whole file.
[[nodiscard]] MeshReading readMesh(const QString& path);
