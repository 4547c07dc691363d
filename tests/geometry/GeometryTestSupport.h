#pragma once

#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QByteArray>
#include <QString>
#include <QVector>
#include <array>
#include <iosfwd>

#include "geometry/ModelCarrier.h"
#include "geometry/calc/MeshArrays.h"
#include "support/TestSupport.h"

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds the printer by this name.
void PrintTo(const SbVec3f& vector, std::ostream* out);

using Triangle = std::array<SbVec3f, 3>;

/// The bytes of STL files, written without the library under test.
[[nodiscard]] QByteArray binaryStl(const QVector<Triangle>& triangles);
[[nodiscard]] QByteArray textStl(const QVector<QVector<Triangle>>& solids);

/// The head of a binary file that claims `count` triangles, and no triangle behind it.
[[nodiscard]] QByteArray stlClaiming(quint32 count);

/// Two triangles in the plane z = 0.
[[nodiscard]] QVector<Triangle> twoTriangles();
/// Twelve triangles about the origin.
[[nodiscard]] QVector<Triangle> boxTriangles(const SbVec3f& halfSize);
[[nodiscard]] MeshArrays boxMesh(const SbVec3f& halfSize);

/// An installation with English texts for this folder's classes, the names of tree flags, and a texture.
class GeometryInstallation : public TemporaryInstallation {
  public:
    GeometryInstallation();
    /// Writes the file and gives its path.
    [[nodiscard]] QString stl(const QString& name, const QByteArray& content) const;
};

/// A node of the machine that carries models, with a chain and a pose of its own.
class FakeCarrier : public SoSeparator, public ModelCarrier {
  public:
    [[nodiscard]] CollisionTransform carrierTransform() const override { return transform; }
    [[nodiscard]] QStringList carrierChain() const override { return chain; }

    CollisionTransform transform = CollisionTransform::Identity();
    QStringList chain{QStringLiteral("Base"), QStringLiteral("Y")};

  protected:
    ~FakeCarrier() override = default;
};

/// One reference for as long as the test needs the node.
template <typename Node>
class Held {
  public:
    explicit Held(Node* node) : node_(node) {
        if (node_ != nullptr)
            node_->ref();
    }
    ~Held() {
        if (node_ != nullptr)
            node_->unref();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    Node* operator->() const { return node_; }
    [[nodiscard]] Node* get() const { return node_; }

  private:
    Node* node_;
};
