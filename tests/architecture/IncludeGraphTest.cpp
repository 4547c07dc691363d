#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QSet>
#include <QStringList>

#include "support/TestSupport.h"

// The rooms of the house: no header includes itself by a detour, calculation folders form no circle, and a
// calculation touches neither widgets nor scene nodes, settings, boxes or process-wide objects.

namespace {

using Includes = QMap<QString, QStringList>;

QString sourceRoot() {
    return QStringLiteral(TORNVALE_SOURCE_DIR "/SourceCode/");
}

QString includedFile(const QByteArray& line) {
    const QByteArray text = line.trimmed();
    if (!text.startsWith("#include"))
        return {};
    const int open = text.indexOf(text.contains('"') ? '"' : '<');
    const int close = text.lastIndexOf(text.contains('"') ? '"' : '>');
    return open < 0 || close <= open ? QString() : QString::fromUtf8(text.mid(open + 1, close - open - 1));
}

Includes readIncludes(const QStringList& patterns) {
    Includes graph;
    QDirIterator it(sourceRoot(), patterns, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        QStringList& includes = graph[file.fileName().mid(sourceRoot().size())];
        while (!file.atEnd()) {
            const QString name = includedFile(file.readLine());
            if (!name.isEmpty())
                includes << name;
        }
    }
    return graph;
}

/// A path that leads from `node` back into `trail`, or nothing.
QStringList findCycle(const Includes& graph, const QString& node, QStringList& trail, QSet<QString>& done) {
    if (trail.contains(node))
        return trail.mid(trail.indexOf(node)) << node;
    if (done.contains(node))
        return {};
    trail << node;
    for (const QString& next : graph.value(node)) {
        if (!graph.contains(next))
            continue;
        const QStringList cycle = findCycle(graph, next, trail, done);
        if (!cycle.isEmpty())
            return cycle;
    }
    trail.removeLast();
    done.insert(node);
    return {};
}

QString cycleOf(const Includes& graph) {
    QSet<QString> done;
    for (const QString& node : graph.keys()) {
        QStringList trail;
        const QStringList cycle = findCycle(graph, node, trail, done);
        if (!cycle.isEmpty())
            return cycle.join(QStringLiteral(" -> "));
    }
    return {};
}

bool isCalculation(const QString& file) {
    return file.contains(QStringLiteral("/calc/"));
}

}  // namespace

TEST(IncludeGraph, HeadersFormNoCircle) {
    const Includes graph = readIncludes({QStringLiteral("*.h")});
    ASSERT_GT(graph.size(), 20);
    EXPECT_EQ(cycleOf(graph), QString());
}

TEST(IncludeGraph, CalculationFoldersFormNoCircle) {
    const Includes files = readIncludes({QStringLiteral("*.h"), QStringLiteral("*.cpp")});
    Includes folders;
    for (auto it = files.begin(); it != files.end(); ++it) {
        if (!isCalculation(it.key()))
            continue;
        const QString folder = it.key().section(QLatin1Char('/'), 0, 0);
        for (const QString& included : it.value()) {
            const QString other = included.section(QLatin1Char('/'), 0, 0);
            if (isCalculation(included) && other != folder)
                folders[folder] << other;
        }
        folders[folder];
    }
    ASSERT_GE(folders.size(), 4);
    EXPECT_EQ(cycleOf(folders), QString());
}

TEST(IncludeGraph, CalculationsIncludeOnlyCalculations) {
    const Includes files = readIncludes({QStringLiteral("*.h"), QStringLiteral("*.cpp")});
    for (auto it = files.begin(); it != files.end(); ++it) {
        if (!isCalculation(it.key()))
            continue;
        for (const QString& included : it.value()) {
            const bool ours = included.contains(QLatin1Char('/')) && files.contains(included);
            EXPECT_TRUE(!ours || isCalculation(included))
                << it.key().toStdString() << " includes " << included.toStdString();
        }
    }
}

TEST(IncludeGraph, CalculationsTouchNoWidgetsNodesOrSettings) {
    const QStringList forbidden = {
        QStringLiteral("QWidget"),      QStringLiteral("QMessageBox"),  QStringLiteral("QSettings"),
        QStringLiteral("QApplication"), QStringLiteral("QDebug"),       QStringLiteral("QPixmap"),
        QStringLiteral("QDialog"),      QStringLiteral("QTreeWidget"),  QStringLiteral("QTimer"),
        QStringLiteral("QFileDialog"),  QStringLiteral("QElapsedTimer")};
    const Includes files = readIncludes({QStringLiteral("*.h"), QStringLiteral("*.cpp")});
    for (auto it = files.begin(); it != files.end(); ++it) {
        if (!isCalculation(it.key()))
            continue;
        for (const QString& included : it.value()) {
            EXPECT_FALSE(forbidden.contains(included))
                << it.key().toStdString() << ' ' << included.toStdString();
            EXPECT_FALSE(included.startsWith(QStringLiteral("Inventor/nodes/")))
                << it.key().toStdString() << ' ' << included.toStdString();
        }
    }
}
