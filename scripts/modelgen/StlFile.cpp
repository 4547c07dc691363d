#include "StlFile.h"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace modelgen {

namespace {

static_assert(std::endian::native == std::endian::little, "STL files keep their numbers little-endian");

constexpr std::size_t headerSize = 80;
constexpr std::size_t recordSize = 50;

void appendFloat(std::string& bytes, double value) {
    const float number = static_cast<float>(value) + 0.0F;
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

void appendVector(std::string& bytes, Vec3 v) {
    appendFloat(bytes, v.x);
    appendFloat(bytes, v.y);
    appendFloat(bytes, v.z);
}

void writeBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

Vec3 readVector(const char* place) {
    float numbers[3];
    std::memcpy(numbers, place, sizeof numbers);
    return {static_cast<double>(numbers[0]), static_cast<double>(numbers[1]),
            static_cast<double>(numbers[2])};
}

}  // namespace

namespace {

bool hasLineBreak(std::uint32_t bits) {
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t byte = (bits >> shift) & 0xffU;
        if (byte == 0x0aU || byte == 0x0dU) {
            return true;
        }
    }
    return false;
}

double nearestWithoutLineBreak(double value) {
    const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(value) + 0.0F);
    for (std::uint32_t step = 0;; ++step) {
        for (const std::uint32_t candidate : {bits - step, bits + step}) {
            if (!hasLineBreak(candidate)) {
                return static_cast<double>(std::bit_cast<float>(candidate));
            }
        }
    }
}

Vec3 nearestWithoutLineBreak(Vec3 v) {
    return {nearestWithoutLineBreak(v.x), nearestWithoutLineBreak(v.y), nearestWithoutLineBreak(v.z)};
}

std::string stlBytes(const Mesh& mesh, const std::string& header, bool avoidLineBreaks) {
    std::string bytes = header.substr(0, headerSize);
    bytes.resize(headerSize, ' ');
    const auto count = static_cast<std::uint32_t>(mesh.triangles.size());
    char raw[sizeof count];
    std::memcpy(raw, &count, sizeof count);
    bytes.append(raw, sizeof count);
    for (const Triangle& t : mesh.triangles) {
        const Vec3 a = mesh.points[t[0]];
        const Vec3 b = mesh.points[t[1]];
        const Vec3 c = mesh.points[t[2]];
        const Vec3 normal = unit(cross(b - a, c - a));
        appendVector(bytes, avoidLineBreaks ? nearestWithoutLineBreak(normal) : normal);
        appendVector(bytes, a);
        appendVector(bytes, b);
        appendVector(bytes, c);
        bytes.append(2, '\0');
    }
    return bytes;
}

}  // namespace

void writeStl(const std::filesystem::path& path, const Mesh& mesh, const std::string& header) {
    writeBytes(path, stlBytes(mesh, header, false));
}

Mesh withoutLineBreaks(const Mesh& mesh) {
    Mesh result = mesh;
    for (Vec3& p : result.points) {
        p = nearestWithoutLineBreak(p);
    }
    return result;
}

void writeStlWithScene(const std::filesystem::path& path, const Mesh& mesh, const std::string& sceneName) {
    const std::string header = "#Inventor V2.1 ascii\nFile{name \"" + sceneName + "\"}\n#";
    if (header.size() > headerSize) {
        throw std::runtime_error("the scene name " + sceneName + " is too long for an STL header");
    }
    const std::string bytes = stlBytes(mesh, header, true);
    if (bytes.find_first_of("\n\r", header.size()) != std::string::npos) {
        throw std::runtime_error(path.string() + ": the count of triangles holds a line break byte");
    }
    writeBytes(path, bytes);
}

Mesh readStl(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::uint32_t count = 0;
    if (bytes.size() >= headerSize + sizeof count) {
        std::memcpy(&count, bytes.data() + headerSize, sizeof count);
    }
    if (bytes.size() != headerSize + sizeof count + recordSize * count) {
        throw std::runtime_error(path.string() + " is no binary STL file");
    }
    Mesh mesh;
    const char* record = bytes.data() + headerSize + sizeof count;
    for (std::uint32_t i = 0; i < count; ++i, record += recordSize) {
        const std::uint32_t a = mesh.addPoint(readVector(record + 12));
        const std::uint32_t b = mesh.addPoint(readVector(record + 24));
        const std::uint32_t c = mesh.addPoint(readVector(record + 36));
        mesh.addTriangle(a, b, c);
    }
    return mesh;
}

void writeInventor(const std::filesystem::path& path, const std::vector<ColouredPart>& parts) {
    std::string text = "#Inventor V2.1 ascii\n\n";
    char line[96];
    for (const ColouredPart& part : parts) {
        text += "Separator {\n  Material { diffuseColor " + part.diffuseColour +
                " specularColor 0.3 0.3 0.3 shininess 0.4 }\n" +
                "  ShapeHints { vertexOrdering COUNTERCLOCKWISE shapeType SOLID creaseAngle 0.5 }\n" +
                "  Coordinate3 { point [\n";
        for (const Vec3& p : part.mesh.points) {
            std::snprintf(line, sizeof line, "    %.3f %.3f %.3f,\n", p.x + 0.0, p.y + 0.0, p.z + 0.0);
            text += line;
        }
        text += "  ] }\n  IndexedFaceSet { coordIndex [\n";
        for (const Triangle& t : part.mesh.triangles) {
            std::snprintf(line, sizeof line, "    %u, %u, %u, -1,\n", t[0], t[1], t[2]);
            text += line;
        }
        text += "  ] }\n}\n";
    }
    writeBytes(path, text);
}

}  // namespace modelgen
