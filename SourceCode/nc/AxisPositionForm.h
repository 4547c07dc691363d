#pragma once

#include <QMap>
#include <QString>
#include <QWidget>
#include <optional>

class QLineEdit;

namespace TORNVALE {

/// One row for each axis: its label and an input for its value. An input that holds no number is framed in
/// red and says what it expects; what was typed stays.
class AxisPositionForm : public QWidget {
    Q_OBJECT
  public:
    /// Labels by axis id; the rows stand by rising id. Each input carries its id in the property "id".
    explicit AxisPositionForm(const QMap<int, QString>& axes, QWidget* parent = nullptr);

    /// Shows the values with three decimals; an axis without a value has an empty input.
    void setValues(const QMap<int, double>& values);
    /// The values of all axes; nothing when an input holds no number, and each of those is marked.
    [[nodiscard]] std::optional<QMap<int, double>> readValues();
    /// The first input that is marked, its sentence is the tool tip; nullptr when there is none.
    [[nodiscard]] QLineEdit* firstMarked() const;

    /// Puts the inputs behind `before` in the order of the tab key; returns the last of them.
    QWidget* followInTabOrder(QWidget* before) const;

  Q_SIGNALS:
    /// An input was marked, or a mark went.
    void marksChanged();

  private:
    struct Row {
        QString label;
        QLineEdit* input = nullptr;
    };
    void mark(const Row& row, bool isBad);

    QMap<int, Row> rows_;
};

}  // namespace TORNVALE
