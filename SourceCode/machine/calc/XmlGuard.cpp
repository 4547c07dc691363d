#include "machine/calc/XmlGuard.h"

#include <QTextCodec>

namespace {

XmlError errorAt(QStringView text, qsizetype position, QString message) {
    XmlError error{std::move(message), 1, 1};
    for (qsizetype i = 0; i < position; ++i) {
        const bool lineFeed = text[i] == u'\n';
        error.line += lineFeed ? 1 : 0;
        error.column = lineFeed ? 1 : error.column + 1;
    }
    return error;
}

/// Place behind the next `end` at or after `from`; the end of the text when there is none.
qsizetype behind(QStringView text, QLatin1String end, qsizetype from) {
    const qsizetype place = text.mid(from).indexOf(end);
    return place < 0 ? text.size() : from + place + end.size();
}

/// Place of the ">" that closes the tag at `from`: one inside a quoted value does not count.
qsizetype tagEnd(QStringView text, qsizetype from) {
    char16_t quote = 0;
    for (qsizetype i = from; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (quote != 0) {
            if (c == quote)
                quote = 0;
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (c == u'>') {
            return i;
        }
    }
    return text.size();
}

/// Walks the mark-up of a document, one tag, comment or instruction per step.
class MarkupScan {
  public:
    MarkupScan(QStringView text, const XmlBounds& bounds) : text_(text), bounds_(bounds) {}

    std::optional<XmlError> run() {
        for (qsizetype at = text_.indexOf(u'<'); at >= 0; at = text_.indexOf(u'<', next_)) {
            if (++markup_ > bounds_.markup)
                return errorAt(text_, at, QStringLiteral("more than %1 elements").arg(bounds_.markup));
            if (std::optional<XmlError> error = step(at))
                return error;
        }
        return std::nullopt;
    }

  private:
    std::optional<XmlError> step(qsizetype at) {
        const QStringView rest = text_.mid(at);
        if (rest.startsWith(QLatin1String("<!--"))) {
            next_ = behind(text_, QLatin1String("-->"), at + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            next_ = behind(text_, QLatin1String("]]>"), at + 9);
        } else if (rest.startsWith(QLatin1String("<?"))) {
            next_ = behind(text_, QLatin1String("?>"), at + 2);
        } else if (rest.startsWith(QLatin1String("<!ENTITY"))) {
            return errorAt(text_, at, QStringLiteral("entity declarations are not read"));
        } else if (rest.startsWith(QLatin1String("<!"))) {
            next_ = at + 2;  // a document type: its inner declarations are looked at one by one
        } else {
            return element(at);
        }
        return std::nullopt;
    }

    std::optional<XmlError> element(qsizetype at) {
        const qsizetype end = tagEnd(text_, at + 1);
        next_ = end;
        if (end - at > bounds_.tagLength)
            return errorAt(text_, at,
                           QStringLiteral("a tag of more than %1 characters").arg(bounds_.tagLength));
        const bool closing = at + 1 < text_.size() && text_[at + 1] == u'/';
        const bool closedAtOnce = text_[end - 1] == u'/';
        if (closing)
            --depth_;
        else if (!closedAtOnce && ++depth_ > bounds_.depth)
            return errorAt(text_, at, QStringLiteral("elements nested deeper than %1").arg(bounds_.depth));
        return std::nullopt;
    }

    QStringView text_;
    const XmlBounds& bounds_;
    qsizetype next_ = 0;
    int markup_ = 0;
    int depth_ = 0;
};

/// The name behind encoding= in the declaration at the start of a document; empty when there is none.
QByteArray declaredEncoding(const QByteArray& bytes) {
    if (!bytes.startsWith("<?xml"))
        return {};
    const QByteArray declaration = bytes.left(bytes.left(256).indexOf("?>"));
    int at = declaration.indexOf("encoding");
    if (at < 0)
        return {};
    at = declaration.indexOf('=', at) + 1;
    const QByteArray value = declaration.mid(at).trimmed();
    if (at == 0 || value.isEmpty() || (value[0] != '"' && value[0] != '\''))
        return {};
    return value.mid(1, value.indexOf(value[0], 1) - 1);
}

}  // namespace

QString xmlText(const QByteArray& bytes) {
    const QTextCodec* codec = QTextCodec::codecForUtfText(bytes, nullptr);
    if (codec == nullptr)
        codec = QTextCodec::codecForName(declaredEncoding(bytes));
    QString text = codec != nullptr ? codec->toUnicode(bytes) : QString::fromUtf8(bytes);
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    return text;
}

std::optional<XmlError> xmlBoundsError(QStringView text, const XmlBounds& bounds) {
    return MarkupScan(text, bounds).run();
}

std::optional<XmlError> readXml(const QByteArray& bytes, QDomDocument& document, const XmlBounds& bounds) {
    if (bytes.size() > bounds.bytes)
        return XmlError{QStringLiteral("larger than %1 bytes").arg(bounds.bytes), 0, 0};
    const QString text = xmlText(bytes);
    if (std::optional<XmlError> error = xmlBoundsError(text, bounds))
        return error;
    XmlError error;
    if (!document.setContent(text, &error.text, &error.line, &error.column))
        return error;
    return std::nullopt;
}
