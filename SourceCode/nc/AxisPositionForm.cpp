#include "nc/AxisPositionForm.h"

#include <QFormLayout>
#include <QLineEdit>
#include <cmath>

#include "core/LanguageReader.h"

namespace TORNVALE {

namespace {

constexpr auto kBadNumber = "badNumber";

/// Nearest that a machine's position can be to nonsense; what lies beyond no planner takes.
constexpr double kFarthest = 1e9;

std::optional<double> numberOf(const QLineEdit& input) {
    bool ok = false;
    const double value = input.text().toDouble(&ok);
    return ok && std::abs(value) <= kFarthest ? std::optional(value) : std::nullopt;
}

}  // namespace

AxisPositionForm::AxisPositionForm(const QMap<int, QString>& axes, QWidget* parent) : QWidget(parent) {
    auto* layout = new QFormLayout(this);  // owned by this widget
    for (auto it = axes.begin(); it != axes.end(); ++it) {
        const Row row{it.value(), new QLineEdit(this)};  // owned by this widget
        row.input->setProperty("id", it.key());
        row.input->setAlignment(Qt::AlignRight);
        row.input->setMinimumHeight(row.input->sizeHint().height());  // a marked input keeps its height
        layout->addRow(row.label, row.input);
        rows_.insert(it.key(), row);
        connect(row.input, &QLineEdit::editingFinished, this,
                [this, row] { mark(row, !numberOf(*row.input)); });
        connect(row.input, &QLineEdit::textChanged, this, [this, row] {
            if (numberOf(*row.input))
                mark(row, false);
        });
    }
}

void AxisPositionForm::setValues(const QMap<int, double>& values) {
    for (auto it = rows_.begin(); it != rows_.end(); ++it) {
        const auto value = values.constFind(it.key());
        it->input->setText(value == values.constEnd() ? QString() : QString::number(*value, 'f', 3));
        mark(*it, false);
    }
}

std::optional<QMap<int, double>> AxisPositionForm::readValues() {
    QMap<int, double> values;
    for (auto it = rows_.begin(); it != rows_.end(); ++it) {
        const std::optional<double> value = numberOf(*it->input);
        mark(*it, !value);
        if (value)
            values.insert(it.key(), *value);
    }
    return values.size() == rows_.size() ? std::optional(values) : std::nullopt;
}

QLineEdit* AxisPositionForm::firstMarked() const {
    for (const Row& row : rows_) {
        if (row.input->property(kBadNumber).toBool())
            return row.input;
    }
    return nullptr;
}

QWidget* AxisPositionForm::followInTabOrder(QWidget* before) const {
    for (const Row& row : rows_) {
        setTabOrder(before, row.input);
        before = row.input;
    }
    return before;
}

void AxisPositionForm::mark(const Row& row, bool isBad) {
    if (row.input->property(kBadNumber).toBool() == isBad)
        return;
    row.input->setProperty(kBadNumber, isBad);
    row.input->setStyleSheet(isBad ? QStringLiteral("QLineEdit { border: 2px solid #d02020; }") : QString());
    const QString sentence =
        LanguageReader::instance().text(QStringLiteral("HeaderTailEditor"), QStringLiteral("NumberErrorMsg"));
    const QString shown = isBad ? sentence.arg(row.label) : QString();
    row.input->setToolTip(shown);
    row.input->setAccessibleDescription(shown);
    Q_EMIT marksChanged();
}

}  // namespace TORNVALE
