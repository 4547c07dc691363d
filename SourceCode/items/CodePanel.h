#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>

#include "items/CodeDelegate.h"
#include "items/CodeModel.h"
#include "items/calc/CodeSearch.h"

class CodeSearchBar;
class CodeView;
class QLabel;
class QTabBar;

/// NC text beside the 3D scene: the work code and the machine code of one item, the running line, a search,
/// and a click that tells which line the machine is to move to. Lines count from 0; the user sees them
/// from 1. Texts are shared, not copied, and cost nothing while the panel is hidden.
class CodePanel : public QWidget {
    Q_OBJECT
  public:
    enum Code : int { WorkCode = 0, MachineCode = 1 };

    explicit CodePanel(QWidget* parent = nullptr);
    ~CodePanel() override;
    CodePanel(const CodePanel&) = delete;
    CodePanel& operator=(const CodePanel&) = delete;

    /// A text that is the one already there keeps its place and its running line; another one starts anew.
    void setTexts(const QString& workCode, const QString& machineCode);
    /// The item's name above the lists; empty for none.
    void setTitle(const QString& name);
    [[nodiscard]] Code shownCode() const { return shown_; }
    void showCode(Code code);

    /// Marks line `line` of the machine code and keeps it in sight; -1 for none. To be called for each played
    /// line: it stores the number, and the list follows about 25 times a second while it is in sight.
    void setRunningLine(int line);
    /// The machine code's line that the playback, which leaves out empty lines, counts as `played`; -1 for
    /// none.
    [[nodiscard]] int lineOfPlayed(int played);

    /// Letters of the axes of the item's chain, for modalLine; "XYZABCUVW" at first.
    void setAxisLetters(const QString& letters) { axisLetters_ = letters; }
    /// Line `index` of the shown code with the axis words that it leaves to earlier lines, see ModalLine.h.
    [[nodiscard]] QString modalLine(int index);
    [[nodiscard]] int lineCount();
    /// Line of the list's cursor; -1 for none.
    [[nodiscard]] int currentLine() const;
    /// Moves the list's cursor, without lineActivated.
    void goToLine(int line);

  Q_SIGNALS:
    /// The user went to this line of the shown code by click, Enter or the arrow keys. Lines beyond
    /// CodeModel::kShownLetters letters are no moves and are not told.
    void lineActivated(const QString& line, int index);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    struct Text {
        QString text;
        std::shared_ptr<const CodeLines> lines;  ///< nullptr until it is needed
        int row = -1;
        int top = 0;
    };
    void buildWidgets();
    void buildActions();
    void addEntry(const char* key, const QKeySequence& shortcut, void (CodePanel::*slot)());
    const CodeLines& linesOf(Code code);
    void applyText();
    void applyRunningLine();
    void activate(int row);
    void showStatus();
    void copy();
    void selectAll();
    void askLine();
    void openSearch();
    void closeSearch();
    void searchAnew();
    void findNext();
    void findPrevious();
    void goToMatch(CodeSearch::Found found, int change);
    void forgetMatch();
    [[nodiscard]] bool onMatch() const;

    std::array<Text, 2> texts_;
    Code shown_ = WorkCode;
    bool stale_ = false;  ///< the list does not show the shown code yet
    QString axisLetters_ = QStringLiteral("XYZABCUVW");
    int runningLine_ = -1;
    QTimer runningTimer_;
    CodeSearch search_;
    int match_ = -1;  ///< offset of the current match
    CodeSearch::Count found_;

    CodeModel model_;
    CodeDelegate delegate_{model_};
    QLabel* title_ = nullptr;
    QTabBar* tabs_ = nullptr;
    CodeView* view_ = nullptr;
    CodeSearchBar* searchBar_ = nullptr;
    QLabel* status_ = nullptr;
};
