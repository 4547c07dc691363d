#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "geometry/calc/MeshArrays.h"

class SoField;

/// Whether a scene text has a name or number of more than `longest` bytes: the scene library writes past its
/// memory on those of 64 KB.
[[nodiscard]] bool hasLongWord(const QByteArray& text, int longest);

/// The field's value as the scene library writes it.
[[nodiscard]] QString fieldText(SoField& field);

/// Reads a text into the field. What is no value of the field leaves it as it was, and gives false.
bool setFieldText(SoField& field, const QString& text);

/// A mesh from the texts of a face set's vertexProperty field (a vertex property node, or the bare list of
/// its vertices) and its coordIndex field. Nothing when one of them is empty or unreadable, holds another
/// node, or when an index points behind the vertices.
[[nodiscard]] std::optional<MeshArrays> meshFromFieldTexts(const QString& vertices, const QString& indices);

/// Collects what the scene library's reader complains about while it lives, instead of printing it.
class SceneReadErrors {
  public:
    SceneReadErrors();
    ~SceneReadErrors();
    SceneReadErrors(const SceneReadErrors&) = delete;
    SceneReadErrors& operator=(const SceneReadErrors&) = delete;

    /// The first complaint, without line feeds; empty when there was none.
    [[nodiscard]] QString text() const { return text_; }

  private:
    static void handle(const class SoError* error, void* collector);
    QString text_;
    void (*previous_)(const class SoError*, void*) = nullptr;
    void* previousData_ = nullptr;
};
