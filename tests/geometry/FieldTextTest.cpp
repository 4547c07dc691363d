#include "geometry/FieldText.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "GeometryTestSupport.h"
#include "geometry/ShapeGenerator.h"

namespace {

const QString kVertices = QStringLiteral("VertexProperty { vertex [ 0 0 0, 1 0 0, 0 1 0 ] }");
const QString kIndices = QStringLiteral("[ 0, 1, 2, -1 ]");

}  // namespace

TEST(FieldText, Number_ComesBack) {
    SoSFInt32 field;
    field = -3;
    EXPECT_EQ(fieldText(field), QStringLiteral("-3"));
    SoSFInt32 copy;
    EXPECT_EQ(setFieldText(copy, QStringLiteral("-3")), true);
    EXPECT_EQ(copy.getValue(), -3);
}

TEST(FieldText, TextThatIsNoValue_LeavesTheField) {
    SoSFInt32 field;
    field = 7;
    SoMFColor color;
    color.setValue(1, 0, 0);
    for (const char* text : {"", "  ", "x", "{", "[", "[[[[", "~", "Cube {}", "\x01\x02"}) {
        const LogCapture log;
        EXPECT_EQ(setFieldText(color, QString::fromUtf8(text)), false) << text;
        ASSERT_EQ(color.getNum(), 1);
        EXPECT_EQ(color[0], SbColor(1, 0, 0));
    }
    EXPECT_EQ(setFieldText(field, QStringLiteral("seven")), false);
    EXPECT_EQ(field.getValue(), 7);
}

TEST(FieldText, Mesh_IsReadFromAPropertyOrAList) {
    for (const QString& vertices :
         {kVertices, QStringLiteral("[ 0 0 0, 1 0 0, 0 1 0 ]"), QStringLiteral("DEF +0 ") + kVertices}) {
        const auto mesh = meshFromFieldTexts(vertices, kIndices);
        ASSERT_EQ(mesh.has_value(), true) << vertices.toStdString();
        EXPECT_EQ(mesh->vertices.size(), 3);
        EXPECT_EQ(mesh->vertices[1], SbVec3f(1, 0, 0));
        EXPECT_EQ(mesh->indices, (QVector<int>{0, 1, 2, -1}));
    }
}

// The scene library writes eight digits: what was read once is written the same from then on.
TEST(FieldText, MeshOfAFaceSet_ComesBackWithEightDigits) {
    std::mt19937 random(3);  // NOLINT(cert-msc51-cpp): the same meshes each time
    std::uniform_real_distribution<float> coordinate(-2000, 2000);
    MeshArrays mesh;
    for (int i = 0; i < 300; ++i) {
        mesh.vertices.append(SbVec3f(coordinate(random), coordinate(random), coordinate(random)));
        mesh.indices << i << (i + 1) % 300 << (i + 2) % 300 << -1;
    }
    const Held<SoIndexedFaceSet> faceSet(
        ShapeGenerator().createFaceSet(mesh.vertices, mesh.indices, nullptr));
    const QString written = fieldText(faceSet->vertexProperty);
    const auto back = meshFromFieldTexts(written, fieldText(faceSet->coordIndex));
    ASSERT_EQ(back.has_value(), true);
    ASSERT_EQ(back->vertices.size(), mesh.vertices.size());
    EXPECT_EQ(back->indices, mesh.indices);
    for (int i = 0; i < mesh.vertices.size(); ++i)
        ASSERT_LT((back->vertices[i] - mesh.vertices[i]).length(), 2e-4F) << "vertex " << i;
    const Held<SoIndexedFaceSet> again(
        ShapeGenerator().createFaceSet(back->vertices, back->indices, nullptr));
    EXPECT_EQ(fieldText(again->vertexProperty), written);
}

TEST(FieldText, HostileMesh_IsRefused) {
    const QStringList vertices{
        QString(),
        QStringLiteral("NULL"),
        QStringLiteral("Cube { }"),
        QStringLiteral("File { name \"/dev/zero\" }"),
        QStringLiteral("Separator { VertexProperty { vertex [ 0 0 0 ] } }"),
        QStringLiteral("VertexProperty { vertex 0 0 0 = USE x.y }"),
        QStringLiteral("VertexProperty { vertex [ 0 0 0, 1 0"),
        QStringLiteral("VertexProperty { }"),
        QStringLiteral("VertexProperty { ").repeated(100000),
        QStringLiteral("[ ]"),
        QStringLiteral("0 0"),
    };
    for (const QString& text : vertices)
        EXPECT_EQ(meshFromFieldTexts(text, kIndices).has_value(), false) << text.left(60).toStdString();
    for (const char* text :
         {"", "x", "[ 0, 1, 3, -1 ]", "[ 2147483647 ]", "[ 99999999999, 0, 1 ]", "[ 0, 1", "[ 0.5 ]", "[ ]"})
        EXPECT_EQ(meshFromFieldTexts(kVertices, QString::fromUtf8(text)).has_value(), false) << text;
}

TEST(FieldText, DamagedTexts_AreRefusedOrGiveAMeshWhoseIndicesFit) {
    std::mt19937 random(5);  // NOLINT(cert-msc51-cpp): the same texts each time
    const QString letters = QStringLiteral("{}[]-.,+0123456789eE \"#=~&|*DEFUSENULLVertexProperty\n\\");
    for (int round = 0; round < 2000; ++round) {
        QString vertices = kVertices;
        QString indices = kIndices;
        QString& target = round % 2 == 0 ? vertices : indices;
        for (int i = 0; i <= round % 5; ++i) {
            const auto at = static_cast<int>(random() % static_cast<unsigned>(target.size()));
            target[at] = letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        }
        const auto mesh = meshFromFieldTexts(vertices, indices);
        if (!mesh)
            continue;
        ASSERT_EQ(indicesFit(mesh->indices.constData(), mesh->indices.size(), mesh->vertices.size()), true)
            << vertices.toStdString() << " | " << indices.toStdString();
        ASSERT_EQ(allFinite(mesh->vertices), true) << vertices.toStdString();
    }
}

TEST(SceneReadErrors, Complaint_IsCollectedAndTheHandlerPutBack) {
    auto* const before = SoReadError::getHandlerCallback();
    {
        const SceneReadErrors errors;
        SoInput input;
        const std::string text = "#Inventor V2.1 ascii\nSeparator { Cube { width x } }";
        input.setBuffer(text.data(), text.size());
        EXPECT_EQ(SoDB::readAll(&input), nullptr);
        EXPECT_NE(errors.text(), QString());
    }
    EXPECT_EQ(SoReadError::getHandlerCallback(), before);
}
