#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QTest>
#include <memory>

#include "core/LanguageReader.h"
#include "items/CodePanel.h"
#include "items/CodeView.h"
#include "support/TestSupport.h"

/// "G1 X0 Y0", "G1 X1 Y0" and so on; every hundredth line is "M3 S12000".
inline QString program(int lines) {
    QString text;
    for (int i = 0; i < lines; ++i)
        text += i % 100 == 99 ? QStringLiteral("M3 S12000\n") : QStringLiteral("G1 X%1 Y0\n").arg(i);
    return text;
}

/// The panel in a window of its own, with the shipped English texts.
class CodePanelWindow : public ::testing::Test {
  protected:
    void SetUp() override {
        QFile english(shippedInstallation() + "/language/english.json");
        ASSERT_TRUE(english.open(QIODevice::ReadOnly));
        installation_.write("language/english.json", english.readAll());
        installation_.write("data.ini", "[MainInterface]\nLanguage=English\n");
        TORNVALE::LanguageReader::instance().reload();
        panel_ = std::make_unique<CodePanel>();
        panel_->resize(340, 500);
    }

    void show() {
        panel_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(panel_.get()));
        panel_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
        view().setFocus();
        QApplication::processEvents();
    }
    CodePanel& panel() { return *panel_; }
    CodeView& view() { return part<CodeView>("CodeView"); }
    template <class Part>
    Part& part(const char* name) {
        return *panel_->findChild<Part*>(QLatin1String(name));
    }
    QString status() { return part<QLabel>("LineStatus").text(); }
    QString message() { return part<QLabel>("SearchMessage").text(); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QRect place = view().visualRect(view().model()->index(row, 0));
        QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers,
                          {place.left() + 120, place.center().y()});
    }
    void key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code), modifiers);
    }
    void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text)); }
    /// The ground of a row at its right end.
    QColor groundOf(int row) {
        const QRect place = view().visualRect(view().model()->index(row, 0));
        return view().viewport()->grab().toImage().pixelColor(place.right() - 2, place.center().y());
    }
    void waitForFollowing() { QTest::qWait(120); }

  private:
    TemporaryInstallation installation_;
    std::unique_ptr<CodePanel> panel_;
};
