#include "items/CodeModel.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/TestSupport.h"

namespace {

QString shown(const QString& text, int row) {
    CodeModel model;
    model.setLines(std::make_shared<const CodeLines>(text));
    return model.index(row, 0).data().toString();
}

}  // namespace

TEST(CodeModel, NewModel_IsEmpty) {
    CodeModel model;
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.index(0, 0).isValid());
}

TEST(CodeModel, Rows_AreTheLines) {
    CodeModel model;
    model.setLines(std::make_shared<const CodeLines>("G1\r\nG2\n"));
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
    EXPECT_EQ(model.data(model.index(1, 0), Qt::DisplayRole).toString(), QString("G2"));
    EXPECT_FALSE(model.data(model.index(1, 0), Qt::ToolTipRole).isValid());
}

TEST(CodeModel, ControlCharacters_AreOneVisibleLetterEach) {
    const QString dot(QChar(0xb7));
    EXPECT_EQ(shown(QString("G1\tX1"), 0), QString("G1 X1"));
    EXPECT_EQ(shown(QString("G1") + QChar(0) + "X1\rX2", 0), "G1" + dot + "X1" + dot + "X2");
    EXPECT_EQ(shown(QString("A") + QChar(0x2028) + QChar(0x202e) + QChar(0xfeff) + QChar(0x85), 0),
              "A" + dot.repeated(4));
    EXPECT_EQ(shown(QString::fromUtf8("(ПАЗ 槽)"), 0), QString::fromUtf8("(ПАЗ 槽)"));
}

TEST(CodeModel, LongLine_IsClippedBetweenWholeLetters) {
    EXPECT_EQ(shown(QString(5000, 'X'), 0), QString(CodeModel::kShownLetters, 'X'));
    const QString smile = QString::fromUcs4(U"\U0001F600", 1);
    EXPECT_EQ(shown(QString(CodeModel::kShownLetters - 1, 'X') + smile, 0),
              QString(CodeModel::kShownLetters - 1, 'X'));
}
