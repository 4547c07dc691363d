#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "Models.h"
#include "StlFile.h"

// tornvale_modelgen FOLDER          writes all models of the installation folder FOLDER
// tornvale_modelgen --check FOLDER  reads them back and examines them

namespace {

namespace fs = std::filesystem;

fs::path modelPath(const fs::path& folder, const modelgen::Model& model) {
    return folder / "models" / model.file;
}

fs::path sawPath(const fs::path& folder, const modelgen::ChainSaw& saw) {
    return folder / "ChainSawLib" / (saw.name + ".stl");
}

std::vector<modelgen::Model> allModels() {
    std::vector<modelgen::Model> models = modelgen::bridgeModels();
    for (const auto& more : {modelgen::nestModels(), modelgen::portalModels(), modelgen::workPieceModels()}) {
        models.insert(models.end(), more.begin(), more.end());
    }
    return models;
}

/// The model's mesh; a failure names the file.
modelgen::Mesh make(const modelgen::Model& model) {
    try {
        return model.make();
    } catch (const std::exception& problem) {
        throw std::runtime_error(model.file + ": " + problem.what());
    }
}

void writeSaw(const fs::path& folder, const modelgen::ChainSaw& saw) {
    std::vector<modelgen::ColouredPart> parts = saw.make();
    modelgen::Mesh whole;
    for (modelgen::ColouredPart& part : parts) {
        part.mesh = modelgen::withoutLineBreaks(part.mesh);
        whole.add(part.mesh);
    }
    const fs::path path = sawPath(folder, saw);
    fs::create_directories(path.parent_path());
    modelgen::writeStlWithScene(path, whole, saw.name + ".iv");
    modelgen::writeInventor(fs::path(path).replace_extension(".iv"), parts);
}

void write(const fs::path& folder) {
    for (const modelgen::Model& model : allModels()) {
        const fs::path path = modelPath(folder, model);
        fs::create_directories(path.parent_path());
        modelgen::writeStl(path, make(model), "Tornvale sample model");
    }
    for (const modelgen::ChainSaw& saw : modelgen::chainSaws()) {
        writeSaw(folder, saw);
    }
}

bool isGood(const fs::path& path) {
    const modelgen::MeshReport report = modelgen::examine(modelgen::readStl(path));
    std::printf("%-4s %-28s %s\n", report.good() ? "ok" : "BAD", path.filename().string().c_str(),
                report.text().c_str());
    return report.good();
}

bool check(const fs::path& folder) {
    bool good = true;
    for (const modelgen::Model& model : allModels()) {
        good = isGood(modelPath(folder, model)) && good;
    }
    for (const modelgen::ChainSaw& saw : modelgen::chainSaws()) {
        good = isGood(sawPath(folder, saw)) && good;
    }
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    try {
        if (words.size() == 1 && words[0] != "--check") {
            write(words[0]);
            return 0;
        }
        if (words.size() == 2 && words[0] == "--check") {
            return check(words[1]) ? 0 : 1;
        }
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "tornvale_modelgen: %s\n", problem.what());
        return 1;
    }
    std::fputs("usage: tornvale_modelgen [--check] FOLDER\n", stderr);
    return 2;
}
