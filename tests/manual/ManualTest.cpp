#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSettings>

#include "ZipEntry.h"
#include "app/batch/CommandLine.h"
#include "support/TestSupport.h"

namespace {

QString sourcePath(const QString& name) {
    return QStringLiteral(TORNVALE_SOURCES "/") + name;
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList chapterNames() {
    return QStringLiteral(TORNVALE_MANUAL_CHAPTERS).split(QLatin1Char(','));
}

QString chapter(const QString& name) {
    return QString::fromUtf8(bytesOf(sourcePath("docs/manual/" + name)));
}

QString wholeManual() {
    QString text;
    for (const QString& name : chapterNames())
        text += chapter(name) + QLatin1Char('\n');
    return text;
}

QList<QStringList> matches(const QString& text, const char* pattern) {
    QList<QStringList> found;
    const QRegularExpression expression(QString::fromUtf8(pattern), QRegularExpression::MultilineOption);
    for (auto match = expression.globalMatch(text); match.hasNext();)
        found.append(match.next().capturedTexts());
    return found;
}

QJsonObject englishTexts() {
    return QJsonDocument::fromJson(bytesOf(sourcePath("installation/language/english.json"))).object();
}

void collectTexts(const QJsonValue& value, QStringList& texts) {
    if (value.isString())
        texts.append(value.toString());
    for (const QJsonValue& child : value.toObject())
        collectTexts(child, texts);
}

/// All texts of the menus, by the title of their menu.
QMap<QString, QStringList> menuTexts() {
    QMap<QString, QStringList> menus;
    const QJsonObject window = englishTexts().value("Tornvale").toObject();
    const QJsonObject tree = englishTexts().value("TreeWidgetManager").toObject();
    for (const char* group : {"FileMenu", "SettingMenu", "OperationMenu", "AboutMenu", "DebugMenu"}) {
        const QJsonObject menu = window.value(QLatin1String(group)).toObject();
        QStringList texts;
        collectTexts(menu, texts);
        if (QLatin1String(group) == QLatin1String("OperationMenu"))
            texts << window.value("CodeDockWidget").toString()  // the dock brings its own entry
                  << tree.value("ContextMenu").toObject().value("AnimationAction").toString();
        menus.insert(menu.value("Title").toString(), texts);
    }
    return menus;
}

/// Keys of the entries that the window really has, by the group of their menu.
QList<QStringList> menuEntries() {
    const QString source = QString::fromUtf8(bytesOf(sourcePath("SourceCode/app/TornvaleMenus.cpp")));
    QList<QStringList> entries;
    QString group;
    for (const QStringList& found :
         matches(source, R"re(makeMenu\([a-zA-Z()]+,\s*"([A-Za-z]+)"|\{"([A-Za-z]+)", (?:"|nullptr))re")) {
        if (!found[1].isEmpty())
            group = found[1];
        else if (!group.isEmpty())
            entries.append({group, found[2]});
    }
    return entries;
}

QString titleOf(const QString& name) {
    const QList<QStringList> titles = matches(chapter(name), "^# (.+)$");
    EXPECT_EQ(titles.size(), 1) << name.toStdString() << ": a chapter has one title";
    return titles.value(0).value(1);
}

}  // namespace

TEST(Manual, EveryChapterOnDiskIsPartOfIt) {
    QStringList onDisk = QDir(sourcePath("docs/manual")).entryList({"*.md"}, QDir::Files, QDir::Name);
    onDisk.removeAll("README.md");
    EXPECT_EQ(chapterNames(), onDisk);
}

TEST(Manual, TheDocumentHasAllChapters) {
    const std::optional<QByteArray> document =
        zipEntry(bytesOf(QStringLiteral(TORNVALE_MANUAL)), "word/document.xml");
    ASSERT_TRUE(document);
    QString text = QString::fromUtf8(*document);
    text.replace("</w:p>", "\n").remove(QRegularExpression(QStringLiteral("<[^>]*>")));
    const QStringList paragraphs = text.split(QLatin1Char('\n'));
    for (const QString& name : chapterNames()) {
        const QString title = titleOf(name);
        int found = 0;
        for (const QString& paragraph : paragraphs)
            found += paragraph.endsWith(title) ? 1 : 0;
        EXPECT_GE(found, 1) << title.toStdString();
    }
}

TEST(Manual, EveryPictureIsThereAndInUse) {
    QStringList used;
    for (const QStringList& picture : matches(wholeManual(), R"(!\[[^\]]+\]\(([^)]+)\))")) {
        EXPECT_TRUE(QFileInfo(sourcePath("docs/manual/" + picture[1])).isFile()) << picture[1].toStdString();
        used.append(QFileInfo(picture[1]).fileName());
    }
    EXPECT_GE(used.size(), 5);
    qint64 size = 0;
    for (const QFileInfo& file : QDir(sourcePath("docs/manual/pictures")).entryInfoList({"*.png"})) {
        EXPECT_TRUE(used.contains(file.fileName())) << file.fileName().toStdString();
        size += file.size();
    }
    constexpr qint64 kMost_bytes = 3 << 20;
    EXPECT_LT(size, kMost_bytes) << "reduce the pictures";
}

TEST(Manual, EveryMenuEntryThatItNamesExists) {
    const QMap<QString, QStringList> menus = menuTexts();
    const QList<QStringList> entries = matches(wholeManual(), R"(\*\*([^*>|]+) > ([^*>|]+)\*\*)");
    EXPECT_GE(entries.size(), 20);
    for (const QStringList& entry : entries) {
        ASSERT_TRUE(menus.contains(entry[1])) << entry[0].toStdString();
        EXPECT_TRUE(menus[entry[1]].contains(entry[2])) << entry[0].toStdString();
    }
}

TEST(Manual, EveryMenuEntryIsInIt) {
    const QJsonObject window = englishTexts().value("Tornvale").toObject();
    const QString manual = chapter("02-main-window.md");
    const QList<QStringList> entries = menuEntries();
    EXPECT_GE(entries.size(), 20);
    for (const QStringList& entry : entries) {
        const QJsonObject menu = window.value(entry[0]).toObject();
        const QString text =
            "**" + menu.value("Title").toString() + " > " + menu.value(entry[1]).toString() + "**";
        EXPECT_TRUE(manual.contains(text)) << text.toStdString();
    }
}

TEST(Manual, EveryTextThatItQuotesIsOneOfTheProgram) {
    QStringList texts;
    collectTexts(englishTexts(), texts);
    // Texts that are the same in every language, and what the manual itself quotes.
    texts << "Optimal"
          << "Delete Items?"
          << "over limited."
          << "Item:"
          << "Not defined user post processor."
          << "Error"
          << "Useing.Can't be deleted"
          << ";";
    for (const QString& name : chapterNames()) {
        for (const QStringList& quoted : matches(chapter(name), R"re((?<![`>\w])"([^"]+)"(?!\w))re")) {
            const QString text = quoted[1].simplified();
            EXPECT_TRUE(texts.contains(text) || texts.contains(quoted[1]))
                << name.toStdString() << ": " << text.toStdString();
        }
    }
}

TEST(Manual, EveryPatternOfTheShippedPostProcessorIsExplained) {
    const QSettings shipped(sourcePath("installation/data.ini"), QSettings::IniFormat);
    const QString file = shipped.value("StatusPreProcessing/PostProcessor").toString();
    const QString xml = QString::fromUtf8(bytesOf(sourcePath("installation/" + file)));
    const QString job = chapter("07-job.md");
    const QList<QStringList> patterns = matches(xml, R"re(NickName="([^"]+)"[^>]*Prefix="([^"]*)")re");
    EXPECT_GE(patterns.size(), 4);
    for (const QStringList& pattern : patterns) {
        const QString row =
            QStringLiteral(R"(^ *\| %1 \|.*\| `%2` job `\.nc` \|$)").arg(pattern[1], pattern[2]);
        EXPECT_EQ(matches(job, row.toUtf8().constData()).size(), 1) << pattern[1].toStdString();
    }
}

TEST(Manual, EveryReasonOfARefusedProgramIsExplained) {
    const QJsonObject reasons = englishTexts().value("IsoItem").toObject().value("Problem").toObject();
    const QString messages = chapter("11-messages.md");
    EXPECT_GE(reasons.size(), 10);
    for (const QString& key : reasons.keys()) {
        const QString cell = "| \"" + reasons.value(key).toString() + "\" |";
        EXPECT_TRUE(key == QLatin1String("Line") || messages.contains(cell)) << key.toStdString();
    }
}

TEST(Manual, EveryBatchCommandIsInIt) {
    const QString chapterText = chapter("10-batch.md");
    const QString reference = QString::fromUtf8(bytesOf(sourcePath("docs/batch.md")));
    const QList<QStringList> commands = matches(batchHelp(), R"(^([a-z]+) (?:PROGRAM|CODE|PROJECT))");
    EXPECT_GE(commands.size(), 7);
    for (const QStringList& command : commands) {
        EXPECT_TRUE(chapterText.contains("| `" + command[1])) << command[1].toStdString();
        EXPECT_TRUE(reference.contains("| `" + command[1] + ' ')) << command[1].toStdString();
    }
}

TEST(Manual, EveryBatchOptionIsInTheReference) {
    const QString reference = QString::fromUtf8(bytesOf(sourcePath("docs/batch.md")));
    const QList<QStringList> options = matches(batchHelp(), R"(^  (--[a-z-]+))");
    EXPECT_GE(options.size(), 15);
    for (const QStringList& option : options)
        EXPECT_TRUE(reference.contains('`' + option[1])) << option[1].toStdString();
}

TEST(Manual, EveryShippedSettingIsExplained) {
    const QSettings shipped(sourcePath("installation/data.ini"), QSettings::IniFormat);
    const QString settings = chapter("09-settings.md");
    EXPECT_GE(shipped.allKeys().size(), 20);
    for (const QString& key : shipped.allKeys())
        EXPECT_TRUE(settings.contains('`' + key + '`')) << key.toStdString();
}

TEST(Manual, EverySettingThatItNamesIsShipped) {
    const QSettings shipped(sourcePath("installation/data.ini"), QSettings::IniFormat);
    const QList<QStringList> keys =
        matches(chapter("09-settings.md"), R"(^\| `([A-Za-z]+/[A-Za-z0-9]+)` \|)");
    EXPECT_GE(keys.size(), 10);
    for (const QStringList& key : keys)
        EXPECT_TRUE(shipped.contains(key[1])) << key[1].toStdString();
}

TEST(Manual, EveryMessageThatItExplainsIsOneOfTheProgram) {
    QStringList texts;
    collectTexts(englishTexts(), texts);
    const QList<QStringList> messages = matches(chapter("11-messages.md"), R"re(^\| "([^"]+)" \|)re");
    EXPECT_GE(messages.size(), 10);
    for (const QStringList& message : messages)
        EXPECT_TRUE(texts.contains(message[1])) << message[1].toStdString();
}

TEST(Manual, LinksLeadToItsChapters) {
    QStringList places;
    for (const QString& name : chapterNames())
        places.append(titleOf(name).toLower().replace(QLatin1Char(' '), QLatin1Char('-')));
    for (const QStringList& link : matches(wholeManual(), R"(\]\(#([^)]+)\))"))
        EXPECT_TRUE(places.contains(link[1])) << link[1].toStdString();
}

TEST(Docs, LinksLeadToFiles) {
    QStringList files{"README.md", "CHANGELOG.md"};
    for (const char* folder : {"docs", "docs/decisions"}) {
        for (const QString& name : QDir(sourcePath(QLatin1String(folder))).entryList({"*.md"}, QDir::Files))
            files << QLatin1String(folder) + QLatin1Char('/') + name;
    }
    EXPECT_GE(files.size(), 15);
    for (const QString& name : files) {
        const QDir folder = QFileInfo(sourcePath(name)).dir();
        for (const QStringList& link :
             matches(QString::fromUtf8(bytesOf(sourcePath(name))), R"(\]\(([^):#]+)\))"))
            EXPECT_TRUE(folder.exists(link[1])) << name.toStdString() << ": " << link[1].toStdString();
    }
}

TEST(Docs, DecisionsAreNumberedAndHaveTheirParts) {
    const QDir folder(sourcePath("docs/decisions"));
    int number = 0;
    for (const QString& name : folder.entryList({"*.md"}, QDir::Files, QDir::Name)) {
        const QString text = QString::fromUtf8(bytesOf(folder.filePath(name)));
        const QString label = QStringLiteral("%1").arg(++number, 3, 10, QLatin1Char('0'));
        EXPECT_TRUE(name.startsWith(label + '-')) << name.toStdString();
        EXPECT_TRUE(text.startsWith("# " + label + ": ")) << name.toStdString();
        for (const char* part : {"**Problem.**", "**Choice.**", "**Cost.**"})
            EXPECT_EQ(text.count(QLatin1String(part)), 1) << name.toStdString() << ' ' << part;
    }
    EXPECT_GE(number, 13);
}

TEST(UpdateMessage, IsOfTheVersionThatTheChangelogBeginsWith) {
    const QString notes = QString::fromUtf8(bytesOf(sourcePath("installation/updateMessage.md")));
    const QString changes = QString::fromUtf8(bytesOf(sourcePath("CHANGELOG.md")));
    const QString version = matches(changes, R"(^## ([0-9.]+))").value(0).value(1);
    ASSERT_FALSE(version.isEmpty());
    EXPECT_TRUE(notes.startsWith("# Tornvale " + version + '\n')) << version.toStdString();
    EXPECT_TRUE(QFileInfo(sourcePath("installation/Tornvale" + version + ".rc")).isFile());
}

TEST(ZipEntry, BytesThatAreNoArchiveHaveNoEntries) {
    EXPECT_EQ(zipEntry({}, "a"), std::nullopt);
    EXPECT_EQ(zipEntry("PK\x05\x06", "a"), std::nullopt);
    EXPECT_EQ(zipEntry(QByteArray("PK\x05\x06", 4) + QByteArray(18, '\xff'), "a"), std::nullopt);
}
