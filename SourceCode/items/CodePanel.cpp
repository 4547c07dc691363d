#include "items/CodePanel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QLabel>
#include <QShowEvent>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/CodeSearchBar.h"
#include "items/CodeView.h"
#include "items/calc/ModalLine.h"

namespace {

constexpr int kFollowPeriod_ms = 40;

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("CodePanel"), QString::fromLatin1(key));
}

bool isSame(const QString& one, const QString& other) {
    return one.size() == other.size() && (one.constData() == other.constData() || one == other);
}

}  // namespace

CodePanel::CodePanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CodePanel"));
    runningTimer_.setSingleShot(true);
    runningTimer_.setInterval(kFollowPeriod_ms);
    connect(&runningTimer_, &QTimer::timeout, this, &CodePanel::applyRunningLine);
    buildWidgets();
    buildActions();
    setTitle({});
}

CodePanel::~CodePanel() {
    delete view_;  // it draws with the model and the delegate, which go before the children
}

void CodePanel::buildWidgets() {
    title_ = new QLabel(this);  // owned by this widget
    title_->setObjectName(QStringLiteral("CodeTitle"));
    title_->setTextFormat(Qt::PlainText);
    title_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    tabs_ = new QTabBar(this);  // owned by this widget
    tabs_->setObjectName(QStringLiteral("CodeTabs"));
    tabs_->setDrawBase(false);
    tabs_->addTab(textOf("WorkCode"));
    tabs_->addTab(textOf("MachineCode"));
    view_ = new CodeView(model_, delegate_, this);  // owned by this widget
    view_->setObjectName(QStringLiteral("CodeView"));
    view_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view_->setEmptyText(textOf("NoCode"));
    searchBar_ = new CodeSearchBar(this);  // owned by this widget
    searchBar_->hide();
    status_ = new QLabel(this);  // owned by this widget
    status_->setObjectName(QStringLiteral("LineStatus"));

    auto* column = new QVBoxLayout(this);  // owned by this widget
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(3);
    column->addWidget(title_);
    column->addWidget(tabs_);
    column->addWidget(view_, 1);
    column->addWidget(searchBar_);
    column->addWidget(status_);

    connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) { showCode(static_cast<Code>(tab)); });
    connect(view_, &CodeView::lineChosen, this, &CodePanel::activate);
    connect(view_, &CodeView::currentRowChanged, this, &CodePanel::showStatus);
    connect(searchBar_, &CodeSearchBar::needleChanged, this, &CodePanel::searchAnew);
    connect(searchBar_, &CodeSearchBar::nextAsked, this, &CodePanel::findNext);
    connect(searchBar_, &CodeSearchBar::previousAsked, this, &CodePanel::findPrevious);
    connect(searchBar_, &CodeSearchBar::closed, this, &CodePanel::closeSearch);
}

void CodePanel::addEntry(const char* key, const QKeySequence& shortcut, void (CodePanel::*slot)()) {
    auto* action = new QAction(textOf(key), this);  // owned by this widget
    action->setObjectName(QString::fromLatin1(key));
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
    view_->addAction(action);
}

void CodePanel::buildActions() {
    const auto addSeparator = [this] {
        auto* separator = new QAction(this);  // owned by this widget
        separator->setSeparator(true);
        view_->addAction(separator);
    };
    addEntry("Copy", QKeySequence::Copy, &CodePanel::copy);
    addEntry("SelectAll", QKeySequence::SelectAll, &CodePanel::selectAll);
    addSeparator();
    addEntry("Find", QKeySequence::Find, &CodePanel::openSearch);
    addEntry("FindNext", QKeySequence(QStringLiteral("F3")), &CodePanel::findNext);
    addEntry("FindPrevious", QKeySequence(QStringLiteral("Shift+F3")), &CodePanel::findPrevious);
    addSeparator();
    addEntry("GoToLine", QKeySequence(QStringLiteral("Ctrl+G")), &CodePanel::askLine);
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

// --- what is shown ---

void CodePanel::setTitle(const QString& name) {
    title_->setText(name);
    title_->setToolTip(name);
    title_->setVisible(!name.isEmpty());
}

void CodePanel::setTexts(const QString& workCode, const QString& machineCode) {
    const std::array<const QString*, 2> given{&workCode, &machineCode};
    for (const Code code : {WorkCode, MachineCode}) {
        Text& text = texts_.at(code);
        if (isSame(text.text, *given.at(code)))
            continue;
        text = Text{*given.at(code), nullptr, -1, 0};
        stale_ = stale_ || code == shown_;
        if (code == MachineCode)
            runningLine_ = -1;
    }
    if (!stale_)
        return;
    if (isVisible())
        applyText();
    else
        model_.setLines(std::make_shared<const CodeLines>());  // lets go of the former text
}

void CodePanel::showCode(Code code) {
    if (code == shown_)
        return;
    if (!stale_) {
        texts_.at(shown_).row = view_->currentRow();
        texts_.at(shown_).top = view_->topRow();
    }
    shown_ = code;
    tabs_->setCurrentIndex(code);
    stale_ = true;
    if (isVisible())
        applyText();
}

void CodePanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (stale_)
        applyText();
    else
        applyRunningLine();
}

const CodeLines& CodePanel::linesOf(Code code) {
    Text& text = texts_.at(code);
    if (text.lines == nullptr)
        text.lines = std::make_shared<const CodeLines>(text.text);
    return *text.lines;
}

void CodePanel::applyText() {
    stale_ = false;
    linesOf(shown_);
    const Text& text = texts_.at(shown_);
    forgetMatch();
    model_.setLines(text.lines);
    view_->goTo(text.row);
    view_->setTopRow(text.top);
    applyRunningLine();
    showStatus();
}

int CodePanel::lineCount() {
    return linesOf(shown_).count();
}

int CodePanel::currentLine() const {
    return stale_ ? texts_.at(shown_).row : view_->currentRow();
}

void CodePanel::goToLine(int line) {
    if (line < 0 || line >= lineCount())
        return;
    if (stale_) {
        texts_.at(shown_).row = line;
        texts_.at(shown_).top = line;
    } else {
        view_->goTo(line);
    }
}

void CodePanel::showStatus() {
    const int count = model_.lines().count();
    const int running = delegate_.runningLine();
    const int line = running >= 0 ? running : view_->currentRow();
    status_->setText(count == 0 ? QString() : textOf("LineStatus").arg(line + 1).arg(count));
}

// --- the machine ---

void CodePanel::setRunningLine(int line) {
    runningLine_ = line;
    if (!runningTimer_.isActive() && isVisible())
        runningTimer_.start();
}

void CodePanel::applyRunningLine() {
    if (!isVisible() || stale_)
        return;
    const int line = shown_ == MachineCode ? std::min(runningLine_, model_.lines().count() - 1) : -1;
    if (line == delegate_.runningLine())
        return;
    view_->setRunningLine(line);
    showStatus();
}

int CodePanel::lineOfPlayed(int played) {
    return linesOf(MachineCode).lineOfPlayed(played);
}

QString CodePanel::modalLine(int index) {
    return ::modalLine(linesOf(shown_), index, axisLetters_);
}

void CodePanel::activate(int row) {
    const QStringView line = linesOf(shown_).line(row);
    if (line.size() <= CodeModel::kShownLetters)
        Q_EMIT lineActivated(line.toString(), row);
}

// --- commands ---

void CodePanel::copy() {
    const QString text = view_->selectedText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void CodePanel::selectAll() {
    view_->selectAll();
}

void CodePanel::askLine() {
    const int count = model_.lines().count();
    if (count == 0)
        return;
    const int current = std::max(view_->currentRow(), 0);
    const std::optional<double> line =
        userDialogs().askNumber(textOf("GoToLine"), textOf("GoToLineLabel"), current + 1, 1, count, 0);
    if (!line)
        return;
    goToLine(static_cast<int>(std::clamp(*line, 1.0, static_cast<double>(count))) - 1);
    view_->setFocus();
}

// --- search ---

void CodePanel::openSearch() {
    searchBar_->open();
    if (searchBar_->needle().isEmpty() || onMatch())
        return;
    searchAnew();
}

void CodePanel::closeSearch() {
    searchBar_->hide();
    view_->setSearch({}, -1);
    view_->setFocus();
}

void CodePanel::forgetMatch() {
    match_ = -1;
    found_ = {};
    searchBar_->showNothing();
    view_->setSearch(searchBar_->isVisible() ? search_ : CodeSearch(), -1);
}

bool CodePanel::onMatch() const {
    return match_ >= 0 && model_.lines().lineAt(match_) == view_->currentRow();
}

void CodePanel::searchAnew() {
    const int from = onMatch() ? match_ : model_.lines().start(view_->currentRow());
    search_ = CodeSearch(searchBar_->needle(), searchBar_->sensitivity());
    forgetMatch();
    if (!search_.isEmpty())
        goToMatch(search_.nextWrapped(model_.lines().text(), from), 0);
}

void CodePanel::findNext() {
    if (search_.isEmpty()) {
        openSearch();
        return;
    }
    const bool step = onMatch();
    const int from = step ? match_ + 1 : model_.lines().start(view_->currentRow());
    goToMatch(search_.nextWrapped(model_.lines().text(), from), step ? 1 : 0);
}

void CodePanel::findPrevious() {
    if (search_.isEmpty()) {
        openSearch();
        return;
    }
    const bool step = onMatch();
    const int from = (step ? match_ : model_.lines().start(view_->currentRow())) - 1;
    goToMatch(search_.previousWrapped(model_.lines().text(), from), step ? -1 : 0);
}

void CodePanel::goToMatch(CodeSearch::Found found, int change) {
    match_ = found.offset;
    if (match_ < 0)
        found_ = {};
    else if (change == 0)
        found_ = search_.count(model_.lines().text(), match_);  // the one full pass; steps only count on
    else if (found.wrapped)
        found_.number = change > 0 ? 1 : found_.total;
    else
        found_.number += change;
    view_->setSearch(search_, match_);
    searchBar_->showFound(found_.number, found_.total, found.wrapped);
    if (match_ >= 0)
        view_->goToMatch(match_, search_.length());
}
