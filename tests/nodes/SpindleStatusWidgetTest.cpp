#include "machine/SpindleStatusWidget.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPropertyAnimation>
#include <QPushButton>

#include "machine/breathingLight.h"
#include "nodes/NodesTestSupport.h"

TEST(SpindleStatusWidget, EditsAreNamedAfterTheirKeys) {
    const NodesInstallation installation;
    const SpindleStatusWidget widget;
    const QStringList keys{QStringLiteral("Name"),    QStringLiteral("Id"),      QStringLiteral("ToolNo"),
                           QStringLiteral("ToolLen"), QStringLiteral("ToolDia"), QStringLiteral("Rpm")};
    const QList<QLineEdit*> edits = widget.findChildren<QLineEdit*>();
    ASSERT_EQ(edits.size(), keys.size());
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(edits[i]->objectName(), keys[i]);
        EXPECT_EQ(edits[i]->height(), 20);
    }
    EXPECT_EQ(edits[3]->placeholderText(), QStringLiteral("Tool length"));
    EXPECT_EQ(widget.findChild<QLabel*>(QStringLiteral("State"))->text(), QStringLiteral("State"));
}

TEST(SpindleStatusWidget, EachEditStandsBelowItsCaptionAndARowFitsBesideTheView) {
    const NodesInstallation installation;
    SpindleStatusWidget widget;
    widget.resize(420, 60);
    widget.show();
    EXPECT_LE(widget.width(), 420);
    for (const QLineEdit* edit : widget.findChildren<QLineEdit*>()) {
        const QLabel* caption = nullptr;
        for (const QLabel* label : widget.findChildren<QLabel*>()) {
            if (label->buddy() == edit)
                caption = label;
        }
        ASSERT_NE(caption, nullptr) << edit->objectName().toStdString();
        EXPECT_EQ(caption->text(), edit->placeholderText());
        EXPECT_LE(caption->geometry().bottom(), edit->geometry().top());
        EXPECT_EQ(caption->geometry().center().x(), edit->geometry().center().x());
    }
}

TEST(SpindleStatusWidget, ResetStopsTheLamp) {
    const NodesInstallation installation;
    SpindleStatusWidget widget;
    widget.showRunning(8000.6);
    EXPECT_EQ(widget.findChild<QLineEdit*>(QStringLiteral("Rpm"))->text(), QStringLiteral("8001"));
    widget.findChild<QPushButton*>(QStringLiteral("Reset"))->click();
    EXPECT_EQ(widget.lamp()->color(), widget.lamp()->red);
    EXPECT_FALSE(widget.lamp()->isBreathing());
    EXPECT_EQ(widget.findChild<QLineEdit*>(QStringLiteral("Rpm"))->text(), QStringLiteral("0"));
}

TEST(BreathingLight, AnimationIsTwoSecondsForEver) {
    const breathingLight lamp;
    EXPECT_EQ(lamp.size(), QSize(20, 20));
    EXPECT_EQ(lamp.opacity(), 1.0);
    EXPECT_EQ(lamp.color(), lamp.red);
    EXPECT_FALSE(lamp.isBreathing());
    const QPropertyAnimation& animation = lamp.animation();
    EXPECT_EQ(animation.propertyName(), QByteArray("opacity"));
    EXPECT_EQ(animation.duration(), 2000);
    EXPECT_EQ(animation.startValue().toDouble(), 1.0);
    EXPECT_EQ(animation.endValue().toDouble(), 0.1);
    EXPECT_EQ(animation.loopCount(), -1);
    EXPECT_EQ(animation.easingCurve().type(), QEasingCurve::InOutQuad);
}

TEST(BreathingLight, PaintsABallOfItsColour) {
    breathingLight lamp;
    lamp.showRunning();
    lamp.showChecked();
    lamp.showRunning();
    lamp.setOpacity(1.0);
    QImage picture(20, 20, QImage::Format_ARGB32);
    picture.fill(Qt::black);
    lamp.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    const QColor middle = picture.pixelColor(10, 10);
    EXPECT_GT(middle.green(), 200);
    EXPECT_LT(middle.red(), 100);
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::black));
    lamp.showStopped();
    lamp.setOpacity(0.1);
    picture.fill(Qt::black);
    lamp.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    EXPECT_LT(picture.pixelColor(10, 10).red(), 60);
    EXPECT_GT(picture.pixelColor(10, 10).red(), 5);
}
