#include "core/QtTexts.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QPushButton>

#include "support/TestSupport.h"

namespace {
QString cancelText() {
    return QDialogButtonBox(QDialogButtonBox::Cancel).button(QDialogButtonBox::Cancel)->text();
}
}  // namespace

TEST(QtTexts, ButtonsSpeakTheLanguageOfTheProgram) {
    {
        const QtTexts texts(QStringLiteral("Chinese"));
        EXPECT_TRUE(texts.isComplete());
        EXPECT_EQ(cancelText(), QString::fromUtf8("取消"));
    }
    {
        const QtTexts texts(QStringLiteral("Russia"));
        EXPECT_TRUE(texts.isComplete());
        EXPECT_EQ(cancelText().remove(QLatin1Char('&')), QString::fromUtf8("Отмена"));
    }
    EXPECT_EQ(cancelText().remove(QLatin1Char('&')), QStringLiteral("Cancel")) << "gone with the object";
}

TEST(QtTexts, EnglishIsQtsOwnAndAnUnknownNameIsChinese) {
    {
        const QtTexts texts(QStringLiteral("English"));
        EXPECT_TRUE(texts.isComplete());
        EXPECT_EQ(cancelText().remove(QLatin1Char('&')), QStringLiteral("Cancel"));
    }
    const QtTexts texts(QStringLiteral("Klingon"));
    EXPECT_EQ(cancelText(), QString::fromUtf8("取消"));
}
