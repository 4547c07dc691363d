#include "core/UserDialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QGridLayout>
#include <QIcon>
#include <QInputDialog>
#include <QMessageBox>

namespace {

/// A box that is wide enough for its title: Qt leaves less room for the frame's buttons than they take. Gives
/// the button that was pressed.
int showBox(QMessageBox::Icon icon, const QString& title, const QString& text,
            QMessageBox::StandardButtons buttons, QMessageBox::StandardButton first, QWidget* parent) {
    constexpr int kFrameButtons_px = 160;
    QMessageBox box(icon, title, text, buttons, parent);
    box.setDefaultButton(first);
    box.setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        const int width_px = box.fontMetrics().horizontalAdvance(title) + kFrameButtons_px;
        grid->addItem(new QSpacerItem(width_px, 0), grid->rowCount(), 0, 1,
                      grid->columnCount());  // owned by it
    }
    return box.exec();
}

class QtUserDialogs final : public UserDialogs {
  public:
    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override {
        showBox(icon(kind), title, text, QMessageBox::Ok, QMessageBox::Ok, parent);
    }

    bool ask(const QString& title, const QString& text, QWidget* parent) override {
        return showBox(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                       QMessageBox::No, parent) == QMessageBox::Yes;
    }

    std::optional<bool> askOrCancel(const QString& title, const QString& text, QWidget* parent) override {
        switch (showBox(QMessageBox::Question, title, text,
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes, parent)) {
            case QMessageBox::Yes:
                return true;
            case QMessageBox::No:
                return false;
            default:
                return std::nullopt;
        }
    }

    std::optional<QString> chooseItem(const QString& title, const QString& label,
                                      const QStringList& items) override {
        bool accepted = false;
        const QString item = QInputDialog::getItem(nullptr, title, label, items, 0, false, &accepted);
        return accepted ? std::optional<QString>(item) : std::nullopt;
    }

    std::optional<QString> chooseItemFrom(const QString& title, const QString& label,
                                          const QStringList& items, int current) override {
        bool accepted = false;
        const QString item = QInputDialog::getItem(nullptr, title, label, items, current, false, &accepted);
        return accepted ? std::optional<QString>(item) : std::nullopt;
    }

    std::optional<double> askNumber(const QString& title, const QString& label, double value, double low,
                                    double high, int decimals) override {
        bool accepted = false;
        const double number =
            QInputDialog::getDouble(nullptr, title, label, value, low, high, decimals, &accepted);
        return accepted ? std::optional<double>(number) : std::nullopt;
    }

    QString openFile(const QString& caption, const QString& folder, const QString& filter) override {
        return QFileDialog::getOpenFileName(nullptr, caption, folder, filter);
    }

    QString saveFile(const QString& caption, const QString& folder, const QString& filter) override {
        return QFileDialog::getSaveFileName(nullptr, caption, folder, filter);
    }

    QString chooseFolder(const QString& caption, const QString& folder) override {
        return QFileDialog::getExistingDirectory(nullptr, caption, folder);
    }

    std::optional<QColor> chooseColor(const QString& title, const QColor& initial) override {
        const QColor color = QColorDialog::getColor(initial, nullptr, title);
        return color.isValid() ? std::optional<QColor>(color) : std::nullopt;
    }

    Keep askToSave(const QString& title, const QString& text, QWidget* parent) override {
        switch (showBox(QMessageBox::Question, title, text,
                        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save,
                        parent)) {
            case QMessageBox::Save:
                return Keep::Save;
            case QMessageBox::Discard:
                return Keep::Discard;
            default:
                return Keep::Cancel;
        }
    }

  private:
    static QMessageBox::Icon icon(Kind kind) {
        switch (kind) {
            case Kind::Information:
                return QMessageBox::Information;
            case Kind::Warning:
                return QMessageBox::Warning;
            case Kind::Critical:
                return QMessageBox::Critical;
        }
        return QMessageBox::NoIcon;
    }
};

UserDialogs*& chosenDialogs() {
    static UserDialogs* dialogs = nullptr;
    return dialogs;
}

}  // namespace

UserDialogs& userDialogs() {
    static QtUserDialogs qtDialogs;
    return chosenDialogs() != nullptr ? *chosenDialogs() : qtDialogs;
}

void setUserDialogs(UserDialogs* dialogs) {
    chosenDialogs() = dialogs;
}
