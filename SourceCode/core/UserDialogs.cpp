#include "core/UserDialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QIcon>
#include <QInputDialog>
#include <QMessageBox>

namespace {

class QtUserDialogs final : public UserDialogs {
  public:
    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override {
        QMessageBox box(icon(kind), title, text, QMessageBox::Ok, parent);
        box.setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
        box.exec();
    }

    bool ask(const QString& title, const QString& text, QWidget* parent) override {
        return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    }

    std::optional<bool> askOrCancel(const QString& title, const QString& text, QWidget* parent) override {
        switch (QMessageBox::question(parent, title, text,
                                      QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                      QMessageBox::Yes)) {
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
        switch (QMessageBox::question(parent, title, text,
                                      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                      QMessageBox::Save)) {
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
