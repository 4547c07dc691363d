#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "ProgramBench.h"
#include "items/GenerationProgress.h"
#include "items/IsoEditor.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "nc/calc/HeaderTail.h"
#include "tools/ToolManager.h"

// A program group: its items, clipboard, regeneration and document.

namespace {

using TORNVALE::CodeManagerItem;
using TORNVALE::IsoItem;
using Kind = UserDialogs::Kind;

QStringList names(const UserTopItem& group) {
    QStringList list;
    for (const CodeManagerItem* item : group.items())
        list.append(item->itemName());
    return list;
}

QJsonArray clipboardItems() {
    const QJsonDocument document = QJsonDocument::fromJson(QGuiApplication::clipboard()->text().toUtf8());
    EXPECT_TRUE(document.isObject());
    return document.object()["class FormatItems"].toArray();
}

class CountingProgress : public TORNVALE::GenerationProgress {
  public:
    CountingProgress() { TORNVALE::GenerationProgress::set(this); }
    ~CountingProgress() override { TORNVALE::GenerationProgress::set(nullptr); }
    void begin(int count) override { announced += count; }
    bool step(const QString&) override { return ++steps <= allowed; }
    void end() override {}
    int announced = 0;
    int steps = 0;
    int allowed = 1000;
};

}  // namespace

TEST(UserTopItem, HasOneGroupForEachWorkCoordinateSystem) {
    ProgramBench bench;
    EXPECT_EQ(bench.left().text(0), "Left table");
    EXPECT_EQ(bench.left().text(1), "G54");
    EXPECT_EQ(bench.left().type(), 1005);
    EXPECT_EQ(bench.left().flags(),
              Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsDropEnabled);
    EXPECT_EQ(bench.left().chain(), "X->Z->C->A;Y");
    ASSERT_EQ(bench.left().headerTail()->headerTail.records().size(), 1U);
    EXPECT_FALSE(bench.left().headerTail()->headerTail.records()[0].header.isEmpty());
}

TEST(UserTopItem, WithoutToolsNothingIsMade) {
    ProgramBench bench;
    TORNVALE::ToolsManager::instance().removeInstalledTools();
    ExpectedDialogs dialogs;
    dialogs.expectTell(Kind::Warning, "Programs", "No tool is installed. Add a tool first.");
    EXPECT_EQ(bench.left().InsertIsoItem(nullptr), nullptr);
    EXPECT_EQ(bench.left().childCount(), 0);
}

TEST(UserTopItem, InsertStandsBeforeTheGivenItemAndOpensTheEditor) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    const CodeManagerItem* made = bench.left().InsertIsoItem(&first);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(bench.left().indexOfChild(const_cast<CodeManagerItem*>(made)), 0);
    EXPECT_EQ(made->itemName(), "userCodeItem1");
    EXPECT_EQ(made->chainName(), "X->Z->C->A;Y");
    EXPECT_TRUE(TORNVALE::IsoEditor::instance().isVisible());
    EXPECT_TRUE(made->isActive()) << "there is no code yet that could have failed";
}

TEST(UserTopItem, NamesAreTheNextFreeNumber) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.add(bench.left());
    EXPECT_EQ(names(bench.left()), (QStringList{"userCodeItem0", "userCodeItem1"}));
    EXPECT_EQ(bench.left().uniqueName(1003), "drillItem0");
}

TEST(UserTopItem, TheCheckMarkGoesToAllItems) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.add(bench.left());
    CountingProgress progress;
    bench.left().setCheckState(1, Qt::Unchecked);
    for (const CodeManagerItem* item : bench.left().items())
        EXPECT_FALSE(item->isActive());
    bench.left().setCheckState(1, Qt::Checked);
    for (const CodeManagerItem* item : bench.left().items())
        EXPECT_TRUE(item->isActive());
    EXPECT_LE(progress.steps, 4) << "each item generates once for all, not once for each before it";
}

TEST(UserTopItem, RemovesTheSelectedOnes) {
    ProgramBench bench;
    bench.add(bench.left()).setSelected(true);
    bench.add(bench.left());
    bench.add(bench.left()).setSelected(true);
    bench.left().removeSelected();
    EXPECT_EQ(names(bench.left()), QStringList{"userCodeItem1"});
}

TEST(UserTopItem, CopyTakesTheSelectedOnesOrAllCheckedOnes) {
    ProgramBench bench;
    bench.add(bench.left());
    IsoItem& second = bench.add(bench.left());
    IsoItem& third = bench.add(bench.left());
    third.setChecked(false);
    bench.left().copySelection();
    EXPECT_EQ(clipboardItems().size(), 2);
    second.setSelected(true);
    bench.left().copySelection();
    ASSERT_EQ(clipboardItems().size(), 1);
    EXPECT_EQ(clipboardItems()[0].toObject()["itemName"].toString(), "userCodeItem1");
}

TEST(UserTopItem, CutAndPasteMoveAnItemWithItsCode) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left(), ProgramBench::square(200));
    bench.add(bench.left());
    const QString code = first.WorkCode();
    first.setSelected(true);
    bench.left().cutSelection();
    EXPECT_EQ(bench.left().childCount(), 1);
    bench.right().paste(-1);
    ASSERT_EQ(bench.right().childCount(), 1);
    const CodeManagerItem* pasted = bench.right().items()[0];
    EXPECT_EQ(pasted->WorkCode(), QString(code).replace('Y', 'V'));
    EXPECT_EQ(pasted->chainName(), "X->Z->C->A;V");
    EXPECT_EQ(pasted->itemName(), "userCodeItem0");
    EXPECT_TRUE(pasted->LeadIn().contains('V'));
}

TEST(UserTopItem, PasteWithAnIndexStandsBeforeThatItem) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(200)).setSelected(true);
    bench.add(bench.left());
    bench.left().copySelection();
    bench.left().paste(1);
    EXPECT_EQ(names(bench.left()), (QStringList{"userCodeItem0", "userCodeItem2", "userCodeItem1"}));
}

TEST(UserTopItem, PasteOfOtherTextsDoesNothing) {
    ProgramBench bench;
    for (const char* text : {"", "{", "[1,2]", "{\"class FormatItems\":3}",
                             "{\"class FormatItems\":[1,\"x\",{\"type\":77}]}", "hello"}) {
        QGuiApplication::clipboard()->setText(QLatin1String(text));
        bench.left().paste(-1);
        EXPECT_EQ(bench.left().childCount(), 0) << text;
    }
}

TEST(UserTopItem, WritesAndReadsItsItems) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(200));
    bench.add(bench.left()).setChecked(false);
    bench.left().headerTail()->headerTail.record("X->Z->C->A;Y")->header = "G1 X1Y2Z3C0A0F7000";
    const QJsonObject object = bench.left().Get();
    EXPECT_EQ(object.keys(), (QStringList{"G54", "class TORNVALE::HeaderTailManager"}));
    const QString code = bench.left().items()[0]->IsoCode();
    bench.left().clear();
    EXPECT_EQ(bench.left().childCount(), 0);
    bench.left().Set(object);
    ASSERT_EQ(names(bench.left()), (QStringList{"userCodeItem0", "userCodeItem1"}));
    EXPECT_EQ(bench.left().items()[0]->IsoCode(), code);
    EXPECT_TRUE(bench.left().items()[0]->isActive());
    EXPECT_FALSE(bench.left().items()[1]->isActive());
    EXPECT_EQ(bench.left().headerTail()->headerTail.record("X->Z->C->A;Y")->header, "G1 X1Y2Z3C0A0F7000");
    EXPECT_EQ(bench.left().Get(), object);
}

TEST(UserTopItem, OldBlocksAreKnownByTheirName) {
    ProgramBench bench;
    bench.add(bench.left());
    QJsonObject object = bench.left().Get();
    QJsonArray blocks = object["G54"].toArray();
    QJsonObject block = blocks[0].toObject();
    block.remove("type");
    object["G54"] = QJsonArray{block};
    bench.left().Set(object);
    EXPECT_EQ(bench.left().childCount(), 1);
}

TEST(UserTopItem, AnUnknownBlockIsToldAndWrittenBackInItsPlace) {
    ProgramBench bench;
    bench.add(bench.left());
    const QJsonObject object = bench.leftWithUnknownBlock(0);
    ExpectedDialogs dialogs;
    dialogs.expectTell(Kind::Warning, "Programs", "An unknown program item was skipped.\nlathe7");
    bench.left().Set(object);
    EXPECT_EQ(bench.left().childCount(), 1);
    EXPECT_EQ(bench.left().Get(), object);
}

// A box in the middle of the run would stand behind the progress dialog, whose Cancel gets its keys.
TEST(UserTopItem, UnknownBlocksAreToldWhenTheRunIsOver) {
    class Watcher final : public UserDialogs {
      public:
        Watcher() { setUserDialogs(this); }
        ~Watcher() override { setUserDialogs(nullptr); }
        Watcher(const Watcher&) = delete;
        Watcher& operator=(const Watcher&) = delete;
        void tell(Kind /*kind*/, const QString& /*title*/, const QString& text,
                  QWidget* /*parent*/) override {
            told.append(text);
            isWhileGenerating = isWhileGenerating || TORNVALE::GenerationRun::isAny();
        }
        QStringList told;
        bool isWhileGenerating = false;
    };
    ProgramBench bench;
    bench.add(bench.left());
    const QJsonObject object = bench.leftWithUnknownBlock();
    Watcher watcher;
    bench.left().Set(object);
    EXPECT_EQ(watcher.told.size(), 1);
    EXPECT_FALSE(watcher.isWhileGenerating);
}

TEST(UserTopItem, ReadingGeneratesEachItemOnce) {
    ProgramBench bench;
    for (int i = 0; i < 10; ++i)
        bench.add(bench.left());
    const QJsonObject object = bench.left().Get();
    CountingProgress progress;
    bench.left().Set(object);
    EXPECT_EQ(progress.announced, 10);
    EXPECT_EQ(progress.steps, 10);
}

TEST(UserTopItem, DerivedTextsAreTheEndsOfTheActiveItems) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    IsoItem& last = bench.add(bench.left(), ProgramBench::square(300));
    bench.left().refreshDerivedTexts();
    const HeaderTailRecord* record = bench.left().headerTail()->headerTail.record("X->Z->C->A;Y");
    EXPECT_EQ(record->itemHeader, first.LeadIn().section('\n', 0, 0));
    EXPECT_EQ(record->itemTail, last.LeadOut().trimmed().section('\n', -1));
    first.setChecked(false);
    bench.left().refreshDerivedTexts();
    EXPECT_EQ(record->itemHeader, last.LeadIn().section('\n', 0, 0));
}
