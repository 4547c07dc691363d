#pragma once

#include <QMap>
#include <QWidget>

#include "app/calc/ProjectDocument.h"

class QFormLayout;
class QLineEdit;
class QPlainTextEdit;

/// The job's head as a form. The fields' object names are their language keys of "Tornvale/UserInfoWidget".
class UserInfoForm : public QWidget {
    Q_OBJECT
  public:
    explicit UserInfoForm(QWidget* parent = nullptr);

    [[nodiscard]] ProjectHead head() const;
    void setHead(const ProjectHead& head);
    /// Empty fields and a machining time of 0.0.
    void clear();
    void setCreatedTime(const QString& text);
    /// Seconds, as text.
    void setMachiningTime(const QString& text);

  Q_SIGNALS:
    /// The user has typed into the form.
    void edited();

  private:
    QLineEdit* addField(QFormLayout& form, const char* key, bool readOnly = false);

    QLineEdit* productName_;
    QLineEdit* productNumber_;
    QLineEdit* partName_;
    QLineEdit* partNumber_;
    QLineEdit* machiningTime_;
    QLineEdit* createdTime_;
    QPlainTextEdit* otherInfo_;
};
