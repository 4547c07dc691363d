#pragma once

#include <QAbstractListModel>
#include <memory>

#include "items/calc/CodeLines.h"

/// The lines of one NC text as rows. Holds the text once, shared with its owner.
class CodeModel : public QAbstractListModel {
    Q_OBJECT
  public:
    /// Letters of a line that are shown; longer lines are clipped.
    static constexpr int kShownLetters = 1000;

    explicit CodeModel(QObject* parent = nullptr);

    void setLines(std::shared_ptr<const CodeLines> lines);
    [[nodiscard]] const CodeLines& lines() const { return *lines_; }
    /// Line `row` as it is drawn: clipped, and each control character replaced by one visible letter.
    [[nodiscard]] QString shownText(int row) const;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

  private:
    std::shared_ptr<const CodeLines> lines_;
};
