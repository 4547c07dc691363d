#pragma once

#include <string>
#include <vector>

#include "Mesh.h"
#include "StlFile.h"

namespace modelgen {

/// One model file: its place below the folder of models and the maker of its mesh.
struct Model {
    std::string file;
    Mesh (*make)();
};

/// One chain saw: an STL file that also serves as a scene file, and the coloured scene that it refers to.
struct ChainSaw {
    std::string name;  ///< file stem
    std::vector<ColouredPart> (*make)();
};

/// Mortise chain saws in the frame of their spindle: the spindle's front is z = 0, the chain hangs down.
std::vector<ChainSaw> chainSaws();

/// Fixed bridge with two tables and a five-axis head; the frames are told in docs/machines.md.
std::vector<Model> bridgeModels();
/// Nesting router: moving gantry, three axes, fixed table.
std::vector<Model> nestModels();
/// Travelling portal with a head that swivels about Y and tilts about X.
std::vector<Model> portalModels();
/// Work pieces of the demonstration job and what they lie on; the frames are their user coordinate systems.
std::vector<Model> workPieceModels();

}  // namespace modelgen
