#include "machine/overStrock.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLayout>

#include "MachineSamples.h"
#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "support/TestSupport.h"

namespace {

// The class's own name, so that the tests of one class stand together.
// NOLINTNEXTLINE(readability-identifier-naming)
class overStrockTest : public ::testing::Test {
  protected:
    overStrockTest() {
        installation_.write("data.ini", "[MainInterface]\nLanguage=English\n");
        installation_.write("language/English.json",
                            R"({"AxisTitle": {"Name": "axis", "Lower": "from", "Upper": "to"}})");
        TORNVALE::LanguageReader::instance().reload();
        ConfigReader::instance().setDescription(fiveAxisMachine());
    }
    ~overStrockTest() override { ConfigReader::instance().setDescription(nullptr); }

  private:
    TemporaryInstallation installation_;
};

QStringList labelTexts(const QWidget& widget) {
    QStringList texts;
    for (int i = 0; i < widget.layout()->count(); ++i)
        texts.append(qobject_cast<QLabel*>(widget.layout()->itemAt(i)->widget())->text());
    return texts;
}

QColor background(const QLabel& label) {
    return label.palette().color(QPalette::Window);
}

AxisWidget* rowWidget(const overStrock& window, int row) {
    return qobject_cast<AxisWidget*>(window.layout()->itemAt(row + 1)->widget());
}

const QString kChain = QStringLiteral("X->Y->Z->C->A;V");

}  // namespace

TEST_F(overStrockTest, Window_HasTitleFlagsAndHead) {
    const overStrock window(kChain, {});
    EXPECT_EQ(window.windowTitle(), QStringLiteral("LimitedChecker"));
    EXPECT_EQ(window.windowFlags() & 0x40001, 0x40001);
    const Qt::WindowFlags buttons = Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint;
    EXPECT_EQ(window.windowFlags() & buttons, Qt::WindowCloseButtonHint);
    auto* title = qobject_cast<AxisTitle*>(window.layout()->itemAt(0)->widget());
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(labelTexts(*title), (QStringList{"axis", "from", "to"}));
}

TEST_F(overStrockTest, CodeWithinLimits_ShowsOneGreenRowPerAxisInIdOrder) {
    const overStrock window(kChain, QStringLiteral("X-1.5 A30"));
    EXPECT_FALSE(window.isExceeded());
    ASSERT_EQ(window.layout()->count(), 6) << "the auxiliary axis has no row";
    QString letters;
    for (int i = 0; i < 5; ++i)
        letters += labelTexts(*rowWidget(window, i)).first();
    EXPECT_EQ(letters, QStringLiteral("XYZCA"));
    EXPECT_EQ(labelTexts(*rowWidget(window, 0)), (QStringList{"X", "-1.5", "0"}));
    EXPECT_EQ(background(*rowWidget(window, 0)->minLabel()), QColor(Qt::green));
    EXPECT_EQ(background(*rowWidget(window, 0)->maxLabel()), QColor(Qt::green));
    EXPECT_TRUE(rowWidget(window, 0)->minLabel()->autoFillBackground());
}

TEST_F(overStrockTest, CodeOutsideLimits_PaintsTheSideThatLeavesThemRed) {
    const overStrock above(kChain, QStringLiteral("Y1234.5678\nY-5"));
    EXPECT_TRUE(above.isExceeded());
    EXPECT_EQ(labelTexts(*rowWidget(above, 1)), (QStringList{"Y", "0", "1234.57"}));
    EXPECT_EQ(background(*rowWidget(above, 1)->minLabel()), QColor(Qt::green));
    EXPECT_EQ(background(*rowWidget(above, 1)->maxLabel()), QColor(Qt::red));
    const overStrock below(kChain, QStringLiteral("Y-1000.5"));
    EXPECT_TRUE(below.isExceeded());
    EXPECT_EQ(background(*rowWidget(below, 1)->minLabel()), QColor(Qt::red));
    EXPECT_EQ(background(*rowWidget(below, 1)->maxLabel()), QColor(Qt::green));
}

TEST_F(overStrockTest, RowLabels_HaveTheSizeOfTheLetterLabel) {
    const overStrock window(kChain, {});
    const AxisWidget& row = *rowWidget(window, 0);
    EXPECT_EQ(row.letterLabel()->height(), 25);
    EXPECT_EQ(row.minLabel()->size(), row.letterLabel()->size());
    EXPECT_EQ(row.maxLabel()->size(), row.letterLabel()->size());
}

TEST_F(overStrockTest, SecondCheck_ReplacesTheRows) {
    overStrock window(kChain, QStringLiteral("X5000"));
    window.check(QStringLiteral("X5"));
    EXPECT_FALSE(window.isExceeded());
    EXPECT_EQ(window.layout()->count(), 6);
    EXPECT_EQ(window.findChildren<AxisWidget*>().size(), 5);
    EXPECT_EQ(labelTexts(*rowWidget(window, 0)), (QStringList{"X", "0", "5"}));
}

TEST_F(overStrockTest, InitialAxisLimits_FillsTheRowsAnew) {
    overStrock window(kChain, {});
    window.initialAxisLimits({{1, 'Z'}, {2, 'Q'}, {3, 'X'}});
    ASSERT_EQ(window.rows().size(), 1U);
    EXPECT_EQ(window.rows()[0].letter, QLatin1Char('Z'));
    EXPECT_EQ(window.rows()[0].lower, -1000);
    EXPECT_EQ(window.rows()[0].upper, 1000);
}

TEST_F(overStrockTest, BadDirection_EndsTheProcess) {
    auto machine = fiveAxisMachine();
    machine->numericalAxes[0]->direction = QStringLiteral("1 0");
    ConfigReader::instance().setDescription(std::move(machine));
    EXPECT_FATAL(overStrock(kChain, {}), "axis direction format error\\.");
}
