#include "GoldenText.h"

#include <gtest/gtest.h>

#include <QFile>

QString goldenText(const QString& name, const QString& text) {
    QFile file(QStringLiteral(TORNVALE_GOLDEN_FOLDER "/") + name);
    if (!qEnvironmentVariableIsEmpty("TORNVALE_RENEW_GOLDEN")) {
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(text.toUtf8());
        ADD_FAILURE() << "renewed: " << name.toStdString();
        return text;
    }
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "no expected text " << name.toStdString();
    return file.isOpen() ? QString::fromUtf8(file.readAll()) : QString();
}
