#include "geometry/FieldText.h"

#include <Inventor/SbString.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <cctype>
#include <clocale>
#include <memory>
#include <string>

namespace {

/// While it lives numbers have the "C" form. The scene library sees to that itself, but around each single
/// number, which makes a large mesh slow.
class PlainNumbers {
  public:
    PlainNumbers() : before_(std::setlocale(LC_NUMERIC, nullptr)) { std::setlocale(LC_NUMERIC, "C"); }
    ~PlainNumbers() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

  private:
    std::string before_;
};

/// The text as the scene library may read it; empty when it may not. To the library commas can be letters of
/// a name.
QByteArray readableText(const QString& text) {
    constexpr int kLongest = 1000;
    QByteArray bytes = text.toUtf8();
    if (!hasLongWord(bytes, kLongest))
        return bytes;
    bytes.replace(',', ", ");
    return hasLongWord(bytes, kLongest) ? QByteArray() : bytes;
}

/// A vertex property and nothing in it but values: no node inside that could open files, no connection.
bool isPlainVertexProperty(const QString& text) {
    return text.contains(QLatin1String("VertexProperty")) && text.count(QLatin1Char('{')) == 1 &&
           !text.contains(QLatin1Char('=')) && !text.contains(QLatin1String("USE"));
}

QVector<SbVec3f> valuesOf(const SoMFVec3f& field) {
    QVector<SbVec3f> values(field.getNum());
    std::copy_n(field.getValues(0), field.getNum(), values.begin());
    return values;
}

std::optional<QVector<SbVec3f>> verticesOf(const QString& text) {
    if (!text.contains(QLatin1Char('{'))) {
        SoMFVec3f list;
        if (!setFieldText(list, text))
            return std::nullopt;
        return valuesOf(list);
    }
    SoSFNode holder;
    if (!isPlainVertexProperty(text) || !setFieldText(holder, text))
        return std::nullopt;
    const auto* property = dynamic_cast<SoVertexProperty*>(holder.getValue());
    if (property == nullptr)
        return std::nullopt;
    return valuesOf(property->vertex);
}

}  // namespace

bool hasLongWord(const QByteArray& text, int longest) {
    int length = 0;
    for (const char c : text) {
        const bool isEnd =
            std::isspace(static_cast<unsigned char>(c)) != 0 || c == '[' || c == ']' || c == '{' || c == '}';
        length = isEnd ? 0 : length + 1;
        if (length > longest)
            return true;
    }
    return false;
}

QString fieldText(SoField& field) {
    const PlainNumbers plain;
    SbString text;
    field.get(text);
    return QString::fromUtf8(text.getString());
}

bool setFieldText(SoField& field, const QString& text) {
    const PlainNumbers plain;
    const SceneReadErrors quiet;
    const std::unique_ptr<SoField> value(static_cast<SoField*>(field.getTypeId().createInstance()));
    const QByteArray readable = readableText(text);
    if (readable.trimmed().isEmpty() || !value->set(readable.constData()))
        return false;
    field.copyFrom(*value);
    return true;
}

std::optional<MeshArrays> meshFromFieldTexts(const QString& vertices, const QString& indices) {
    const std::optional<QVector<SbVec3f>> points = verticesOf(vertices);
    SoMFInt32 list;
    if (!points || points->isEmpty() || !setFieldText(list, indices) || list.getNum() == 0)
        return std::nullopt;
    if (!indicesFit(list.getValues(0), list.getNum(), points->size()) || !allFinite(*points))
        return std::nullopt;
    MeshArrays mesh;
    mesh.vertices = *points;
    mesh.indices.resize(list.getNum());
    std::copy_n(list.getValues(0), list.getNum(), mesh.indices.begin());
    return mesh;
}

SceneReadErrors::SceneReadErrors()
    : previous_(SoReadError::getHandlerCallback()), previousData_(SoReadError::getHandlerData()) {
    SoReadError::setHandlerCallback(&SceneReadErrors::handle, this);
}

SceneReadErrors::~SceneReadErrors() {
    SoReadError::setHandlerCallback(previous_, previousData_);
}

void SceneReadErrors::handle(const SoError* error, void* collector) {
    auto* self = static_cast<SceneReadErrors*>(collector);
    if (self->text_.isEmpty())
        self->text_ = QString::fromUtf8(error->getDebugString().getString()).simplified();
}
