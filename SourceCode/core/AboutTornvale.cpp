#include "core/AboutTornvale.h"

#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

#include "core/ParaReader.h"
#include "core/Version.h"
#include "core/WindowKeys.h"

QString AboutTornvale::text(const QString& language) {
    if (language == QLatin1String("English")) {
        return QStringLiteral(
                   "Tornvale %1\n\nProgramming, simulation and time-optimal output for multi-axis machining "
                   "centres.\nBuilt with Qt, Coin3D, FCL, Assimp, OpenCASCADE and dxflib.")
            .arg(applicationVersion());
    }
    if (language == QLatin1String("Russia")) {
        return QStringLiteral(
                   "Tornvale %1\n\nПрограммирование, моделирование и оптимальный по времени вывод программ "
                   "для многоосевых обрабатывающих центров.\nСоздано на основе Qt, Coin3D, FCL, Assimp, "
                   "OpenCASCADE и dxflib.")
            .arg(applicationVersion());
    }
    return QStringLiteral(
               "Tornvale %1\n\n多轴加工中心的编程、仿真与时间最优程序输出。\n基于 Qt、Coin3D、FCL、Assimp、"
               "OpenCASCADE 和 dxflib 构建。")
        .arg(applicationVersion());
}

AboutTornvale::AboutTornvale(QWidget* parent) : QWidget(parent, Qt::Window) {
    setWindowTitle(QStringLiteral("Tornvale"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    auto* column = new QVBoxLayout(this);  // owned by this widget
    auto* picture = new QLabel(this);      // owned by this widget
    picture->setPixmap(windowIcon().pixmap(96, 96));
    picture->setAlignment(Qt::AlignCenter);
    column->addWidget(picture);
    const QString language = ParaReader().value(QStringLiteral("MainInterface/Language")).toString();
    auto* words = new QLabel(text(language), this);  // owned by this widget
    words->setAlignment(Qt::AlignCenter);
    words->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(words);
    column->setSizeConstraint(QLayout::SetFixedSize);
    closeOnEscape(*this);
}
