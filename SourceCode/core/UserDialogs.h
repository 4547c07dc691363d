#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

/// Everything the system asks or tells its user in a modal box. The window shows Qt dialogs; the batch
/// tool and the tests answer through implementations of their own.
class UserDialogs {
  public:
    enum class Kind { Information, Warning, Critical };

    virtual ~UserDialogs() = default;

    /// Shows a box with one OK button.
    virtual void tell(Kind kind, const QString& title, const QString& text, QWidget* parent = nullptr) = 0;
    /// Yes or No; without a user the answer is No, the one that changes nothing.
    [[nodiscard]] virtual bool ask(const QString& /*title*/, const QString& /*text*/,
                                   QWidget* /*parent*/ = nullptr) {
        return false;
    }
    /// Yes or No, for a question that can also be given up: nothing then, and nothing may happen.
    [[nodiscard]] virtual std::optional<bool> askOrCancel(const QString& title, const QString& text,
                                                          QWidget* parent = nullptr) {
        return ask(title, text, parent);
    }
    /// One of `items`; nothing when cancelled, which is the answer without a user, here and below. An empty
    /// list gives an empty text.
    [[nodiscard]] virtual std::optional<QString> chooseItem(const QString& /*title*/,
                                                            const QString& /*label*/,
                                                            const QStringList& /*items*/) {
        return std::nullopt;
    }
    /// The same with the item of index `current` chosen at first.
    [[nodiscard]] virtual std::optional<QString> chooseItemFrom(const QString& title, const QString& label,
                                                                const QStringList& items, int /*current*/) {
        return chooseItem(title, label, items);
    }
    /// A number within [low, high]; nothing when cancelled.
    [[nodiscard]] virtual std::optional<double> askNumber(const QString& /*title*/, const QString& /*label*/,
                                                          double /*value*/, double /*low*/, double /*high*/,
                                                          int /*decimals*/) {
        return std::nullopt;
    }
    /// A path; empty when cancelled.
    [[nodiscard]] virtual QString openFile(const QString& /*caption*/, const QString& /*folder*/,
                                           const QString& /*filter*/) {
        return {};
    }
    [[nodiscard]] virtual QString saveFile(const QString& /*caption*/, const QString& /*folder*/,
                                           const QString& /*filter*/) {
        return {};
    }
    /// A folder; empty when cancelled.
    [[nodiscard]] virtual QString chooseFolder(const QString& /*caption*/, const QString& /*folder*/) {
        return {};
    }
    /// Nothing when cancelled.
    [[nodiscard]] virtual std::optional<QColor> chooseColor(const QString& /*title*/,
                                                            const QColor& /*initial*/) {
        return std::nullopt;
    }
    /// What to do with changes that are not saved. Without a user nothing may be lost: Cancel.
    enum class Keep { Save, Discard, Cancel };
    [[nodiscard]] virtual Keep askToSave(const QString& /*title*/, const QString& /*text*/,
                                         QWidget* /*parent*/ = nullptr) {
        return Keep::Cancel;
    }
};

/// The dialogs in use: Qt's until another implementation is set.
[[nodiscard]] UserDialogs& userDialogs();

/// `dialogs` is not owned and must outlive its use; nullptr goes back to Qt's dialogs.
void setUserDialogs(UserDialogs* dialogs);
