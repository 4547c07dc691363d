#pragma once

#include <QString>
#include <QTranslator>

/// The texts that Qt brings itself (buttons of boxes, file and colour dialogs) in the program's language, in
/// force while the object lives. They come from the translations of the Qt installation.
class QtTexts {
  public:
    /// `language` is a value of `MainInterface/Language`; Chinese for a name that is none, as everywhere.
    explicit QtTexts(const QString& language);

    /// False when the Qt installation has no translation; its texts are English then, which the log tells.
    [[nodiscard]] bool isComplete() const { return isComplete_; }

  private:
    QTranslator translator_;
    bool isComplete_ = true;
};
