#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <memory>

#include "geometry/calc/CollisionEngine.h"
#include "geometry/calc/MeshReader.h"
#include "geometry/calc/RevolvedMesh.h"

// A sphere of revolution of `rings` rings: 36 triangles a ring.
namespace {

MeshArrays sphere(int rings) {
    QVector<SbVec3f> contour;
    for (int i = 0; i <= rings; ++i) {
        const double angle = 3.141592653589793 * i / rings;
        contour.append(
            SbVec3f(static_cast<float>(100 * std::sin(angle)), 0, static_cast<float>(100 * std::cos(angle))));
    }
    return revolvedMesh(contour);
}

QByteArray binaryStl(const MeshArrays& mesh) {
    const auto count = static_cast<quint32>(mesh.indices.size() / 4);
    QByteArray bytes(80, ' ');
    bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
    for (int triangle = 0; triangle < mesh.indices.size() / 4; ++triangle) {
        bytes.append(12, '\0');
        for (int corner = 0; corner < 3; ++corner) {
            const float* vertex = mesh.vertices[mesh.indices[4 * triangle + corner]].getValue();
            bytes.append(reinterpret_cast<const char*>(vertex), 3 * sizeof *vertex);
        }
        bytes.append(2, '\0');
    }
    return bytes;
}

std::unique_ptr<fcl::CollisionObject<float>> objectOf(const MeshArrays& mesh, float x_mm) {
    std::vector<Eigen::Vector3f> vertices;
    for (const SbVec3f& vertex : mesh.vertices)
        vertices.emplace_back(vertex[0], vertex[1], vertex[2]);
    std::vector<fcl::Triangle> triangles;
    for (int i = 0; i + 2 < mesh.indices.size(); i += 4) {
        triangles.emplace_back(static_cast<std::size_t>(mesh.indices[i]),
                               static_cast<std::size_t>(mesh.indices[i + 1]),
                               static_cast<std::size_t>(mesh.indices[i + 2]));
    }
    CollisionTransform transform = CollisionTransform::Identity();
    transform.translation().x() = x_mm;
    return CollisionEngine::makeObject(CollisionEngine::makeModel(vertices, triangles, nullptr), transform);
}

void readStl(benchmark::State& state) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("sphere.stl")));
    if (!file.open(QIODevice::WriteOnly))
        return state.SkipWithError("no file");
    file.write(binaryStl(sphere(static_cast<int>(state.range(0)) / 36)));
    file.close();
    for (auto unused : state)
        benchmark::DoNotOptimize(readMesh(file.fileName()).mesh.vertices.size());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void revolveTool(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(sphere(static_cast<int>(state.range(0))).vertices.size());
}

void buildCollisionObject(benchmark::State& state) {
    const MeshArrays mesh = sphere(static_cast<int>(state.range(0)) / 36);
    for (auto unused : state)
        benchmark::DoNotOptimize(objectOf(mesh, 0).get());
}

void testPair(benchmark::State& state) {
    const MeshArrays mesh = sphere(300);
    const auto one = objectOf(mesh, 0);
    const auto other = objectOf(mesh, static_cast<float>(state.range(0)));
    for (auto unused : state)
        benchmark::DoNotOptimize(CollisionEngine::collide(*one, *other));
}

}  // namespace

BENCHMARK(readStl)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(revolveTool)->Arg(24)->Unit(benchmark::kMicrosecond);
BENCHMARK(buildCollisionObject)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
// Far apart, just apart, and overlapping; spheres of 100 mm.
BENCHMARK(testPair)->Arg(1000)->Arg(200)->Arg(150)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
