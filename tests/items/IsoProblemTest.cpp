#include "items/calc/IsoProblem.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

#include "support/TestSupport.h"

namespace {

Diagnostics warning(const QString& text, int line = 0) {
    Diagnostics diagnostics;
    diagnostics.add(Severity::Warning, text, line);
    return diagnostics;
}

/// All texts with which the conversion refuses a program, from its sources.
QStringList refusals() {
    static const QRegularExpression literal(
        "(?:refuse\\((?:diagnostics,\\s*)?|return )\"([a-zA-Z][^\"]+ [^\"]+)\"");
    QStringList texts;
    for (QDirIterator files(shippedInstallation() + "/../SourceCode/nc", {"Iso*.cpp", "GCode*.cpp"},
                            QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        EXPECT_EQ(file.open(QIODevice::ReadOnly), true);
        const QString source = QString::fromUtf8(file.readAll());
        for (auto match = literal.globalMatch(source); match.hasNext();)
            texts.append(match.next().captured(1));
    }
    return texts;
}

QJsonObject problems(const QString& language) {
    QFile file(shippedInstallation() + "/language/" + language + ".json");
    EXPECT_EQ(file.open(QIODevice::ReadOnly), true);
    return QJsonDocument::fromJson(file.readAll()).object()["IsoItem"].toObject()["Problem"].toObject();
}

}  // namespace

TEST(IsoProblem, EveryRefusalOfTheConversion_HasATextInAllLanguages) {
    const QStringList texts = refusals();
    EXPECT_GE(texts.size(), 12);
    for (const QString& text : texts) {
        const IsoProblem problem = isoProblem(warning(text, 7), "G1", false);
        EXPECT_EQ(problem.line, 7);
        EXPECT_EQ(problem.text, text);
        for (const char* language : {"english", "chinese", "russia"})
            EXPECT_GT(problems(language)[problem.key].toString().size(), 5)
                << language << ": " << text.toStdString();
    }
}

TEST(IsoProblem, ReasonsOfThePlanner_AreKnownByTheirBeginning) {
    EXPECT_EQ(isoProblem(warning("a feed of F0 moves nothing, expected more than 0"), "G1", true).key,
              QStringLiteral("FeedZero"));
    EXPECT_EQ(isoProblem(warning("way point 3 lies at 1e+10, expected at most 1000000000"), "G1", true).key,
              QStringLiteral("OutOfRange"));
}

TEST(IsoProblem, UnknownReason_KeepsItsTextWithoutAKey) {
    const IsoProblem problem = isoProblem(warning("something new", 3), "G1", false);
    EXPECT_EQ(problem.key, QString());
    EXPECT_EQ(problem.text, QStringLiteral("something new"));
    EXPECT_EQ(problem.isEmpty(), false);
}

TEST(IsoProblem, LastWarning_IsTheReason) {
    Diagnostics diagnostics = warning("the arc turns axes 4 and 5", 2);
    diagnostics.add(Severity::Warning, "the place is out of range", 9);
    diagnostics.add(Severity::Debug, "UPR Error.", 10);
    EXPECT_EQ(isoProblem(diagnostics, "G1", false).line, 9);
}

TEST(IsoProblem, WithoutAWarning_SourceAndPathDecide) {
    EXPECT_EQ(isoProblem({}, "", false).key, QStringLiteral("Empty"));
    EXPECT_EQ(isoProblem({}, QStringLiteral("\uFEFF \r\n\t"), false).key, QStringLiteral("Empty"));
    EXPECT_EQ(isoProblem({}, "M8", false).key, QStringLiteral("NoMove"));
    EXPECT_EQ(isoProblem({}, "G1 X1", true).key, QStringLiteral("NotTimed"));
    EXPECT_EQ(IsoProblem().isEmpty(), true);
}
