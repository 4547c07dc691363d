#include "tools/ToolGraph.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "geometry/FieldText.h"
#include "geometry/ShapeGenerator.h"

namespace {

constexpr int kDeepestNesting = 500;  ///< the scene library reads nested nodes by recursion

bool isNestedTooDeep(const QByteArray& text) {
    int depth = 0;
    for (const char letter : text) {
        if (letter == '{' || letter == '[')
            ++depth;
        else if (letter == '}' || letter == ']')
            depth = std::max(0, depth - 1);
        if (depth > kDeepestNesting)
            return true;
    }
    return false;
}

bool isReadableFile(const QString& path) {
    constexpr int kLongestWord = 30000;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    return !isNestedTooDeep(content) && !hasLongWord(content, kLongestWord);
}

void logFailure(const char* place, int line, const QString& message) {
    qDebug().noquote() << QString::fromUtf8(place) + ' ' + QString::number(line) + ' ' + message;
}

void addMounting(SoSeparator& graph, const ToolRecord& tool, const SbName& name) {
    auto* mounting = new SoMatrixTransform;  // owned by the graph
    mounting->setName(name);
    mounting->matrix.setValue(toolMountMatrix(tool.transform));
    graph.addChild(mounting);
}

SbName nameOf(const ToolRecord& tool) {
    return {QStringLiteral("Tool%1").arg(tool.index).toUtf8().constData()};
}

SoSeparator* readGraph(const QString& path) {
    SoInput input;
    if (!isReadableFile(path) || !input.openFile(path.toUtf8().constData())) {
        logFailure(Q_FUNC_INFO, __LINE__, " open file failed.FilePath:" + path);
        return nullptr;
    }
    const SceneReadErrors errors;
    SoSeparator* graph = SoDB::readAll(&input);
    if (graph == nullptr)
        logFailure(Q_FUNC_INFO, __LINE__, " read model failed.FilePath:" + path + ' ' + errors.text());
    return graph;
}

}  // namespace

SoSeparator* revolvedToolGraph(const ToolRecord& tool, const std::optional<SbColor>& color) {
    const SbName name = nameOf(tool);
    auto* graph = new SoSeparator;  // owned by the caller
    graph->setName(name);
    auto* material = new SoMaterial;  // owned by the graph
    if (color)
        material->diffuseColor.setValue(*color);
    graph->addChild(material);
    addMounting(*graph, tool, name);
    const ShapeGenerator shapes;
    QVector<SbVec3f> vertices;
    QVector<int> indices;
    shapes.createToolMesh(tool.contour, vertices, indices);
    graph->addChild(shapes.createFaceSet(vertices, indices, &name));
    return graph;
}

SoSeparator* modelToolGraph(const ToolRecord& tool, const QString& path) {
    SoSeparator* model = readGraph(path);
    if (model == nullptr)
        return nullptr;
    const SbName name = nameOf(tool);
    auto* graph = new SoSeparator;  // owned by the caller
    graph->setName(name);
    addMounting(*graph, tool, name);
    graph->addChild(model);
    return graph;
}
