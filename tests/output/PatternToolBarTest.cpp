#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QImage>
#include <QToolBar>
#include <QtTest/QTest>

#include "OutputTestSupport.h"
#include "core/LanguageReader.h"

using namespace TORNVALE;

namespace {

QByteArray twoPatterns() {
    return postProcessorFile(
        "OutputDir='nc'",
        "<Configulation Name='left' NickName='Left table' Image='left.png' Prefix='L_' Suffix='.nc'>"
        "<Coordinate>G54</Coordinate></Configulation>"
        "<Configulation Name='right' NickName='Right table' Prefix='R_'><Coordinate>G55</Coordinate>"
        "</Configulation>");
}

void click(QToolBar& bar, int index) {
    QWidget* const button = bar.widgetForAction(bar.actions().at(index));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
}

void expectNoPatternsBox(ExpectedDialogs& dialogs) {
    dialogs.expectTell(
        UserDialogs::Kind::Critical, "Error",
        "Not defined user post processor.\ncheck:data.ini->StatusPreProcessing->PostProcessor existed?");
}

}  // namespace

TEST(PatternToolBar, Patterns_AreCheckableActionsWithTextAndPicture) {
    OutputBench bench(twoPatterns());
    QFile language(shippedInstallation() + "/language/english.json");
    ASSERT_TRUE(language.open(QIODevice::ReadOnly));
    bench.write("language/english.json", language.readAll());
    LanguageReader::instance().reload();
    bench.write("UserPostProcessor/readme", "");
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(bench.file("UserPostProcessor/left.png")));

    const LogCapture log;
    QToolBar* const bar = bench.processor().GetToolBar();
    EXPECT_EQ(bench.processor().GetToolBar(), bar);  // made once
    EXPECT_EQ(bar->windowTitle(), QString("Post-processor"));
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    EXPECT_TRUE(log.contains("User post processor dir:"));
    EXPECT_TRUE(log.contains(bench.file("UserPostProcessor/")));
    ASSERT_EQ(bar->actions().size(), 2);
    EXPECT_EQ(bar->actions()[0]->text(), QString("Left table"));
    EXPECT_EQ(bar->actions()[0]->property("name").toString(), QString("left"));
    EXPECT_TRUE(bar->actions()[0]->isCheckable());
    EXPECT_FALSE(bar->actions()[0]->icon().pixmap(8, 8).isNull());
    EXPECT_EQ(bar->actions()[1]->property("name").toString(), QString("right"));
}

TEST(PatternToolBar, FirstPattern_IsChosenUntilAClickChoosesAnother) {
    OutputBench bench(twoPatterns());
    QToolBar* const bar = bench.processor().GetToolBar();
    bar->show();
    EXPECT_TRUE(bar->actions()[0]->isChecked());
    EXPECT_EQ(bench.processor().GetCoordinateList(), QStringList{"G54"});
    click(*bar, 1);
    EXPECT_TRUE(bar->actions()[1]->isChecked());
    EXPECT_FALSE(bar->actions()[0]->isChecked());  // exclusive
    EXPECT_EQ(bench.processor().chosenPattern(), QString("right"));
    EXPECT_EQ(bench.processor().GetCoordinateList(), QStringList{"G55"});
    click(*bar, 1);  // a second click leaves it
    EXPECT_EQ(bench.processor().pattern().attribute("Name"), QString("right"));
    click(*bar, 0);
    EXPECT_EQ(bench.processor().chosenPattern(), QString("left"));
}

TEST(PatternToolBar, ClickedPattern_IsWritten) {
    OutputBench bench(twoPatterns());
    QToolBar* const bar = bench.processor().GetToolBar();
    bar->show();
    click(*bar, 1);
    PlainGroup right("G55");
    right.add(kRight, "M4\n");
    right.setEnds(kRight, {}, {});
    const LogCapture log;
    QString out;
    bench.processor().ProcessGroups(out, {&right}, true);
    EXPECT_EQ(out, QString("\nM4\n"));
}

TEST(PatternToolBar, PatternChosenByName_IsCheckedInTheToolBar) {
    OutputBench bench(twoPatterns());
    EXPECT_FALSE(bench.processor().choosePattern("middle"));
    EXPECT_TRUE(bench.processor().choosePattern("right"));
    EXPECT_EQ(bench.processor().patternNames(), (QStringList{"left", "right"}));
    QToolBar* const bar = bench.processor().GetToolBar();
    EXPECT_TRUE(bar->actions()[1]->isChecked());
    EXPECT_TRUE(bench.processor().choosePattern("left"));
    EXPECT_TRUE(bar->actions()[0]->isChecked());
}

TEST(PatternToolBar, ToolBarThatItsWindowTookAlong_IsMadeAgainWithTheChoice) {
    OutputBench bench(twoPatterns());
    QToolBar* bar = bench.processor().GetToolBar();
    bar->actions()[1]->trigger();
    delete bar;
    bar = bench.processor().GetToolBar();
    ASSERT_EQ(bar->actions().size(), 2);
    EXPECT_TRUE(bar->actions()[1]->isChecked());
}

TEST(PatternToolBar, NoPatterns_AreToldOnce) {
    for (const char* xml : {"<root/>", "no XML", "<root><Configulations/></root>"}) {
        OutputBench bench(xml);
        ExpectedDialogs dialogs;
        expectNoPatternsBox(dialogs);
        EXPECT_TRUE(bench.processor().GetToolBar()->actions().isEmpty()) << xml;
        EXPECT_NE(bench.processor().GetToolBar(), nullptr);
    }
}

TEST(PatternToolBar, MissingFileOrSetting_IsToldToo) {
    OutputBench bench("<root/>");
    for (const char* lines :
         {"[StatusPreProcessing]\nPostProcessor=none.xml\n", "[StatusPreProcessing]\nPostProcessor=\n", ""}) {
        bench.settings(lines);
        bench.processor().reload();
        ExpectedDialogs dialogs;
        expectNoPatternsBox(dialogs);
        EXPECT_TRUE(bench.processor().GetToolBar()->actions().isEmpty()) << lines;
    }
}

TEST(OutputPath, PrefixAndSuffixOfThePattern_StandAroundTheDocumentsName) {
    OutputBench bench(twoPatterns());
    ASSERT_TRUE(bench.processor().choosePattern("left"));
    EXPECT_EQ(bench.processor().outputPath("/jobs/door.v2.tvp"), bench.file("nc/L_door.v2.nc"));
    ASSERT_TRUE(bench.processor().choosePattern("right"));
    EXPECT_EQ(bench.processor().outputPath("door.tvp"), bench.file("nc/R_door.nc"));  // suffix of the root
}
