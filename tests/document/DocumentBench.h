#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "../app/MainWindowBench.h"

/// Answers every question with No, every other dialog with nothing, and keeps what was told. The next save
/// dialog gives `saveTo`, an open dialog `openFrom`.
class CollectedDialogs final : public UserDialogs {
  public:
    CollectedDialogs() { setUserDialogs(this); }
    ~CollectedDialogs() override { setUserDialogs(nullptr); }
    CollectedDialogs(const CollectedDialogs&) = delete;
    CollectedDialogs& operator=(const CollectedDialogs&) = delete;

    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override;
    bool ask(const QString& title, const QString& text, QWidget* parent) override;
    QString openFile(const QString& caption, const QString& folder, const QString& filter) override;
    QString saveFile(const QString& caption, const QString& folder, const QString& filter) override;
    Keep askToSave(const QString& title, const QString& text, QWidget* parent) override;

    QString saveTo;
    QString openFrom;
    bool answer = false;
    Keep keep = Keep::Discard;
    QStringList told;  ///< texts of boxes, in order
    QStringList asked;
};

/// The main window on the shipped five-axis machine, whose models are small cubes here.
class DocumentBench : public MainWindowBench {
  public:
    DocumentBench();

    /// Saves under this name of the installation; the boxes that it showed.
    QStringList saveAs(const QString& name);
    /// Opens a document of this content; the boxes that it showed.
    QStringList load(const QByteArray& document);
    /// The texts of all programs, item after item, each part told apart.
    [[nodiscard]] QStringList programs() const;
    /// The head's field of this object name.
    [[nodiscard]] QString head(const char* field) const;
    void settings(const QByteArray& lines) const;
    /// True once the file is there; false after ten seconds without it.
    [[nodiscard]] bool waitFor(const QString& name) const;

    static QByteArray golden(const QString& name);
};
