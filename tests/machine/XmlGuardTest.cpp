#include "machine/calc/XmlGuard.h"

#include <gtest/gtest.h>

#include <QTextCodec>

#include "support/TestSupport.h"

namespace {

std::optional<XmlError> errorOf(const QByteArray& bytes, const XmlBounds& bounds = {}) {
    QDomDocument document;
    return readXml(bytes, document, bounds);
}

QString textOf(const QByteArray& bytes) {
    return errorOf(bytes).value_or(XmlError{QStringLiteral("read"), 0, 0}).text;
}

QByteArray nested(int depth) {
    QByteArray open;
    QByteArray close;
    for (int i = 0; i < depth; ++i) {
        open += "<a>";
        close += "</a>";
    }
    return open + close;
}

}  // namespace

TEST(XmlGuard, EntityDeclarations_AreRefusedWithTheirPlace) {
    const QByteArray bomb =
        "<?xml version=\"1.0\"?>\n<!DOCTYPE lolz [\n <!ENTITY lol \"lol\">\n"
        " <!ENTITY lol2 \"&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;\">\n]>\n<lolz>&lol2;</lolz>";
    const std::optional<XmlError> error = errorOf(bomb);
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->text, QStringLiteral("entity declarations are not read"));
    EXPECT_EQ(error->line, 3);
    EXPECT_EQ(error->column, 2);
    EXPECT_EQ(textOf("<!DOCTYPE a [<!ENTITY % p SYSTEM 'file:///etc/passwd'>]><a/>"),
              QStringLiteral("entity declarations are not read"));
}

TEST(XmlGuard, DocumentTypeWithoutEntities_IsRead) {
    EXPECT_EQ(textOf("<!DOCTYPE a [<!ELEMENT a ANY>]><a/>"), QStringLiteral("read"));
    EXPECT_EQ(textOf("<!DOCTYPE a><a/>"), QStringLiteral("read"));
}

TEST(XmlGuard, EntityWordInsideCommentOrCharacterData_IsText) {
    EXPECT_EQ(textOf("<a><!-- <!ENTITY x 'y'> --></a>"), QStringLiteral("read"));
    EXPECT_EQ(textOf("<a><![CDATA[<!ENTITY x 'y'>]]></a>"), QStringLiteral("read"));
}

TEST(XmlGuard, Nesting_UpToTheBoundIsRead) {
    EXPECT_EQ(textOf(nested(100)), QStringLiteral("read"));
    EXPECT_EQ(textOf(nested(101)), QStringLiteral("elements nested deeper than 100"));
    // Deep enough to end a process that walks the tree recursively.
    EXPECT_EQ(textOf(nested(500000)), QStringLiteral("elements nested deeper than 100"));
    EXPECT_EQ(textOf(QByteArray("<a>").repeated(1000000)), QStringLiteral("elements nested deeper than 100"));
}

TEST(XmlGuard, NestingHiddenInUtf16_IsSeen) {
    const QString deep = QString::fromLatin1(nested(5000));
    for (const char* name : {"UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
        QTextCodec* codec = QTextCodec::codecForName(name);
        const std::unique_ptr<QTextEncoder> encoder(codec->makeEncoder());
        EXPECT_EQ(textOf(encoder->fromUnicode(QChar(QChar::ByteOrderMark) + deep)),
                  QStringLiteral("elements nested deeper than 100"))
            << name;
    }
}

TEST(XmlGuard, SiblingsAndQuotedSigns_AreNoNesting) {
    EXPECT_EQ(textOf("<r>" + QByteArray("<a b='>'/><c d=\"/>\"></c>").repeated(1000) + "</r>"),
              QStringLiteral("read"));
    EXPECT_EQ(textOf("<r>" + QByteArray("<!-- <a> --><?p <a> ?><![CDATA[<a>]]>").repeated(200) + "</r>"),
              QStringLiteral("read"));
}

TEST(XmlGuard, TooMuchOfAnything_IsRefused) {
    EXPECT_EQ(textOf(QByteArray(5 << 20, ' ')), QStringLiteral("larger than 4194304 bytes"));
    EXPECT_EQ(textOf("<r>" + QByteArray("<a/>").repeated(100001) + "</r>"),
              QStringLiteral("more than 100000 elements"));
    QByteArray attributes;
    for (int i = 0; i < 20000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(textOf("<r" + attributes + "/>"), QStringLiteral("a tag of more than 65536 characters"));
    const std::optional<XmlError> error = errorOf("<r>\n <a b=''/></r>", {1000, 10, 10, 4});
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->line, 2);
    EXPECT_EQ(error->column, 2);
}

TEST(XmlGuard, LargestDocumentsWithinTheBounds_AreRead) {
    EXPECT_EQ(textOf("<r>" + QByteArray("<a/>").repeated(99998) + "</r>"), QStringLiteral("read"));
    QByteArray attributes;
    for (int i = 0; attributes.size() < 65000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(textOf("<r" + attributes + "/>"), QStringLiteral("read"));
}

TEST(XmlGuard, Encodings_FollowMarkAndDeclaration) {
    EXPECT_EQ(xmlText("<a>\xE4\xB8\xAD</a>"), QString::fromUtf8("<a>中</a>"));
    EXPECT_EQ(xmlText("\xEF\xBB\xBF<a/>"), QStringLiteral("<a/>"));
    EXPECT_EQ(xmlText("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"),
              QString::fromUtf8("<?xml version='1.0' encoding='ISO-8859-1'?><a>é</a>"));
    EXPECT_EQ(xmlText("<?xml version='1.0' encoding = \"nonsense\"?><a/>"),
              QStringLiteral("<?xml version='1.0' encoding = \"nonsense\"?><a/>"));
    for (const QByteArray bytes : {"<?xml encoding", "<?xml encoding=?>", "<?xml encoding='?>", "<?xml ?>"})
        EXPECT_EQ(xmlText(bytes), QString::fromLatin1(bytes));
    QDomDocument document;
    EXPECT_FALSE(readXml("<?xml version='1.0' encoding='GB18030'?><a>\xD6\xD0</a>", document).has_value());
    EXPECT_EQ(document.documentElement().text(), QString::fromUtf8("中"));
}

TEST(XmlGuard, ParserFaults_KeepTheParsersTextAndPlace) {
    const std::optional<XmlError> error = errorOf("<r>\n<a>\n</b></r>");
    ASSERT_TRUE(error.has_value());
    QDomDocument document;
    QString text;
    int line = 0;
    int column = 0;
    ASSERT_FALSE(document.setContent(QStringLiteral("<r>\n<a>\n</b></r>"), &text, &line, &column));
    EXPECT_EQ(error->text, text);
    EXPECT_EQ(error->line, line);
    EXPECT_EQ(error->column, column);
}
