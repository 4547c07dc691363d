#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Mesh.h"

namespace modelgen {

/// Writes a binary STL file: an 80-byte header, the count, then per triangle its normal, three corners and
/// two attribute bytes. The same mesh always gives the same bytes. Throws std::runtime_error when the file
/// cannot be written.
void writeStl(const std::filesystem::path& path, const Mesh& mesh, const std::string& header);

/// Reads such a file back, three points of their own per triangle. Throws std::runtime_error on a file that
/// cannot be read or whose size does not match its count.
Mesh readStl(const std::filesystem::path& path);

struct ColouredPart {
    Mesh mesh;
    std::string diffuseColour;  ///< r g b, 0 to 1
};

/// The parts as an Inventor ASCII scene, smooth below 30 degrees.
void writeInventor(const std::filesystem::path& path, const std::vector<ColouredPart>& parts);

/// The mesh with every coordinate moved to the nearest single-precision number whose four bytes hold no line
/// break (10 or 13). Equal coordinates stay equal, so a closed surface stays closed; the shift is below 0.4
/// %.
Mesh withoutLineBreaks(const Mesh& mesh);

/// Writes a file that two readers accept: as a binary STL file it holds the mesh; as an Inventor file its
/// 80-byte header refers to the scene file `sceneName` beside it and opens a comment that never ends, since
/// no byte behind it is a line break.
void writeStlWithScene(const std::filesystem::path& path, const Mesh& mesh, const std::string& sceneName);

}  // namespace modelgen
