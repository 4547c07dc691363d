#include "app/Tornvale.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextBrowser>
#include <iostream>

#include "InstallationCopy.h"
#include "core/LanguageReader.h"
#include "support/TestSupport.h"

namespace {

struct Fixture {
    Fixture() {
        installation.write("data.ini", "[MainInterface]\nLanguage=English\n");
        QFile language(shippedInstallation() + "/language/english.json");
        EXPECT_TRUE(language.open(QIODevice::ReadOnly));
        installation.write("language/english.json", language.readAll());
        TORNVALE::LanguageReader::instance().reload();
        installation.write("m.xml", smallMachine());
    }
    [[nodiscard]] QString machine() const { return installation.file("m.xml"); }
    TemporaryInstallation installation;
};

QStringList row(const QTableWidget& table, int index) {
    QStringList cells;
    for (int column = 0; column < table.columnCount(); ++column)
        cells.append(table.item(index, column)->text());
    return cells;
}

/// Writes a box to standard error, for a process that does not come back.
class PrintedDialogs final : public UserDialogs {
  public:
    PrintedDialogs() { setUserDialogs(this); }
    void tell(Kind kind, const QString& title, const QString& text, QWidget* /*parent*/) override {
        std::cerr << static_cast<int>(kind) << '|' << title.toStdString() << '|' << text.toStdString()
                  << '\n';
    }
    bool ask(const QString& /*title*/, const QString& /*text*/, QWidget* /*parent*/) override {
        return false;
    }
    std::optional<QString> chooseItem(const QString& /*title*/, const QString& /*label*/,
                                      const QStringList& /*items*/) override {
        return std::nullopt;
    }
    std::optional<double> askNumber(const QString& /*title*/, const QString& /*label*/, double /*value*/,
                                    double /*low*/, double /*high*/, int /*decimals*/) override {
        return std::nullopt;
    }
    QString openFile(const QString& /*caption*/, const QString& /*folder*/,
                     const QString& /*filter*/) override {
        return {};
    }
    QString saveFile(const QString& /*caption*/, const QString& /*folder*/,
                     const QString& /*filter*/) override {
        return {};
    }
};

}  // namespace

TEST(Tornvale, Window_HasTitleAndTwoPages) {
    const Fixture fixture;
    const Tornvale window(fixture.machine());
    EXPECT_EQ(window.windowTitle(), QString("Tornvale - 3.3.0.5"));
    const auto* pages = window.findChild<QTabWidget*>();
    ASSERT_EQ(pages->count(), 2);
    EXPECT_EQ(pages->tabText(0), QString("Machine"));
    EXPECT_EQ(pages->tabText(1), QString("Demonstration"));
}

TEST(Tornvale, Summary_ShowsAxesSpindlesAndCoordinates) {
    const Fixture fixture;
    const Tornvale window(fixture.machine());
    const auto* axes = window.findChild<QTableWidget*>("AxesTable");
    ASSERT_EQ(axes->rowCount(), 2);
    EXPECT_EQ(row(*axes, 0),
              (QStringList{"X", "X", "1", "Linear", "-10.5", "300", "5", "60000", "4000", "40000"}));
    EXPECT_EQ(row(*axes, 1),
              (QStringList{"C", "B", "4", "Rotary", "-360", "360", "0", "18000", "1200", "15000"}));
    const auto* spindles = window.findChild<QTableWidget*>("SpindlesTable");
    ASSERT_EQ(spindles->rowCount(), 1);
    EXPECT_EQ(row(*spindles, 0),
              (QStringList{"T1", "X->C", "0 0 100 0", "M3 S#", "M5", "M6 T#", "12", "T2"}));
    const auto* coordinates = window.findChild<QTableWidget*>("CoordinatesTable");
    ASSERT_EQ(coordinates->rowCount(), 1);
    EXPECT_EQ(row(*coordinates, 0), (QStringList{"G54", "left", "", "1 2 3", "X->C"}));
}

TEST(Tornvale, Summary_CannotBeEditedAndShowsTextsAsTheyStand) {
    const Fixture fixture;
    const Tornvale window(fixture.machine());
    for (const auto* table : window.findChildren<QTableWidget*>())
        EXPECT_EQ(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    const auto* head = window.findChild<QLabel*>("MachineHead");
    EXPECT_EQ(head->textFormat(), Qt::PlainText);
    EXPECT_TRUE(head->text().contains("Small <b>machine</b>"));
    EXPECT_TRUE(head->text().contains("S-77"));
    EXPECT_TRUE(head->text().contains("X->C"));
    EXPECT_TRUE(head->text().contains(fixture.machine()));
}

TEST(Tornvale, DemonstrationProgramMissing_IsNamedOnItsPage) {
    const Fixture fixture;
    const Tornvale window(fixture.machine());
    const auto* page = window.findChild<QTextBrowser*>();
    EXPECT_TRUE(page->toPlainText().contains("programs/FiveAxisContour.nc"))
        << page->toPlainText().toStdString();
    EXPECT_TRUE(page->isReadOnly());
}

TEST(Tornvale, ProjectDocument_IsRefusedWithAWord) {
    const Fixture fixture;
    Tornvale window(fixture.machine());
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, "Open",
                       "This version cannot open project documents yet: /a%1.tornvale");
    EXPECT_FALSE(window.openProject("/a%1.tornvale"));
}

TEST(Tornvale, BrokenMachine_IsToldAndEndsWithStatus1) {
    const Fixture fixture;
    fixture.installation.write("m.xml", "<root");
    EXPECT_EXIT(
        {
            const PrintedDialogs dialogs;
            const LogCapture log;
            const Tornvale window(fixture.machine());
        },
        ::testing::ExitedWithCode(1), "1\\|Fatal\\|The machine file has errors");
}
