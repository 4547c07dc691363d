#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

#include "app/Tornvale.h"
#include "support/TestSupport.h"

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
    std::optional<QString> chooseItem(const QString& title, const QString& label,
                                      const QStringList& items) override;
    std::optional<double> askNumber(const QString& title, const QString& label, double value, double low,
                                    double high, int decimals) override;
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

/// The main window on the shipped five-axis machine, whose models are small cubes here, in English, in an
/// installation folder of its own, emptied for each bench.
class DocumentBench {
  public:
    DocumentBench();
    ~DocumentBench();
    DocumentBench(const DocumentBench&) = delete;
    DocumentBench& operator=(const DocumentBench&) = delete;

    Tornvale& open();
    /// The window goes without having been closed, as when the process is killed.
    void drop() { window_.reset(); }
    [[nodiscard]] Tornvale& window() { return *window_; }

    void trigger(const char* key);
    /// Saves under this name of the installation; the boxes that it showed.
    QStringList saveAs(const QString& name);
    /// Opens a document of this content; the boxes that it showed.
    QStringList load(const QByteArray& document);
    /// The texts of all programs, item after item, each part told apart.
    [[nodiscard]] QStringList programs() const;
    /// The head's field of this object name.
    [[nodiscard]] QString head(const char* field) const;
    [[nodiscard]] QString file(const QString& name) const { return installation().file(name); }
    [[nodiscard]] QByteArray bytes(const QString& name) const { return installation().read(name); }
    void write(const QString& name, const QByteArray& content) const { installation().write(name, content); }
    void settings(const QByteArray& lines) const;
    /// True once the file is there; false after ten seconds without it.
    [[nodiscard]] bool waitFor(const QString& name) const;

    static QByteArray golden(const QString& name);

  private:
    static TemporaryInstallation& installation();
    std::unique_ptr<Tornvale> window_;
};
