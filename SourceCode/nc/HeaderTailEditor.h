#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

class FormatItems;
struct HeaderTailRecord;
class QButtonGroup;
class QComboBox;
class QGroupBox;
class QKeyEvent;
class QLabel;

namespace TORNVALE {

class AxisPositionForm;

/// The window that edits, axis by axis, where the programs of a group start and end on each chain. Nothing is
/// stored before "Apply" or "Ok"; "Optimal" and "Reset" change the record at once.
class HeaderTailEditor : public QWidget {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use.
    static HeaderTailEditor& instance();

    explicit HeaderTailEditor(QWidget* parent = nullptr);
    ~HeaderTailEditor() override;
    HeaderTailEditor(const HeaderTailEditor&) = delete;
    HeaderTailEditor& operator=(const HeaderTailEditor&) = delete;

    /// Shows the records of a group. The list stays its owner's; when it goes the window closes.
    void Edit(FormatItems* items);
    [[nodiscard]] FormatItems* items() const { return life_.isNull() ? nullptr : items_; }

  Q_SIGNALS:
    /// The user has changed the record of a chain.
    void changed(const QString& chain);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum Button { kOptimal, kReset, kApply, kOk };

    void makeButtons();
    void makeForms();
    void showRecord();
    void showFault();
    void buttonClicked(int id);
    bool apply();
    /// Runs `change` on the record in edit, shows the result and tells when it is another one.
    void changeRecord(const std::function<void(HeaderTailRecord&)>& change);
    void forget();
    [[nodiscard]] HeaderTailRecord* record() const;

    QPointer<const QObject> life_;  ///< null once `items_` has gone
    FormatItems* items_ = nullptr;
    QComboBox* chain_;
    QGroupBox* headerBox_;
    QGroupBox* tailBox_;
    QLabel* fault_;  ///< what is wrong with the first input that holds no number
    QButtonGroup* buttons_;
    QPointer<AxisPositionForm> header_;  ///< null before a chain is chosen
    QPointer<AxisPositionForm> tail_;
};

}  // namespace TORNVALE
