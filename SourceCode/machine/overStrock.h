#pragma once

#include <QMap>
#include <QString>
#include <QWidget>
#include <vector>

#include "machine/calc/AxisLimits.h"

class QLabel;
class QVBoxLayout;

/// Head of the table: the texts "Name", "Lower" and "Upper".
class AxisTitle : public QWidget {
    Q_OBJECT
  public:
    explicit AxisTitle(QWidget* parent = nullptr);
};

/// One row of the table: letter, lowest and highest value; a value is green within its limit, else red.
class AxisWidget : public QWidget {
    Q_OBJECT
  public:
    explicit AxisWidget(const AxisLimitRow& row, QWidget* parent = nullptr);

    [[nodiscard]] QLabel* letterLabel() const { return letter_; }
    [[nodiscard]] QLabel* minLabel() const { return min_; }
    [[nodiscard]] QLabel* maxLabel() const { return max_; }

  private:
    QLabel* letter_;
    QLabel* min_;
    QLabel* max_;
};

/// Checks a text of ISO code against the limits of the process's machine and shows one row per axis of the
/// chain. A badly formed direction in the machine file ends the process through qFatal.
class overStrock : public QWidget {
    Q_OBJECT
  public:
    overStrock(const QString& chain, const QString& code, QWidget* parent = nullptr);

    /// Fills the rows anew; a letter without an axis ends them.
    void initialAxisLimits(QMap<int, QChar> letters);
    /// Checks `code` and shows the rows as they were at the stopping point.
    void check(const QString& code);
    /// Whether the last check found a row outside its limits.
    [[nodiscard]] bool isExceeded() const { return exceeded_; }
    [[nodiscard]] const std::vector<AxisLimitRow>& rows() const { return rows_; }

  private:
    void showRows();

    bool exceeded_ = false;
    AxisMap letters_;
    std::vector<AxisLimitRow> rows_;
    QVBoxLayout* layout_ = nullptr;
    AxisTitle* title_ = nullptr;
};
