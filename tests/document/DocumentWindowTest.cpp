#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>

#include "DocumentBench.h"
#include "core/RecentFiles.h"

// What the window shows of its document.

namespace {

struct Bench : DocumentBench {
    Bench() { open(); }

    QStringList recent() {
        for (const QMenu* menu : window().findChildren<QMenu*>()) {
            for (const QAction* action : menu->actions()) {
                if (action->objectName() != QLatin1String("RecentFile"))
                    continue;
                QStringList texts;
                for (const QAction* entry : action->menu()->actions())
                    texts << entry->text();
                return texts;
            }
        }
        return {};
    }
};

}  // namespace

TEST(DocumentWindow, TheTitleNamesTheDocument) {
    Bench bench;
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
    bench.load(DocumentBench::golden("current.tornvale"));
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - document");
    bench.saveAs("a.b.tornvale");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - a.b");
    {
        CollectedDialogs dialogs;
        bench.trigger("New");
        EXPECT_EQ(dialogs.asked.size(), 1);
    }
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
    EXPECT_EQ(bench.programs(), QStringList());
    bench.load("{");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
}

TEST(DocumentWindow, OpenedAndSavedDocumentsAreRecentOnes) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    bench.saveAs("copy.tornvale");
    EXPECT_EQ(bench.recent(),
              QStringList({"&1 " + bench.file("document.tornvale"), "&2 " + bench.file("copy.tornvale")}));
    bench.load("no json");
    EXPECT_EQ(bench.recent().size(), 2);
    bench.saveAs("none/job.tornvale");
    EXPECT_EQ(bench.recent().size(), 2) << "what failed is no recent document";
}

TEST(DocumentWindow, TheTemplateIsNeverOverwritten) {
    Bench bench;
    bench.discardWindow();
    const QByteArray golden = DocumentBench::golden("current.tornvale");
    bench.write("template.tornvale", golden);
    bench.settings("[UserData]\nTemplatePath=template.tornvale\n");
    {
        CollectedDialogs dialogs;
        bench.open();
        EXPECT_EQ(dialogs.asked.size(), 1) << "about the tools";
    }
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
    EXPECT_NE(bench.programs(), QStringList());
    CollectedDialogs dialogs;
    dialogs.saveTo = bench.file("mine.tornvale");
    bench.trigger("Save");
    EXPECT_EQ(dialogs.told, QStringList("The file was saved."));
    EXPECT_EQ(bench.bytes("template.tornvale"), golden);
    EXPECT_TRUE(bench.bytes("mine.tornvale").contains("Kitchen"));
}

TEST(DocumentWindow, ATemplateThatIsNoDocumentIsTold) {
    Bench bench;
    bench.discardWindow();
    bench.write("template.tornvale", "[]");
    bench.settings("[UserData]\nTemplatePath=template.tornvale\n");
    CollectedDialogs dialogs;
    bench.open();
    EXPECT_EQ(dialogs.told.size(), 1);
    EXPECT_EQ(bench.window().documentPath(), "");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
}

TEST(DocumentWindow, ADroppedProjectIsTheJob) {
    Bench bench;
    bench.write("dropped.tornvale", DocumentBench::golden("old.tornvale"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.file("dropped.tornvale"))});
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&bench.window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    CollectedDialogs dialogs;
    QDropEvent event(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&bench.window(), &event);
    EXPECT_EQ(bench.window().documentPath(), bench.file("dropped.tornvale"));
    EXPECT_EQ(bench.programs().filter("G54").size(), 2);
}

TEST(DocumentWindow, ImportingAnOldVersionKeepsNoPath) {
    Bench bench;
    bench.write("old.tornvale", DocumentBench::golden("old.tornvale"));
    CollectedDialogs dialogs;
    dialogs.openFrom = bench.file("old.tornvale");
    bench.trigger("ImportOldVersion");
    EXPECT_EQ(dialogs.told.size(), 1) << "it has been read";
    EXPECT_EQ(bench.programs().filter("G54").size(), 2);
    EXPECT_EQ(bench.window().documentPath(), "") << "it is saved as a document of its own";
    dialogs.told.clear();
    bench.write("bad.tornvale", "[");
    dialogs.openFrom = bench.file("bad.tornvale");
    bench.trigger("ImportOldVersion");
    EXPECT_EQ(dialogs.told.size(), 1);
    EXPECT_EQ(bench.programs().filter("G54").size(), 2) << "the job stays";
}
