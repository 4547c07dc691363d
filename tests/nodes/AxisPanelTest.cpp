#include "machine/AxisPanel.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <limits>

#include "nodes/NodesTestSupport.h"

namespace {

class AxisPanelTest : public ::testing::Test {
  protected:
    template <typename Widget>
    [[nodiscard]] static Widget* child(QWidget* panel, const char* name) {
        auto* widget = panel->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    NodesInstallation installation_;
    Held<numericalAxis> axis_{makeAxis(QStringLiteral("Z"), QStringLiteral("LINEAR"))};
};

}  // namespace

TEST_F(AxisPanelTest, TextsComeFromTheLanguageTable) {
    QWidget* panel = axis_->operationPanel();
    EXPECT_EQ(axis_->operationPanel(), panel);
    EXPECT_EQ(child<QCheckBox>(panel, "Visiable")->text(), QStringLiteral("Visible"));
    EXPECT_EQ(child<QGroupBox>(panel, "OperationPanle")->title(), QStringLiteral("Axis operation"));
    EXPECT_EQ(child<QRadioButton>(panel, "TranslateAxis")->text(), QStringLiteral("Move by hand"));
    EXPECT_EQ(panel->findChild<QPushButton*>(QStringLiteral("AxisInfo")), nullptr);
}

TEST_F(AxisPanelTest, EscapeClosesAWindowButNotAPartOfOne) {
    QWidget* window = axis_->manualWindow();
    window->show();
    QTest::keyClick(window->findChild<QLineEdit*>(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    QWidget host;
    QWidget* panel = axis_->operationPanel();
    panel->setParent(&host);
    panel->show();
    host.show();
    QTest::keyClick(panel, Qt::Key_Escape);
    EXPECT_TRUE(panel->isVisible());
    panel->setParent(nullptr);
}

TEST_F(AxisPanelTest, VisibleBoxHidesTheShape) {
    auto* box = child<QCheckBox>(axis_->operationPanel(), "Visiable");
    EXPECT_TRUE(box->isChecked());
    box->click();
    EXPECT_FALSE(axis_->isShapeVisible());
    box->click();
    EXPECT_TRUE(axis_->isShapeVisible());
}

TEST_F(AxisPanelTest, InformationButtonShowsTheBoxWhenTheSettingIsOn) {
    installation_.write(QStringLiteral("data.ini"), "[DebugFunction]\nIsShowAxisInfo=true\n");
    QString text;
    axis_->information(text);
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, QStringLiteral("Axis Info"), text);
    auto* button = child<QPushButton>(axis_->operationPanel(), "AxisInfo");
    EXPECT_EQ(button->text(), QStringLiteral("Axis Info"));
    button->click();
}

TEST_F(AxisPanelTest, AcceptOpensTheManualWindow) {
    child<QPushButton>(axis_->operationPanel(), "AcceptButton")->click();
    EXPECT_TRUE(axis_->manualWindow()->isVisible());
    EXPECT_EQ(axis_->manualWindow()->windowTitle(), QStringLiteral("Move axis Z by hand"));
}

TEST_F(AxisPanelTest, SliderCountsStepsAndMovesTheAxis) {
    axis_->setValue(12.5F);
    QWidget* window = axis_->manualWindow();
    auto* slider = child<QSlider>(window, "ValueSlider");
    auto* value = child<QLineEdit>(window, "Value");
    EXPECT_EQ(slider->minimum(), -100000);
    EXPECT_EQ(slider->maximum(), 250000);
    EXPECT_EQ(slider->value(), 12500);
    EXPECT_EQ(value->width(), 60);
    slider->setValue(30250);
    EXPECT_EQ(value->text(), QStringLiteral("30.25"));
    EXPECT_NEAR(axis_->currentValue(), 30.25, 1e-4);
}

TEST_F(AxisPanelTest, TypedTextMovesSliderAndAxisAndStaysAsTyped) {
    QWidget* window = axis_->manualWindow();
    auto* slider = child<QSlider>(window, "ValueSlider");
    auto* value = child<QLineEdit>(window, "Value");
    value->setText(QStringLiteral("1.2345"));
    EXPECT_EQ(value->text(), QStringLiteral("1.2345"));
    EXPECT_EQ(slider->value(), 1235);
    EXPECT_NEAR(axis_->currentValue(), 1.2345, 1e-5);
    for (const char* text : {"", "-", "many", "nan", "inf"}) {
        value->setText(QLatin1String(text));
        EXPECT_NEAR(axis_->currentValue(), 1.2345, 1e-5) << text;
    }
}

TEST_F(AxisPanelTest, ResetGoesHomeEvenWhenTheSliderIsThere) {
    QWidget* window = axis_->manualWindow();
    child<QSlider>(window, "ValueSlider")->setValue(5000);
    child<QPushButton>(window, "ResetButton")->click();
    EXPECT_NEAR(axis_->currentValue(), 0.0, 1e-6);
    axis_->setValue(77);
    child<QPushButton>(window, "ResetButton")->click();
    EXPECT_NEAR(axis_->currentValue(), 0.0, 1e-6);
}

TEST_F(AxisPanelTest, EqualLimitsMakeAnEmptyRange) {
    numericalAxisStruct record = axisRecord(QStringLiteral("U"), QStringLiteral("LINEAR"));
    record.lower = QStringLiteral("5");
    record.upper = QStringLiteral("5");
    const Held<numericalAxis> equal(makeAxis(record));
    auto* slider = child<QSlider>(equal->manualWindow(), "ValueSlider");
    EXPECT_EQ(slider->minimum(), 5000);
    EXPECT_EQ(slider->maximum(), 5000);
    record.lower = QStringLiteral("10");
    const Held<numericalAxis> crossed(makeAxis(record));
    slider = child<QSlider>(crossed->manualWindow(), "ValueSlider");
    EXPECT_EQ(slider->minimum(), slider->maximum());
}

TEST_F(AxisPanelTest, PanelsMayGoBeforeOrAfterTheAxis) {
    delete axis_->operationPanel();
    delete axis_->manualWindow();
    EXPECT_NE(axis_->operationPanel(), nullptr);
    EXPECT_NE(axis_->manualWindow(), nullptr);
}

TEST(SliderTicks, AreTruncatedAndHeldWithinAnInt) {
    EXPECT_EQ(sliderTicks(1.9999, 0.5), 3);
    EXPECT_EQ(sliderTicks(-1.9999, 0.5), -3);
    EXPECT_EQ(sliderTicks(1e300, 0.001), std::numeric_limits<int>::max());
    EXPECT_EQ(sliderTicks(-1e300, 0.001), -std::numeric_limits<int>::max());
    EXPECT_EQ(sliderTicks(std::numeric_limits<double>::quiet_NaN(), 0.001), 0);
}
