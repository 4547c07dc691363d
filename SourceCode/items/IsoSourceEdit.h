#pragma once

#include <QPlainTextEdit>
#include <QString>

class QTimer;

namespace TORNVALE {

/// The text of an ISO program. What the user does not edit comes back to the letter, line ends included.
/// Long programs are filled in piece by piece while the window goes on working, and are read-only until they
/// are complete; a text beyond all editing is kept, and only its beginning is shown.
class IsoSourceEdit : public QPlainTextEdit {
    Q_OBJECT
  public:
    // A document of a million lines takes half a gigabyte, and a line is laid out as a whole.
    static constexpr int kMostLines = 1'500'000;
    static constexpr int kMostCharacters = 64'000'000;
    static constexpr int kLongestLine = 20'000;

    explicit IsoSourceEdit(QWidget* parent = nullptr);

    void setSource(const QString& source);
    [[nodiscard]] QString source() const;
    /// The user has changed the text since it was set or taken over.
    [[nodiscard]] bool isEdited() const;
    /// Gives the text, which then counts as not edited; cursor and view stay.
    [[nodiscard]] QString takeSource();
    /// Only the beginning is shown.
    [[nodiscard]] bool isCut() const { return isCut_; }
    [[nodiscard]] bool isLoading() const { return loaded_ < shown_.size(); }

    /// Selects the line of a diagnostic (1-based) and brings it into view; 0 takes the mark away.
    void markLine(int line);

  private:
    void loadPiece();
    void finishLoading();
    void showMark();
    [[nodiscard]] QString shownText() const;

    QString source_;
    QString shown_;       ///< while it is filled in
    int loaded_ = 0;      ///< characters of `shown_` that the document has
    int markedLine_ = 0;  ///< of the source
    bool isCut_ = false;
    QTimer* pieces_;
};

}  // namespace TORNVALE
