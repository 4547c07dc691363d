#include "tools/ToolPreviewer.h"

#include <Inventor/SbName.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>

#include "ManagerTestSupport.h"
#include "tools/ToolSceneView.h"
#include "tools/calc/ToolContours.h"

using TORNVALE::ToolPreviewer;

TEST(ToolPreviewer, Instance_IsOne) {
    const ManagerInstallation installation;
    EXPECT_EQ(&ToolPreviewer::instance(), &ToolPreviewer::instance());
}

TEST(ToolPreviewer, Tool_ShowsItsGraphAndOutlivesIt) {
    const ManagerInstallation installation;
    ToolPreviewer previewer;
    {
        ToolData tool(toolOfIndex(4));
        tool.record().contour = endMillContour(tool.record());
        previewer.preview(tool);
    }
    EXPECT_TRUE(previewer.isVisible());
    ASSERT_NE(previewer.view().scene(), nullptr);
    EXPECT_STREQ(previewer.view().scene()->getName().getString(), "Tool4");
    EXPECT_TRUE(previewer.windowTitle().contains("T1 No:1 Len:104 Dia:20"));
    QTest::keyClick(&previewer, Qt::Key_Escape);
    EXPECT_FALSE(previewer.isVisible());
}

TEST(ToolPreviewer, ChainSawWithoutModel_ShowsNothing) {
    const ManagerInstallation installation;
    ToolPreviewer previewer;
    ToolData tool(toolOfIndex(4));
    tool.LoadChainSawData("Saw2");
    previewer.preview(tool);
    EXPECT_EQ(previewer.view().scene(), nullptr);
}

TEST(ToolSceneView, SameGraphAgain_Stays) {
    const ManagerInstallation installation;
    ToolSceneView view;
    auto* graph = new SoSeparator;  // owned by the view
    graph->setName("Same");
    view.setScene(graph);
    view.setScene(graph);
    EXPECT_STREQ(view.scene()->getName().getString(), "Same");
}

// Without a display the viewer's construction would hang in a box of its own.
TEST(ToolSceneView, WithoutADisplay_MakesNoViewer) {
    const ManagerInstallation installation;
    ToolSceneView view;
    view.show();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(view.hasViewer(), ToolSceneView::canShow());
}
