#include <QSignalSpy>

#include "EditorBench.h"
#include "tools/calc/ToolContours.h"

// Contours, pictures, and what the accept button stores.

TEST(ToolEditor, Accept_StoresEveryInputAndRefreshesTheRow) {
    const ManagerInstallation installation;
    Bench bench(toolOnSpindle(2, 1));
    qRegisterMetaType<ToolData*>("ToolData*");
    const QSignalSpy accepted(&bench.editor, &ToolEditor::accepted);
    bench.box("Spindle").setCurrentIndex(0);
    bench.box("ToolNo").setCurrentIndex(4);
    bench.box("Direction").setCurrentIndex(1);
    bench.type("Index", "21");
    bench.type("Diameter", "16");
    bench.type("HandleDia", "12.5");
    bench.type("Length", "120");
    bench.type("BladeLen", "40");
    bench.type("Rpm", "-9000");
    bench.type("Annotation", "rough");
    bench.type("X", "1");
    bench.type("Rz", "-45.5");
    bench.click("AcceptButton");
    const ToolRecord& tool = bench.record();
    EXPECT_EQ(tool.spindleNo, 1);
    EXPECT_EQ(tool.spName, QString("T1"));
    EXPECT_EQ(tool.installationName, QString("X->Z->C->A"));
    EXPECT_EQ(tool.toolNo, 5);
    EXPECT_EQ(tool.direction, 1);
    EXPECT_EQ(tool.index, 21);
    EXPECT_EQ(tool.diameter, 16);
    EXPECT_EQ(tool.handleDiameter, 12.5F);
    EXPECT_EQ(tool.length, 120);
    EXPECT_EQ(tool.bladeLength, 40);
    EXPECT_EQ(tool.rpm, -9000);  // T1 reverses
    EXPECT_EQ(tool.annotation, QString("rough"));
    EXPECT_EQ(tool.transform, (QVector<float>{1, 0, 0, 0, 0, -45.5F}));
    EXPECT_EQ(tool.contour, endMillContour(tool));
    EXPECT_EQ(bench.tool->text(0), QString("21"));
    EXPECT_EQ(bench.tool->text(8), QString("X->Z->C->A"));
    EXPECT_EQ(accepted.size(), 1);
    EXPECT_FALSE(bench.editor.isVisible());
}

TEST(ToolEditor, NegativeSpeedOfASpindleThatDoesNotReverse_BecomesPositive) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    expectWarning(dialogs, "ReverseErrorMsg");
    const Bench bench(toolOnSpindle(2, 1));
    bench.type("Rpm", "-9000");
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().rpm, 9000);
}

TEST(ToolEditor, TextsThatAreNoNumbers_LeaveTheirFields) {
    const ManagerInstallation installation;
    const ToolRecord before = toolOfIndex(4);
    const Bench bench(before);
    for (const char* key : {"Diameter", "HandleDia", "Length", "BladeLen", "Rpm", "X", "Rz"}) {
        for (const char* text : {"abc", "1e99", "nan", "-", "1,5"})
            bench.line(key).setText(text);
    }
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().diameter, before.diameter);
    EXPECT_EQ(bench.record().handleDiameter, before.handleDiameter);
    EXPECT_EQ(bench.record().length, before.length);
    EXPECT_EQ(bench.record().bladeLength, before.bladeLength);
    EXPECT_EQ(bench.record().rpm, before.rpm);
    EXPECT_EQ(bench.record().transform, before.transform);
}

TEST(ToolEditor, UpdateContour_WritesTextAndToolFromTheDimensions) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(0));
    bench.type("Diameter", "10");
    bench.click("UpdateContourButton");
    ToolRecord expected = toolOfIndex(0);
    expected.diameter = 10;
    EXPECT_EQ(bench.record().contour, endMillContour(expected));
    EXPECT_EQ(bench.contour().toPlainText(),
              QString("0 0 0\n10 0 0\n10 0 -70\n5 0 -70\n5 0 -100\n0 0 -100\n0 0 0\n"));
    EXPECT_EQ(bench.record().diameter, 20);  // the dimensions wait for the accept button
    bench.box("Type").setCurrentIndex(1);
    bench.click("UpdateContourButton");
    EXPECT_EQ(bench.record().contour, ballEndContour(expected));
    EXPECT_EQ(bench.contour().toPlainText(), contourText(ballEndContour(expected)));
}

TEST(ToolEditor, UserTool_TakesTheTypedContour) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(0));
    EXPECT_TRUE(bench.contour().isReadOnly());
    bench.box("Type").setCurrentIndex(2);
    EXPECT_FALSE(bench.contour().isReadOnly());
    bench.contour().selectAll();
    for (const QString& line : QString(kUserText).split('\n', Qt::SkipEmptyParts)) {
        QTest::keyClicks(&bench.contour(), line);
        QTest::keyClick(&bench.contour(), Qt::Key_Return);
    }
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().type, 2);
    EXPECT_EQ(bench.record().contour, userContour(kUserText));
    EXPECT_EQ(bench.record().contour.size(), 5);
}

TEST(ToolEditor, UserContourOfFourPoints_MakesAToolWithoutMesh) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOfIndex(0);
    tool.type = 2;
    tool.contour = userContour(kUserText);
    const Bench bench(tool);
    bench.contour().setPlainText("0 0 0\n5 0 0\n5 0 -10\n0 0 0\n");
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().contour, QVector<SbVec3f>());
    EXPECT_EQ(bench.tool->collisionMesh().indices, QVector<int>());
}

TEST(ToolEditor, Drawing_FollowsTheInputs) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(0));
    EXPECT_EQ(bench.drawing().contour(), endMillContour(toolOfIndex(0)));
    bench.type("Length", "80");
    EXPECT_EQ(bench.drawing().contour()[4], SbVec3f(10, 0, -80));
    bench.box("Type").setCurrentIndex(2);
    bench.contour().setPlainText(kUserText);
    EXPECT_EQ(bench.drawing().contour(), userContour(kUserText));
    EXPECT_EQ(bench.record().length, 100);
}

TEST(ToolEditor, ChainSaw_TakesItsGroupAndReadsNothingElse) {
    const ManagerInstallation installation;
    const Bench bench(toolOfIndex(4));
    EXPECT_FALSE(bench.box("ChainSawType").isEnabled());
    bench.box("Type").setCurrentIndex(3);
    EXPECT_TRUE(bench.box("ChainSawType").isEnabled());
    EXPECT_FALSE(bench.line("Length").isEnabled());
    EXPECT_EQ(entries(bench.box("ChainSawType")), (QStringList{"Saw1", "Saw2"}));
    bench.box("ChainSawType").setCurrentIndex(0);
    bench.line("Length").setText("5");
    bench.line("Index").setText("77");
    bench.click("AcceptButton");
    const ToolRecord& tool = bench.record();
    EXPECT_EQ(tool.type, 3);
    EXPECT_EQ(tool.chainSaw, QString("Saw1"));
    EXPECT_EQ(tool.spindleNo, 3);
    EXPECT_EQ(tool.toolNo, 2);
    EXPECT_EQ(tool.rpm, 2800);
    EXPECT_EQ(tool.ax4Compensation, 0.25F);
    EXPECT_EQ(tool.length, 104);
    EXPECT_EQ(tool.index, 4);
    EXPECT_EQ(bench.tool->text(9), english("ToolData", "ChainSaw"));
}

TEST(ToolEditor, ChainSawTool_SelectsItsGroup) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOnSpindle(3, 2);
    tool.type = 3;
    tool.chainSaw = "Saw2";
    const Bench bench(tool);
    EXPECT_EQ(bench.box("Type").currentIndex(), 3);
    EXPECT_EQ(bench.box("ChainSawType").currentText(), QString("Saw2"));
}

TEST(ToolEditor, ChainSawOfALostGroup_KeepsItsValuesOnAccept) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOnSpindle(3, 2);
    tool.type = 3;
    tool.chainSaw = "Saw9";
    tool.rpm = 1234;
    const Bench bench(tool);
    EXPECT_EQ(bench.box("ChainSawType").currentIndex(), -1);
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().chainSaw, QString("Saw9"));
    EXPECT_EQ(bench.record().rpm, 1234);
}

TEST(ToolEditor, ImportedPicture_IsScaledToTheLabelAndStoredOnAccept) {
    const ManagerInstallation installation;
    installation.write("big.png", pictureFile({1200, 300}));
    ExpectedDialogs dialogs;
    dialogs.answerFile(installation.file("big.png"));
    const Bench bench(toolOfIndex(4));
    const QSize room = bench.editor.findChild<QLabel*>("Pixmap")->size();
    bench.click("ImortPixmapButton");
    EXPECT_TRUE(bench.record().image.isEmpty());
    bench.click("AcceptButton");
    EXPECT_EQ(bench.tool->picture().size(), QSize(1200, 300).scaled(room, Qt::KeepAspectRatio));
}

TEST(ToolEditor, PictureThatIsCancelledOrNoPicture_ChangesNothing) {
    const ManagerInstallation installation;
    installation.write("bad.png", "no picture");
    ExpectedDialogs dialogs;
    dialogs.answerFile("");
    dialogs.answerFile(installation.file("bad.png"));
    ToolRecord tool = toolOfIndex(4);
    tool.image = pictureFile({400, 300});
    const Bench bench(tool);
    const LogCapture log;
    bench.click("ImortPixmapButton");
    EXPECT_EQ(log.all(), QString());
    bench.click("ImortPixmapButton");
    EXPECT_EQ(log.count(" load Image failed.ImagePath:" + installation.file("bad.png")), 1);
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().image, tool.image);  // to the byte: larger than the label, and not scaled
}

TEST(ToolEditor, RemovedPicture_IsGoneOnAccept) {
    const ManagerInstallation installation;
    ToolRecord tool = toolOfIndex(4);
    tool.image = pictureFile({40, 30});
    const Bench bench(tool);
    bench.click("RemovePixmapButton");
    EXPECT_EQ(bench.record().image, tool.image);
    bench.click("AcceptButton");
    EXPECT_TRUE(bench.record().image.isEmpty());
}

TEST(ToolEditor, ToolOfOddValues_OpensAndIsAccepted) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    expectWarning(dialogs, "FoundToolNoErrorMsg");
    ToolRecord tool = toolOnSpindle(-1, -5);
    tool.type = 77;
    tool.direction = -9;
    tool.transform = {1, 2};
    tool.image = "no picture";
    const Bench bench(tool);
    bench.click("AcceptButton");
    EXPECT_EQ(bench.record().transform, (QVector<float>{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(bench.record().spindleNo, 1);
    EXPECT_EQ(bench.record().direction, 1);
}
