#include "nc/HeaderTailEditor.h"

#include <QLabel>
#include <QSignalSpy>

#include "EditorBench.h"
#include "nc/calc/AuxiliaryAxis.h"

namespace {

const QString kHeader = QStringLiteral("Header");
const QString kTail = QStringLiteral("Tail");

QStringList chainsOf(const EditorBench& bench) {
    QStringList texts;
    for (int i = 0; i < bench.chains().count(); ++i)
        texts.append(bench.chains().itemText(i));
    return texts;
}

QStringList labelsOf(const QGroupBox& box) {
    QStringList texts;
    for (const QLabel* label : box.findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}

/// The sentence that the window shows; empty when it shows none.
QString faultOf(const EditorBench& bench) {
    for (const QLabel* label : bench.editor.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (label->isVisible())
            return label->text();
    }
    return {};
}

bool isMarked(const QLineEdit& input) {
    return !input.styleSheet().isEmpty() && !input.toolTip().isEmpty();
}

}  // namespace

TEST(HeaderTailEditor, Instance_IsOne) {
    const HeaderTailInstallation installation;
    EXPECT_EQ(&TORNVALE::HeaderTailEditor::instance(), &TORNVALE::HeaderTailEditor::instance());
}

// --- the window ---

TEST(HeaderTailEditor, Edit_ShowsTheChainsAndTheFirstRecord) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    EXPECT_TRUE(bench.editor.isVisible());
    EXPECT_EQ(bench.editor.items(), bench.items.get());
    EXPECT_EQ(chainsOf(bench), (QStringList{kFive, kTwo}));
    EXPECT_EQ(bench.chains().currentIndex(), 0);
    EXPECT_EQ(labelsOf(bench.box(kHeader)), (QStringList{"X", "Y", "Z", "C", "A"}));
    EXPECT_EQ(labelsOf(bench.box(kTail)), (QStringList{"X", "Y", "Z", "C", "A"}));
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"0.000", "0.000", "700.000", "0.000", "0.000"}));
    EXPECT_EQ(bench.texts(kTail), bench.texts(kHeader));
    EXPECT_EQ(bench.editor.windowTitle(), QString("Header and tail"));
}

TEST(HeaderTailEditor, Buttons_HaveLiteralTextsInOrder) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    int left = -1;
    for (const char* text : {"Optimal", "Reset", "Apply", "Ok"}) {
        EXPECT_GT(bench.button(text).x(), left) << text;
        left = bench.button(text).x();
    }
}

TEST(HeaderTailEditor, Inputs_CarryTheAxisIds) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    QList<int> ids;
    for (const QLineEdit* input : bench.inputs(kTail))
        ids.append(input->property("id").toInt());
    EXPECT_EQ(ids, (QList<int>{1, 2, 3, 4, 5}));
}

TEST(HeaderTailEditor, EditOfAnotherList_ReplacesTheFirst) {
    const HeaderTailInstallation installation;
    EditorBench bench;
    FormatItems other;
    other.headerTail.add(ConfigReader::instance().description(), kTwo).header = "G1 X3Y4F1";
    bench.editor.Edit(&other);
    EXPECT_EQ(chainsOf(bench), QStringList{kTwo});
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"3.000", "4.000"}));
    bench.items.reset();  // no longer in edit
    EXPECT_TRUE(bench.editor.isVisible());
    bench.click("Ok");
    EXPECT_EQ(other.headerTail.record(kTwo)->header, QString("G1 X3.000Y4.000F7000"));
}

TEST(HeaderTailEditor, AuxiliaryAxisOfTheGroup_HasARowOfItsOwn) {
    const HeaderTailInstallation installation;
    const EditorBench bench(auxiliaryAxisOf(ConfigReader::instance().description(), "W"));
    EXPECT_EQ(labelsOf(bench.box(kHeader)), (QStringList{"X", "Y", "Z", "C", "A", "W"}));
    bench.type(kHeader, 6, "33.5");
    bench.click("Apply");
    EXPECT_EQ(bench.record().header, QString("G1 X0.000Y0.000Z700.000C0.000A0.000W33.500F7000"));
    EXPECT_EQ(bench.record().tail, QString("G1 X0.000Y0.000Z700.000C0.000A0.000W0.000F7000"));
    EXPECT_EQ(bench.input(kHeader, 6).text(), QString("33.500"));
}

// --- chains ---

TEST(HeaderTailEditor, ChangedChain_RebuildsBothFormsAndLosesTheEdits) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.record(kTwo).header = "G1 X8Y9F100";
    bench.type(kHeader, 1, "55");
    bench.type(kTail, 2, "66");
    QTest::keyClick(&bench.chains(), Qt::Key_Down);
    EXPECT_EQ(bench.chains().currentText(), kTwo);
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"8.000", "9.000"}));
    EXPECT_EQ(bench.texts(kTail), (QStringList{"0.000", "0.000"}));
    QTest::keyClick(&bench.chains(), Qt::Key_Up);
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"0.000", "0.000", "700.000", "0.000", "0.000"}));
    EXPECT_EQ(bench.texts(kTail), bench.texts(kHeader));
    EXPECT_EQ(bench.record().header, kFiveHome);
    EXPECT_EQ(bench.record().tail, kFiveHome);
}

TEST(HeaderTailEditor, ChainWithoutARecord_ShowsEmptyFields) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.items->headerTail.clear();
    bench.chains().setCurrentIndex(1);
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"", ""}));
    EXPECT_EQ(bench.texts(kTail), (QStringList{"", ""}));
    for (const char* button : {"Optimal", "Reset", "Apply"})
        bench.click(button);
    EXPECT_EQ(bench.items->headerTail.chains(), QStringList());
}

TEST(HeaderTailEditor, ChainWhoseRecordHasGone_GetsOneWhenTheValuesAreStored) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.items->headerTail.clear();
    bench.type(kHeader, 1, "5");
    bench.click("Apply");
    EXPECT_EQ(bench.items->headerTail.chains(), QStringList{kFive});
    EXPECT_EQ(bench.record().header, QString("G1 X5.000Y0.000Z700.000C0.000A0.000F7000"));
}

TEST(HeaderTailEditor, ListWithoutChains_HasNoRowsAndOkCloses) {
    const HeaderTailInstallation installation;
    EditorBench bench;
    FormatItems empty(auxiliaryAxisOf(ConfigReader::instance().description(), "W"));
    bench.editor.Edit(&empty);
    EXPECT_EQ(bench.chains().count(), 0);
    EXPECT_EQ(bench.inputs(kHeader).size(), 0);
    for (const char* button : {"Optimal", "Reset", "Apply"})
        bench.click(button);
    EXPECT_TRUE(bench.editor.isVisible());
    bench.click("Ok");
    EXPECT_FALSE(bench.editor.isVisible());
}

// --- buttons ---

TEST(HeaderTailEditor, Apply_StoresBothLinesAndStaysOpen) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    QSignalSpy changes(&bench.editor, &TORNVALE::HeaderTailEditor::changed);
    bench.type(kHeader, 3, "-4.25");
    bench.type(kTail, 5, " 90 ");
    bench.click("Apply");
    EXPECT_EQ(bench.record().header, QString("G1 X0.000Y0.000Z-4.250C0.000A0.000F7000"));
    EXPECT_EQ(bench.record().tail, QString("G1 X0.000Y0.000Z700.000C0.000A90.000F7000"));
    EXPECT_EQ(bench.record(kTwo).header, QString("G1 X0 Y0 F7000"));
    EXPECT_EQ(bench.input(kHeader, 3).text(), QString("-4.250"));
    EXPECT_EQ(bench.input(kTail, 5).text(), QString("90.000"));
    EXPECT_TRUE(bench.editor.isVisible());
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toString(), kFive);
    bench.click("Apply");
    EXPECT_EQ(changes.count(), 1);  // nothing new
}

TEST(HeaderTailEditor, Ok_StoresAndCloses) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kTail, 1, "12.3456");
    bench.click("Ok");
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.record().tail, QString("G1 X12.346Y0.000Z700.000C0.000A0.000F7000"));
}

TEST(HeaderTailEditor, Optimal_TakesTheItemsLinesRaised) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    QSignalSpy changes(&bench.editor, &TORNVALE::HeaderTailEditor::changed);
    bench.record().itemHeader = "G1 X10.000 Y20.000 Z50.000 C90.000 A-45.000 F7000";
    bench.record().itemTail = "G1 X11.000 Y21.000 Z51.500 C90.000 A-45.000 F7000";
    bench.click("Optimal");
    EXPECT_EQ(bench.record().header, QString("G1 X10.000 Y20.000 Z150 C90.000 A-45.000 F7000"));
    EXPECT_EQ(bench.record().tail, QString("G1 X11.000 Y21.000 Z151.5 C90.000 A-45.000 F7000"));
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"10.000", "20.000", "150.000", "90.000", "-45.000"}));
    EXPECT_EQ(bench.texts(kTail), (QStringList{"11.000", "21.000", "151.500", "90.000", "-45.000"}));
    EXPECT_EQ(changes.count(), 1);
}

TEST(HeaderTailEditor, OptimalBeyondTheUpperLimit_KeepsTheValue) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.record().itemHeader = "G1 X1.000 Z650.001 F7000";
    bench.record().itemTail = "G1 X1.000 Z650.000 F7000";
    bench.click("Optimal");
    EXPECT_EQ(bench.record().header, QString("G1 X1.000 Z650.001 F7000"));
    EXPECT_EQ(bench.record().tail, QString("G1 X1.000 Z750 F7000"));
    EXPECT_EQ(bench.input(kHeader, 3).text(), QString("650.001"));
    EXPECT_EQ(bench.input(kTail, 3).text(), QString("750.000"));
}

// The items' lines are copied as they are, empty ones too; the empty fields tell.
TEST(HeaderTailEditor, OptimalWithoutItems_EmptiesTheLines) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.click("Optimal");
    EXPECT_EQ(bench.record().header, QString());
    EXPECT_EQ(bench.record().tail, QString());
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"", "", "", "", ""}));
}

TEST(HeaderTailEditor, Reset_OverwritesBothTextsWithTheSameLine) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.record().header = "G1 X1Y2Z3F7000";
    bench.record().tail = "G1 X4Y5Z6F7000";
    bench.type(kHeader, 1, "77");
    bench.click("Reset");
    EXPECT_EQ(bench.record().header, kFiveHome);
    EXPECT_EQ(bench.record().tail, kFiveHome);
    EXPECT_EQ(bench.texts(kHeader), (QStringList{"0.000", "0.000", "700.000", "0.000", "0.000"}));
    EXPECT_EQ(bench.texts(kTail), bench.texts(kHeader));
    EXPECT_TRUE(bench.editor.isVisible());
}

// --- bad numbers ---

TEST(HeaderTailEditor, BadNumber_IsMarkedKeptAndNotStored) {
    const HeaderTailInstallation installation;
    for (const char* bad : {"", "12,5", "1e", "x", "--1", "inf", "nan", "1 2", "2e9"}) {
        for (const char* button : {"Apply", "Ok"}) {
            const EditorBench bench;
            bench.type(kHeader, 1, "5");
            bench.type(kTail, 3, bad);
            bench.click(button);
            EXPECT_TRUE(bench.editor.isVisible()) << bad;
            EXPECT_EQ(bench.record().header, kFiveHome) << bad;
            EXPECT_EQ(bench.record().tail, kFiveHome) << bad;
            EXPECT_EQ(bench.input(kTail, 3).text(), QString(bad));
            EXPECT_EQ(bench.input(kHeader, 1).text(), QString("5"));
            EXPECT_TRUE(isMarked(bench.input(kTail, 3))) << bad;
            EXPECT_TRUE(bench.input(kTail, 3).toolTip().startsWith("Z: ")) << bad;
            EXPECT_FALSE(isMarked(bench.input(kHeader, 1))) << bad;
            EXPECT_EQ(faultOf(bench), bench.input(kTail, 3).toolTip()) << bad;
        }
    }
}

TEST(HeaderTailEditor, BadNumbers_SendTheFocusToTheFirst) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kTail, 1, "x");
    bench.type(kHeader, 4, "y");
    bench.type(kHeader, 2, "z");
    bench.click("Apply");
    EXPECT_EQ(bench.editor.focusWidget(), &bench.input(kHeader, 2));
    EXPECT_TRUE(faultOf(bench).startsWith("Y: ")) << faultOf(bench).toStdString();
    EXPECT_TRUE(isMarked(bench.input(kHeader, 4)));
    EXPECT_TRUE(isMarked(bench.input(kTail, 1)));
}

TEST(HeaderTailEditor, MendedNumber_LosesItsMarkAndIsStored) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 1, "1.5.");
    bench.click("Apply");
    ASSERT_TRUE(isMarked(bench.input(kHeader, 1)));
    EXPECT_NE(faultOf(bench), QString());
    QTest::keyClick(&bench.input(kHeader, 1), Qt::Key_End);
    QTest::keyClick(&bench.input(kHeader, 1), Qt::Key_Backspace);
    EXPECT_FALSE(isMarked(bench.input(kHeader, 1)));
    EXPECT_EQ(faultOf(bench), QString());
    bench.click("Ok");
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.record().header, QString("G1 X1.500Y0.000Z700.000C0.000A0.000F7000"));
}

TEST(HeaderTailEditor, BadNumber_IsMarkedWhenTheFieldIsLeft) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 1, "-");
    EXPECT_FALSE(isMarked(bench.input(kHeader, 1)));  // may still become a number
    QTest::keyClick(&bench.input(kHeader, 1), Qt::Key_Tab);
    EXPECT_TRUE(isMarked(bench.input(kHeader, 1)));
    bench.click("Reset");
    EXPECT_FALSE(isMarked(bench.input(kHeader, 1)));
}

TEST(HeaderTailEditor, FieldsThatAreEmptiedByTheEditor_AreNotMarked) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 1, "x");
    bench.click("Apply");
    ASSERT_TRUE(isMarked(bench.input(kHeader, 1)));
    bench.click("Optimal");  // no items, no lines
    EXPECT_EQ(bench.input(kHeader, 1).text(), QString());
    EXPECT_FALSE(isMarked(bench.input(kHeader, 1)));
    EXPECT_EQ(faultOf(bench), QString());
}

// --- keyboard ---

TEST(HeaderTailEditor, Enter_IsOk) {
    const HeaderTailInstallation installation;
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        const EditorBench bench;
        bench.type(kHeader, 2, "7");
        QTest::keyClick(&bench.input(kHeader, 2), static_cast<Qt::Key>(key));
        EXPECT_FALSE(bench.editor.isVisible());
        EXPECT_EQ(bench.record().header, QString("G1 X0.000Y7.000Z700.000C0.000A0.000F7000"));
    }
}

TEST(HeaderTailEditor, Edit_SelectsTheFirstField) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    EXPECT_EQ(bench.editor.focusWidget(), &bench.input(kHeader, 1));
    QTest::keyClicks(bench.editor.focusWidget(), "42");
    EXPECT_EQ(bench.input(kHeader, 1).text(), QString("42"));
}

TEST(HeaderTailEditor, ChangedChain_TakesTheFaultAway) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 2, "x");
    bench.click("Apply");
    EXPECT_NE(faultOf(bench), QString());
    bench.chains().setCurrentIndex(1);
    EXPECT_EQ(faultOf(bench), QString());
}

TEST(HeaderTailEditor, EnterOnABadNumber_KeepsTheWindow) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 2, "7,5");
    QTest::keyClick(&bench.input(kHeader, 2), Qt::Key_Return);
    EXPECT_TRUE(bench.editor.isVisible());
    EXPECT_TRUE(isMarked(bench.input(kHeader, 2)));
    EXPECT_EQ(bench.record().header, kFiveHome);
}

TEST(HeaderTailEditor, EnterOnAButton_PressesThatButton) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 2, "7");
    bench.button("Reset").setFocus();
    QTest::keyClick(&bench.button("Reset"), Qt::Key_Return);
    EXPECT_TRUE(bench.editor.isVisible());
    EXPECT_EQ(bench.record().header, kFiveHome);
}

TEST(HeaderTailEditor, Escape_ClosesWithoutStoring) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.type(kHeader, 2, "7");
    QTest::keyClick(&bench.input(kHeader, 2), Qt::Key_Escape);
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.record().header, kFiveHome);
}

TEST(HeaderTailEditor, Tab_GoesThroughTheRowsAndThenTheButtons) {
    const HeaderTailInstallation installation;
    const EditorBench bench;
    bench.chains().setCurrentIndex(1);  // new forms are made
    QList<QWidget*> expected;
    for (const QString& title : {kHeader, kTail}) {
        for (QLineEdit* input : bench.inputs(title))
            expected.append(input);
    }
    for (const char* text : {"Optimal", "Reset", "Apply", "Ok"})
        expected.append(&bench.button(text));
    bench.chains().setFocus();
    for (const QWidget* next : expected) {
        QTest::keyClick(bench.editor.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(bench.editor.focusWidget(), next);
    }
}

// --- the list goes ---

TEST(HeaderTailEditor, ListThatGoes_ClosesTheWindow) {
    const HeaderTailInstallation installation;
    EditorBench bench;
    bench.type(kHeader, 1, "5");
    bench.items.reset();
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.editor.items(), nullptr);
    EXPECT_EQ(bench.chains().count(), 0);
    bench.editor.show();  // what is left of the window touches nothing
    for (const char* button : {"Optimal", "Reset", "Apply", "Ok"})
        bench.click(button);
    EXPECT_FALSE(bench.editor.isVisible());
}

TEST(HeaderTailEditor, ListThatGoesWhenItsChangeIsTold_IsSafe) {
    const HeaderTailInstallation installation;
    EditorBench bench;
    QObject::connect(&bench.editor, &TORNVALE::HeaderTailEditor::changed, [&] { bench.items.reset(); });
    bench.type(kHeader, 1, "5");
    bench.click("Apply");
    EXPECT_FALSE(bench.editor.isVisible());
}

TEST(HeaderTailEditor, EditOfNothing_ClosesTheWindow) {
    const HeaderTailInstallation installation;
    EditorBench bench;
    bench.editor.Edit(nullptr);
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.editor.items(), nullptr);
    bench.items.reset();
    bench.editor.Edit(nullptr);
}

TEST(HeaderTailEditor, EditorThatGoesFirst_LeavesTheListAlone) {
    const HeaderTailInstallation installation;
    auto items = std::make_unique<FormatItems>();
    items->headerTail.add(ConfigReader::instance().description(), kTwo);
    {
        TORNVALE::HeaderTailEditor editor;
        editor.Edit(items.get());
    }
    EXPECT_EQ(items->headerTail.record(kTwo)->header, QString("G1 X0 Y0 F7000"));
    items.reset();
}
