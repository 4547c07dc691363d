#include "machine/overStrock.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>
#include <memory>

#include "core/LanguageReader.h"
#include "machine/readConfig.h"

namespace {

void addTitleLabel(QHBoxLayout& layout, const QString& key) {
    const QString text = TORNVALE::LanguageReader::instance().text(QStringLiteral("AxisTitle"), key);
    layout.addWidget(new QLabel(text));  // owned by the layout's widget
}

void paintBackground(QLabel& label, bool isBad) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::Window, isBad ? Qt::red : Qt::green);
    label.setAutoFillBackground(true);
    label.setPalette(palette);
}

}  // namespace

AxisTitle::AxisTitle(QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);  // owned by this widget
    addTitleLabel(*layout, QStringLiteral("Name"));
    addTitleLabel(*layout, QStringLiteral("Lower"));
    addTitleLabel(*layout, QStringLiteral("Upper"));
}

AxisWidget::AxisWidget(const AxisLimitRow& row, QWidget* parent)
    : QWidget(parent),
      letter_(new QLabel(QString(row.letter), this)),             // owned by this widget
      min_(new QLabel(QString::number(row.min, 'g', 6), this)),   // owned by this widget
      max_(new QLabel(QString::number(row.max, 'g', 6), this)) {  // owned by this widget
    constexpr int kHeight = 25;
    letter_->setFixedSize(letter_->width(), kHeight);
    min_->setFixedSize(letter_->size());
    max_->setFixedSize(letter_->size());
    paintBackground(*min_, row.belowLower());
    paintBackground(*max_, row.aboveUpper());
    auto* layout = new QHBoxLayout(this);  // owned by this widget
    layout->addWidget(letter_);
    layout->addWidget(min_);
    layout->addWidget(max_);
}

overStrock::overStrock(const QString& chain, const QString& code, QWidget* parent) : QWidget(parent) {
    setWindowTitle(QStringLiteral("LimitedChecker"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/limited.png")));
    // 0x40001 (a window that stays on top), with a close button as its only one.
    setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint);
    letters_ = ConfigReader::instance().description().axisMap(chain, false);
    initialAxisLimits(letters_);
    layout_ = new QVBoxLayout(this);  // owned by this widget
    title_ = new AxisTitle(this);     // owned by this widget
    layout_->addWidget(title_);
    check(code);
}

void overStrock::initialAxisLimits(QMap<int, QChar> letters) {
    Diagnostics diagnostics;
    auto rows = axisLimitRows(ConfigReader::instance().description(), letters, diagnostics);
    if (!rows)
        qFatal("%s", qPrintable(diagnostics.entries.back().text));
    rows_ = std::move(*rows);
}

void overStrock::check(const QString& code) {
    exceeded_ = checkAxisLimits(rows_, code);
    showRows();
}

void overStrock::showRows() {
    while (layout_->count() > 1) {
        const std::unique_ptr<QLayoutItem> item(layout_->takeAt(1));
        delete item->widget();
    }
    for (const AxisLimitRow& row : rows_)
        layout_->addWidget(new AxisWidget(row, this));  // owned by this widget
}
