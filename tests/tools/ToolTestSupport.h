#pragma once

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QByteArray>
#include <QColor>
#include <QString>
#include <iosfwd>
#include <random>

#include "support/TestSupport.h"
#include "tools/calc/ToolRecord.h"

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds the printer by this name.
void PrintTo(const SbVec3f& vector, std::ostream* out);

/// A tool whose fields all differ from those of a new one.
[[nodiscard]] ToolRecord unusualTool();
/// A tool of random fields within sensible limits.
[[nodiscard]] ToolRecord randomTool(std::mt19937& random);
/// Every field that the JSON form carries.
void expectSameTool(const ToolRecord& tool, const ToolRecord& expected);

/// A picture of one colour as PNG.
[[nodiscard]] QByteArray picture(int width, int height, const QColor& color = Qt::red);

/// An installation with English texts, and a chain saw library of the groups "Saw1" (whole), "Saw2" (five
/// numbers in its matrix, no picture) and "Saw3" (no model).
class ToolInstallation : public TemporaryInstallation {
  public:
    ToolInstallation();
};

/// One reference for as long as the test needs the node.
class HeldGraph {
  public:
    explicit HeldGraph(SoSeparator* graph);
    ~HeldGraph();
    HeldGraph(const HeldGraph&) = delete;
    HeldGraph& operator=(const HeldGraph&) = delete;
    SoSeparator* operator->() const { return graph_; }
    [[nodiscard]] SoSeparator* get() const { return graph_; }

  private:
    SoSeparator* graph_;
};
