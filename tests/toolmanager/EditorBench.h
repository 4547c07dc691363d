#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "ManagerTestSupport.h"
#include "tools/ToolContourPicture.h"
#include "tools/ToolEditor.h"

Q_DECLARE_METATYPE(ToolData*)  // for the signal spies

/// An editor of its own, open on a tool that stands in a tree beside others.
struct Bench {
    explicit Bench(const ToolRecord& record, const QList<int>& others = {}) {
        root = new QTreeWidgetItem(&tree);  // owned by the tree
        tool = new ToolData(record);        // owned by the root
        root->addChild(tool);
        for (const int index : others)
            root->addChild(newTool(index));
        tool->refreshRow();
        editor.setTool(tool);
        editor.show();
    }
    [[nodiscard]] QComboBox& box(const char* key) const { return *editor.findChild<QComboBox*>(key); }
    [[nodiscard]] QLineEdit& line(const char* key) const { return *editor.findChild<QLineEdit*>(key); }
    [[nodiscard]] QPlainTextEdit& contour() const {
        return *editor.findChild<QPlainTextEdit*>("ContourPoint");
    }
    [[nodiscard]] ToolContourPicture& drawing() const { return *editor.findChild<ToolContourPicture*>(); }
    void click(const char* key) const {
        QTest::mouseClick(editor.findChild<QPushButton*>(key), Qt::LeftButton);
    }
    /// Types over the text and presses Return.
    void type(const char* key, const QString& text) const {
        line(key).selectAll();
        QTest::keyClicks(&line(key), text);
        QTest::keyClick(&line(key), Qt::Key_Return);
    }
    [[nodiscard]] const ToolRecord& record() const { return tool->record(); }

    QTreeWidget tree;
    QTreeWidgetItem* root = nullptr;
    ToolData* tool = nullptr;
    ToolEditor editor;
};

inline void expectWarning(ExpectedDialogs& dialogs, const char* key) {
    dialogs.expectTell(UserDialogs::Kind::Warning, english("ToolEditor", "Title"),
                       english("ToolEditor", key));
}

inline QStringList entries(const QComboBox& box) {
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts.append(box.itemText(i));
    return texts;
}

inline ToolRecord toolOnSpindle(int spindle, int toolNo) {
    ToolRecord tool = toolOfIndex(4);
    tool.spindleNo = spindle;
    tool.toolNo = toolNo;
    return tool;
}

inline constexpr auto kUserText = "0 0 0\n5 0 0\n5 0 -10\n0 0 -10\n0 0 0\n";
