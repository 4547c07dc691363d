#include "tools/GetToolWidget.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "ManagerTestSupport.h"

using TORNVALE::GetToolWidget;
using TORNVALE::ToolsManager;

namespace {

/// Installs tools of these indices in the process's manager in place of what is there.
void install(const QList<int>& indices) {
    ToolsManager& manager = ToolsManager::instance();
    QList<QTreeWidgetItem*> rows;
    for (int i = 0; i < manager.installedRoot()->childCount(); ++i)
        rows.append(manager.installedRoot()->child(i));
    select(manager, rows);
    manager.removeSelected();
    for (const int index : indices)
        manager.addTool(newTool(index), manager.installedRoot());
}

QStringList entries(const QComboBox& box) {
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts.append(box.itemText(i));
    return texts;
}

}  // namespace

TEST(GetToolWidget, InstalledTools_AreListedByTheirText) {
    const ManagerInstallation installation;
    install({3, 1});
    const GetToolWidget widget;
    EXPECT_EQ(entries(*widget.findChild<QComboBox*>("Tools")),
              (QStringList{"T1 No:1 Len:103 Dia:20", "T1 No:1 Len:101 Dia:20"}));
    EXPECT_EQ(widget.windowTitle(), english("GetToolWidget", "Title"));
}

TEST(GetToolWidget, Accept_ClosesAndTellsTheText) {
    const ManagerInstallation installation;
    install({3, 1});
    GetToolWidget widget;
    const QSignalSpy chosen(&widget, &GetToolWidget::toolChosen);
    widget.show();
    QTest::keyClick(widget.findChild<QComboBox*>("Tools"), Qt::Key_Down);
    QTest::mouseClick(widget.findChild<QPushButton*>("AcceptButton"), Qt::LeftButton);
    EXPECT_FALSE(widget.isVisible());
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0].toString(), QString("T1 No:1 Len:101 Dia:20"));
}

TEST(GetToolWidget, ShownAgain_ListsTheToolsOfNow) {
    const ManagerInstallation installation;
    install({3, 1});
    GetToolWidget widget;
    auto* box = widget.findChild<QComboBox*>("Tools");
    box->setCurrentIndex(1);
    install({8, 9, 1});
    widget.show();
    EXPECT_EQ(box->count(), 3);
    EXPECT_EQ(box->currentText(), QString("T1 No:1 Len:101 Dia:20"));
}

TEST(GetToolWidget, NoTool_CannotBeAccepted) {
    const ManagerInstallation installation;
    install({});
    GetToolWidget widget;
    const QSignalSpy chosen(&widget, &GetToolWidget::toolChosen);
    widget.show();
    QTest::mouseClick(widget.findChild<QPushButton*>("AcceptButton"), Qt::LeftButton);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_EQ(chosen.size(), 0);
}

TEST(GetToolWidget, Escape_ClosesAndChoosesNothing) {
    const ManagerInstallation installation;
    install({3, 1});
    GetToolWidget widget;
    const QSignalSpy chosen(&widget, &GetToolWidget::toolChosen);
    widget.show();
    QTest::keyClick(widget.findChild<QComboBox*>("Tools"), Qt::Key_Escape);
    EXPECT_FALSE(widget.isVisible());
    EXPECT_EQ(chosen.size(), 0);
}
