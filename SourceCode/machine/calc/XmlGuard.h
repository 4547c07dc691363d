#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>
#include <QStringView>
#include <optional>

// XML from outside, read into a QDomDocument without letting the file decide how much memory or stack that
// takes. A document beyond the bounds is refused like one that is not well-formed: with a text and a place.

struct XmlError {
    QString text;
    int line = 0;    ///< 1-based, 0 when the whole document is meant
    int column = 0;  ///< 1-based, 0 when the whole document is meant
};

struct XmlBounds {
    qsizetype bytes = qsizetype{4} << 20;
    int depth = 100;                  ///< nested elements; the document tree is walked and freed recursively
    int markup = 100000;              ///< elements, comments and instructions together
    qsizetype tagLength = 64 * 1024;  ///< characters of one tag; the parser compares attributes pairwise
};

/// The characters of an XML file: by its byte order mark, else by the encoding that its declaration names,
/// else UTF-8. Bytes that the encoding does not know become U+FFFD.
[[nodiscard]] QString xmlText(const QByteArray& bytes);

/// The first place where `text` leaves `bounds` or declares an entity (entities are not read: a few lines
/// of them expand to any size). Says nothing about well-formedness.
[[nodiscard]] std::optional<XmlError> xmlBoundsError(QStringView text, const XmlBounds& bounds = {});

/// Reads `bytes` into `document`; nothing when that worked, otherwise why it did not, with the parser's own
/// text for a document that is not well-formed.
[[nodiscard]] std::optional<XmlError> readXml(const QByteArray& bytes, QDomDocument& document,
                                              const XmlBounds& bounds = {});
