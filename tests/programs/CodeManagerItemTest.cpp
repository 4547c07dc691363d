#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "ProgramBench.h"
#include "core/ParaReader.h"
#include "items/IsoItem.h"
#include "items/UserTopItem.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "nc/calc/HeaderTail.h"
#include "nc/myTimer.h"
#include "nc/trajNode.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// A row of the program tree: its columns, marks, neighbours, and what is played of it.

namespace {

using TORNVALE::CodeManagerItem;
using TORNVALE::IsoItem;

constexpr int kName = CodeManagerItem::kNameColumn;
const QColor kWhite(255, 255, 255);
const QColor kYellow(255, 255, 0);
const QColor kRed(255, 0, 0);
const QColor kGreen(0, 255, 0);

QColor background(const QTreeWidgetItem& item, int column) {
    return item.background(column).color();
}

}  // namespace

TEST(CodeManagerItem, ShowsItselfInTheColumns) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    EXPECT_FALSE(item.icon(CodeManagerItem::kTypeColumn).isNull());
    EXPECT_EQ(item.text(kName), "userCodeItem0");
    EXPECT_EQ(item.checkState(kName), Qt::Checked);
    EXPECT_EQ(item.text(CodeManagerItem::kKindColumn), "Iso");
    EXPECT_EQ(item.text(CodeManagerItem::kToolColumn), bench.tool(0)->displayText());
    EXPECT_EQ(item.text(CodeManagerItem::kSystemColumn), "0");
    EXPECT_EQ(item.text(CodeManagerItem::kRpmColumn), "18000");
    EXPECT_EQ(item.text(CodeManagerItem::kLimitColumn), "Within limits");
    EXPECT_EQ(item.text(CodeManagerItem::kAuxiliaryColumn), "");
    EXPECT_EQ(background(item, CodeManagerItem::kLimitColumn), kGreen);
    EXPECT_EQ(background(item, kName), kWhite);
    EXPECT_EQ(item.textAlignment(CodeManagerItem::kToolColumn), int(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_EQ(item.flags(),
              Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled);
}

TEST(CodeManagerItem, TimeIsTheNumberOfLinesTimesThePeriod) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    const int lines = item.joinedCode().count('\n') + 1;
    EXPECT_GT(lines, 100);
    EXPECT_NEAR(item.record().Time, lines * 0.004, 1e-9);
}

TEST(CodeManagerItem, ItsPathStandsOnTheProgrammedPoints) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    WayPoints points;
    QVector<QVector<double>> read;
    item.pathNode()->extract_waypoints_from_string(item.IsoCode(), read);
    for (const QVector<double>& values : read) {
        WayPoint point;
        for (const double value : values)
            point.append(value);
        points.push_back(point);
    }
    item.toScene(points);
    ASSERT_FALSE(points.empty());
    // The body starts above (100, 100) and ends above (120, 120), on the work piece's height.
    EXPECT_NEAR(points.front()[0], 100, 0.002);
    EXPECT_NEAR(points.front()[1], 100, 0.002);
    EXPECT_NEAR(points.back()[0], 120, 0.002);
    EXPECT_NEAR(points.back()[1], 120, 0.002);
}

TEST(CodeManagerItem, OverTheLimitIsRedAndSaysSo) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left(), ProgramBench::square(5000));
    EXPECT_EQ(item.text(CodeManagerItem::kLimitColumn), "Over limit");
    EXPECT_EQ(background(item, CodeManagerItem::kLimitColumn), kRed);
    EXPECT_FALSE(item.isInLimits());
}

TEST(CodeManagerItem, UncheckedCountsAsInLimits) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left(), ProgramBench::square(5000));
    item.setChecked(false);
    EXPECT_TRUE(item.isInLimits());
    EXPECT_EQ(item.text(CodeManagerItem::kLimitColumn), "Within limits");
}

TEST(CodeManagerItem, UncheckingIsYellowAndHidesThePath) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    ASSERT_NE(item.pathNode(), nullptr);
    EXPECT_TRUE(item.pathNode()->isShown());
    item.setChecked(false);
    EXPECT_EQ(background(item, kName), kYellow);
    EXPECT_EQ(background(item, CodeManagerItem::kLimitColumn), kGreen);
    EXPECT_FALSE(item.pathNode()->isShown());
    item.setChecked(true);
    EXPECT_EQ(background(item, kName), kWhite);
    EXPECT_TRUE(item.pathNode()->isShown());
}

TEST(CodeManagerItem, WithoutCodeTurnsRedAndUnchecksItself) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    item.editIso().sourceCodeString = "G2 X50 Y50 R1";
    item.doIt();
    EXPECT_FALSE(item.isActive());
    for (int column = 0; column < CodeManagerItem::kColumnCount; ++column)
        EXPECT_EQ(background(item, column), kRed) << column;
    item.setChecked(true);
    EXPECT_FALSE(item.isActive()) << "an item without code takes no part";
}

TEST(CodeManagerItem, ManyFailuresInARowEndWithoutRecursion) {
    ProgramBench bench;
    QVector<IsoItem*> items;
    for (int i = 0; i < 40; ++i)
        items.append(&bench.add(bench.left()));
    for (IsoItem* item : items)
        item->editIso().sourceCodeString = "G2 X50 Y50 R1";
    items[0]->doIt();
    for (const IsoItem* item : items)
        EXPECT_FALSE(item->isActive());
}

TEST(CodeManagerItem, NeighboursAreCheckedAndOfTheSameChain) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    IsoItem& second = bench.add(bench.left());
    IsoItem& third = bench.add(bench.left());
    EXPECT_EQ(third.previousActive(), &second);
    EXPECT_EQ(first.nextActive(), &second);
    EXPECT_EQ(first.previousActive(), nullptr);
    second.setChecked(false);
    EXPECT_EQ(third.previousActive(), &first);
    EXPECT_EQ(first.nextActive(), &third);
    first.editRecord().Chain = "X->Z";
    EXPECT_EQ(third.previousActive(), nullptr);
}

TEST(CodeManagerItem, TheNextItemTakesTheShortestWayOfAxisFive) {
    ProgramBench bench;
    const IsoItem& first = bench.add(bench.left(), ProgramBench::square(100, 100, 170));
    const IsoItem& second = bench.add(bench.left(), ProgramBench::square(200, 100, -170));
    EXPECT_NEAR(first.exitFifth(), 170, 1e-9);
    EXPECT_NEAR(second.previousFifth(), 170, 1e-9);
    EXPECT_NEAR(second.exitFifth(), 190, 1e-9) << "20 degrees on, not 340 back";
}

TEST(CodeManagerItem, ToolChange_TheFirstItemNeedsOneButSaysNothing) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    QString text;
    EXPECT_TRUE(item.IsToolChangeNeeded(text));
    EXPECT_EQ(text, "");
}

TEST(CodeManagerItem, ToolChange_BehindTheFirstItemOnlyIsNone) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(), 0);
    const IsoItem& item = bench.add(bench.left(), ProgramBench::square(), 1);
    QString text;
    EXPECT_FALSE(item.IsToolChangeNeeded(text));
}

TEST(CodeManagerItem, ToolChange_NamesTheToolBeforeInTenLines) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(), 0);
    bench.add(bench.left(), ProgramBench::square(), 1);
    const IsoItem& item = bench.add(bench.left(), ProgramBench::square(), 2);
    QString text;
    EXPECT_TRUE(item.IsToolChangeNeeded(text));
    EXPECT_EQ(text, QString("M6 T2\n").repeated(10));
    const QString action = item.GetToolChangeActionString();
    EXPECT_TRUE(action.startsWith(text));
    EXPECT_TRUE(action.contains(QString("M6 T3\n").repeated(10) + QString("M3 S18000\n").repeated(10) +
                                QString("(DLY,1)\n").repeated(10)));
}

TEST(CodeManagerItem, ToolChange_NoneForTheSameToolAnUncheckedOneOrASpindleWithoutChanger) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(), 0);
    IsoItem& second = bench.add(bench.left(), ProgramBench::square(), 1);
    const IsoItem& same = bench.add(bench.left(), ProgramBench::square(), 1);
    const IsoItem& saw = bench.add(bench.left(), ProgramBench::square(), 4);
    QString text;
    EXPECT_FALSE(same.IsToolChangeNeeded(text));
    EXPECT_FALSE(saw.IsToolChangeNeeded(text));
    second.setChecked(false);
    EXPECT_FALSE(same.IsToolChangeNeeded(text));
    EXPECT_EQ(text, "");
}

TEST(CodeManagerItem, RotationIsTheIdentityWithoutAxisFourOrFive) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    item.editRecord().Fourth = 90;
    EXPECT_FALSE(item.rotationMatrix() == SbMatrix::identity());
    item.editRecord().Chain = "X->Z;Y";
    item.editRecord().Fifth = 30;
    EXPECT_TRUE(item.rotationMatrix() == SbMatrix::identity());
}

TEST(CodeManagerItem, AToolListWithoutItsToolLeavesItUntouched) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left(), ProgramBench::square(), 2);
    const QString code = item.IsoCode();
    const LogCapture log;
    item.UpdateToolList({bench.tool(0)});
    EXPECT_TRUE(log.contains("tool not found.will keep last tool"));
    EXPECT_EQ(item.tool().record().toolNo, 3);
    EXPECT_EQ(item.IsoCode(), code);
}

TEST(CodeManagerItem, AChangedToolOfItsNumberAndSpindleRegeneratesIt) {
    ProgramBench bench;
    IsoItem& mill = bench.add(bench.left(), ProgramBench::square(), 0);
    IsoItem& saw = bench.add(bench.left(), ProgramBench::square(), 4);
    const QString before = mill.IsoCode();
    bench.tool(0)->record().length += 10;
    TORNVALE::ToolsManager::instance().notifyObservers();
    EXPECT_NE(mill.IsoCode(), before);
    EXPECT_EQ(saw.tool().record().spindleNo, 2) << "tool numbers start anew on every spindle";
}

TEST(CodeManagerItem, TheToolsChainDecidesWhenItHasOne) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    ToolData tool(*bench.tool(0));
    tool.record().installationName = "X->Z->C->A";
    item.SetTool(&tool, false);
    EXPECT_EQ(item.chainName(), "X->Z->C->A;Y");
    tool.record().installationName = "not there";
    item.SetTool(&tool, false);
    EXPECT_EQ(item.chainName(), "");
    tool.record().installationName = "A";
    item.SetTool(&tool, false);
    EXPECT_EQ(item.chainName(), bench.left().chain());
    IsoItem alone;
    EXPECT_FATAL(alone.SetTool(&tool, false), "parent is not UserTopItem");
}

TEST(CodeManagerItem, AMovedUserCoordinateSystemTakesItsProgramsAlong) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const QString before = item.IsoCode();
    userCoordinateSystem* system = bench.machine().findWorkCoordinateSystem("G54")->userCoordinateSystem(0);
    system->setTranslation(SbVec3f(50, 0, 0));
    EXPECT_NE(item.IsoCode(), before);
    EXPECT_EQ(item.record().UserCoordinate, SbVec3f(50, 0, 0));
}

TEST(CodeManagerItem, ChangingTheSystemMovesThePath) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    userCoordinateSystem* second = bench.addSystem();
    ASSERT_NE(second, nullptr);
    item.refreshUserCoordinateIds();
    item.changeUserCoordinateSystem(second->id());
    EXPECT_EQ(item.pathNode(), nullptr);
    EXPECT_EQ(item.record().lastUserCoordinateSystemId, 0);
    item.refresh();
    ASSERT_NE(item.pathNode(), nullptr);
    EXPECT_EQ(item.pathNode()->parentSystem(), second);
}

TEST(CodeManagerItem, TheAnimationIsTheWayInTheBodyAndTheWayOut) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    IsoItem& second = bench.add(bench.left(), ProgramBench::square(300));
    const QString alone = first.GetAnimationText();
    EXPECT_TRUE(alone.contains(first.IsoCode()));
    const int body = alone.indexOf(first.IsoCode());
    EXPECT_GT(body, 0) << "the way from the header comes first";
    EXPECT_GT(alone.size(), body + first.IsoCode().size()) << "the way out comes last";
    EXPECT_FALSE(alone.contains("\n\n"));
    const QString behind = second.GetAnimationText();
    EXPECT_TRUE(behind.contains(second.IsoCode()));
    EXPECT_FALSE(behind.contains(first.IsoCode()));
}

TEST(CodeManagerItem, TheAnimationWithoutAGroupIsFatal) {
    ProgramBench bench;
    const IsoItem alone;
    EXPECT_FATAL(static_cast<void>(alone.GetAnimationText()), "parent is nullptr.");
    EXPECT_EQ(alone.GetToolChangeActionString(), "");
}

TEST(CodeManagerItem, PlayingMountsTheToolAndOpensThePlayback) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left(), ProgramBench::square(), 1);
    item.play();
    TORNVALE::myTimer& playback = TORNVALE::myTimer::instance();
    EXPECT_TRUE(playback.isVisible());
    EXPECT_GT(playback.lineCount(), 100);
    EXPECT_EQ(bench.machine().findSpindle(1)->tool().record().toolNo, 2);
    playback.close();
    item.setChecked(false);
    item.play();
    EXPECT_FALSE(playback.isVisible()) << "only what is checked is played";
}

TEST(CodeManagerItem, WritesItsCommonBlock) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const QString path = ProgramBench::installation().file("item.txt");
    ExpectedDialogs dialogs;
    dialogs.answerFile(path);
    item.WriteTo();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject block = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_EQ(block["DisplayName"].toString(), "Iso");
    EXPECT_EQ(block["Type"].toInt(), 1001);
    EXPECT_EQ(block["IsoCode"].toString(), item.IsoCode());
    EXPECT_EQ(block["Translation"].toString(), "0.000 0.000 0.000");
    EXPECT_EQ(block["Tool"].toObject()["ToolNo"].toInt(), 1);
    dialogs.answerFile({});
    item.WriteTo();
    const LogCapture log;
    dialogs.answerFile(ProgramBench::installation().path());
    item.WriteTo();
    EXPECT_TRUE(log.contains("The file could not be written."));
}
