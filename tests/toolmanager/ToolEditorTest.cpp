#include "EditorBench.h"
#include "machine/readConfig.h"

// Opening, the spindle and the index.

TEST(ToolEditor, Window_HasTitleSizeAndAllInputs) {
    const ManagerInstallation installation;
    ToolEditor editor;
    editor.show();
    EXPECT_EQ(editor.size(), QSize(800, 600));
    EXPECT_EQ(editor.windowTitle(), english("ToolEditor", "Title"));
    for (const char* key : {"Spindle", "ToolNo", "Type", "Direction", "ChainSawType"})
        EXPECT_NE(editor.findChild<QComboBox*>(key), nullptr) << key;
    for (const char* key : {"Index", "Diameter", "HandleDia", "Length", "BladeLen", "Rpm", "Annotation", "X",
                            "Y", "Z", "Rx", "Ry", "Rz"})
        EXPECT_NE(editor.findChild<QLineEdit*>(key), nullptr) << key;
    for (const char* key : {"UpdateContourButton", "ImortPixmapButton", "RemovePixmapButton", "AcceptButton"})
        EXPECT_EQ(editor.findChild<QPushButton*>(key)->text(), english("ToolEditor", key));
    EXPECT_EQ(editor.findChild<QPushButton*>("ImportDxfButton"), nullptr);
    EXPECT_EQ(entries(*editor.findChild<QComboBox*>("Direction")),
              (QStringList{english("ToolEditor", "CW"), english("ToolEditor", "CCW")}));
}

TEST(ToolEditor, Instance_IsOne) {
    const ManagerInstallation installation;
    EXPECT_EQ(&ToolEditor::instance(), &ToolEditor::instance());
}

TEST(ToolEditor, Tool_FillsTheInputs) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOnSpindle(1, 7);
    tool.length = 123.4567F;
    tool.rpm = 18000;
    tool.direction = 1;
    tool.type = 2;
    tool.transform = {1, -2, 3.5F, 90, 0, -45};
    tool.contour = {{0, 0, 0}, {5.5F, 0, -1}};
    const Bench bench(tool);
    EXPECT_EQ(bench.box("Spindle").currentText(), QString("T1"));
    EXPECT_EQ(bench.box("ToolNo").currentText(), QString("7"));
    EXPECT_EQ(bench.box("Type").currentText(), english("ToolData", "UserTool"));
    EXPECT_EQ(bench.box("Direction").currentIndex(), 1);
    EXPECT_EQ(bench.line("Index").text(), QString("4"));
    EXPECT_EQ(bench.line("Length").text(), QString("123.4567"));
    EXPECT_EQ(bench.line("BladeLen").text(), QString("30"));
    EXPECT_EQ(bench.line("Diameter").text(), QString("20"));
    EXPECT_EQ(bench.line("HandleDia").text(), QString("20"));
    EXPECT_EQ(bench.line("Rpm").text(), QString("18000"));
    EXPECT_EQ(bench.line("Annotation").text(), QString("tool 4"));
    EXPECT_EQ(bench.line("Y").text(), QString("-2"));
    EXPECT_EQ(bench.line("Rz").text(), QString("-45"));
    EXPECT_EQ(bench.contour().toPlainText(), QString("0 0 0\n5.5 0 -1\n"));
}

TEST(ToolEditor, UnknownSpindle_KeepsTheChoice) {
    const ManagerInstallation installation;
    Bench bench(toolOnSpindle(3, 2));
    ToolData other(toolOnSpindle(99, 3));
    bench.editor.setTool(&other);
    EXPECT_EQ(bench.box("Spindle").currentText(), QString("T3"));
    EXPECT_EQ(bench.box("ToolNo").currentText(), QString("3"));
    bench.editor.setTool(nullptr);
}

TEST(ToolEditor, UnknownToolNumber_TellsAndKeepsTheChoice) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    expectWarning(dialogs, "FoundToolNoErrorMsg");
    const Bench bench(toolOnSpindle(1, 13));
    EXPECT_EQ(bench.box("ToolNo").currentText(), QString("1"));
}

TEST(ToolEditor, SpindleChange_RefillsTheToolNumbers) {
    const ManagerInstallation installation;
    const Bench bench(toolOnSpindle(1, 3));
    EXPECT_EQ(bench.box("ToolNo").count(), 12);
    bench.box("Spindle").setCurrentIndex(2);
    EXPECT_EQ(entries(bench.box("ToolNo")), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(bench.box("ToolNo").currentText(), QString("3"));  // the earlier number is there too
    bench.box("Spindle").setCurrentIndex(1);
    EXPECT_EQ(entries(bench.box("ToolNo")), QStringList{"1"});
    EXPECT_EQ(bench.box("ToolNo").currentText(), QString("1"));
}

TEST(ToolEditor, SpindleThatDoesNotReverse_ForcesClockwise) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOnSpindle(1, 1);
    tool.direction = 1;
    const Bench bench(tool);
    EXPECT_TRUE(bench.box("Direction").isEnabled());
    for (const int spindle : {1, 2}) {  // "false" and "TRUE"
        bench.box("Spindle").setCurrentIndex(0);
        bench.box("Direction").setCurrentIndex(1);
        bench.box("Spindle").setCurrentIndex(spindle);
        EXPECT_EQ(bench.box("Direction").currentIndex(), 0) << spindle;
        EXPECT_FALSE(bench.box("Direction").isEnabled()) << spindle;
    }
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().direction, 0);
}

TEST(ToolEditor, CounterClockwiseToolOfSuchASpindle_OpensClockwise) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOnSpindle(2, 1);
    tool.direction = 1;
    const Bench bench(tool);
    EXPECT_EQ(bench.box("Direction").currentIndex(), 0);
    EXPECT_FALSE(bench.box("Direction").isEnabled());
}

TEST(ToolEditor, VanishedSpindle_EndsTheProcess) {
    const ManagerInstallation installation;
    const Bench bench(toolOnSpindle(1, 1));
    setMachine({"T2"});
    EXPECT_FATAL(bench.box("Spindle").setCurrentIndex(2), "Not found corrent spindle");
    Bench other(toolOnSpindle(2, 1));
    setMachine({"T1"});
    EXPECT_FATAL(other.editor.SetupTool(), "Spindle not found");
}

TEST(ToolEditor, MachineWithoutSpindles_EndsTheProcess) {
    const ManagerInstallation installation;
    setMachine({});
    ToolData tool(toolOnSpindle(1, 1));
    ToolEditor editor;
    EXPECT_FATAL(editor.setTool(&tool), "Not found corrent spindle");
}

TEST(ToolEditor, EnormousToolCount_IsCut) {
    const ManagerInstallation installation;
    ConfigReader::instance().spindles()[0]->range = "2000000000";
    const Bench bench(toolOnSpindle(1, 9));
    EXPECT_EQ(bench.box("ToolNo").count(), 10000);
}

TEST(ToolEditor, NegativeIndex_TellsAndCountsAsZero) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    expectWarning(dialogs, "IndexErrorMsg");
    const Bench bench(toolOfIndex(4), {1, 2});
    bench.type("Index", "-3");
    EXPECT_EQ(bench.line("Index").text(), QString("0"));
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().index, 0);
}

TEST(ToolEditor, NegativeIndexWhereZeroIsTaken_GoesBack) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    expectWarning(dialogs, "IndexErrorMsg");
    const Bench bench(toolOfIndex(4), {0});
    bench.type("Index", "-3");
    EXPECT_EQ(bench.line("Index").text(), QString("4"));
}

TEST(ToolEditor, IndexOfAnotherRow_GoesBack) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(4), {1, 2});
    bench.type("Index", "2");
    EXPECT_EQ(bench.line("Index").text(), QString("4"));
    bench.type("Index", "12");
    EXPECT_EQ(bench.line("Index").text(), QString("12"));
}

TEST(ToolEditor, SameIndexUnderAnotherRoot_IsFree) {
    const ManagerInstallation installation;
    Bench bench(toolOfIndex(4), {});
    auto* other = new QTreeWidgetItem(&bench.tree);  // owned by the tree
    other->addChild(newTool(2));
    bench.type("Index", "2");
    EXPECT_EQ(bench.line("Index").text(), QString("2"));
}

TEST(ToolEditor, TextThatIsNoIndex_GoesBack) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(4), {});
    for (const char* text : {"abc", "1.5", "99999999999", ""}) {
        bench.type("Index", text);
        if (*text == '\0') {
            bench.line("Index").clear();
            QTest::keyClick(&bench.line("Index"), Qt::Key_Return);
        }
        EXPECT_EQ(bench.line("Index").text(), QString("4")) << text;
    }
}

// The text may stand there when the button takes the click without taking the focus.
TEST(ToolEditor, TakenIndexOnAccept_IsNotStored) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(4), {1, 2});
    bench.line("Index").setText("2");
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().index, 4);
}

TEST(ToolEditor, WithoutATool_ButtonsDoNothing) {
    const ManagerInstallation installation;
    ToolEditor editor;
    editor.show();
    QTest::mouseClick(editor.findChild<QPushButton*>("UpdateContourButton"), Qt::LeftButton);
    QTest::mouseClick(editor.findChild<QPushButton*>("AcceptButton"), Qt::LeftButton);
    EXPECT_EQ(editor.tool(), nullptr);
    EXPECT_FALSE(editor.isVisible());
}

TEST(ToolEditor, Escape_ClosesAndTakesNothing) {
    const ManagerInstallation installation;
    Bench bench(toolOnSpindle(1, 1));
    bench.line("Diameter").setFocus();
    bench.type("Diameter", "77");
    QTest::keyClick(&bench.line("Diameter"), Qt::Key_Escape);
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_EQ(bench.record().diameter, 20.0F);
}

TEST(ToolEditor, TabKey_WalksThroughTheInputsInTheirOrder) {
    const ManagerInstallation installation;
    const Bench bench(toolOnSpindle(1, 1));
    QStringList order;
    const QWidget* input = &bench.line("Index");
    do {
        if ((input->focusPolicy() & Qt::TabFocus) != 0 && !input->objectName().isEmpty())
            order.append(input->objectName());
        input = input->nextInFocusChain();
    } while (input != &bench.line("Index"));
    EXPECT_EQ(order.mid(0, 18), (QStringList{"Index", "Spindle", "ToolNo", "Rpm", "Diameter", "HandleDia",
                                             "Length", "BladeLen", "Type", "ChainSawType", "Direction",
                                             "Annotation", "X", "Y", "Z", "Rx", "Ry", "Rz"}));
    EXPECT_EQ(order.last(), "AcceptButton");
    EXPECT_TRUE(bench.contour().tabChangesFocus());
}
