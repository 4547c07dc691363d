#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUndoStack>

#include "app/ProgressDialog.h"
#include "app/ProjectFile.h"
#include "app/RecoveryFile.h"
#include "app/Tornvale.h"
#include "app/UserInfoForm.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "items/CodeManagerItem.h"
#include "items/CodePanel.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"
#include "nc/myTimer.h"

// The programs in the main window: their tree, the code of the current one, undo, and the recovery copy.

using TORNVALE::CodeManagerItem;

void Tornvale::buildPrograms() {
    progress_ = std::make_unique<ProgressDialog>(this);
    programs_ = new TreeWidgetManager(*machine_, tabs_);  // owned by the tabs
    buildCodeDock();
    connect(programs_, &TreeWidgetManager::currentProgramChanged, this, &Tornvale::showCode);
    connect(programs_, &TreeWidgetManager::programRefreshed, this, [this](const CodeManagerItem* item) {
        if (item == programs_->currentProgram())
            showCode(programs_->currentProgram());
    });
    recovery_ = new RecoveryFile([this] { return projectObject(document(), applicationVersion()); },
                                 this);  // owned by this window
    connect(programs_, &TreeWidgetManager::programsEdited, recovery_, &RecoveryFile::jobChanged);
}

void Tornvale::buildCodeDock() {
    codeDock_ = new QDockWidget(windowText("", "CodeDockWidget"), this);  // owned by this window
    codeDock_->setObjectName(QStringLiteral("CodeDockWidget"));
    codeDock_->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    codePanel_ = new CodePanel(codeDock_);  // owned by the dock
    constexpr int kNarrowest_px = 200;
    codePanel_->setMinimumWidth(kNarrowest_px);
    codeDock_->setWidget(codePanel_);
    connect(codePanel_, &CodePanel::lineActivated, this, [this](const QString&, int index) {
        if (codePanel_->shownCode() == CodePanel::MachineCode && !TORNVALE::myTimer::isAnyPlaying())
            machine_->executeLine(codePanel_->modalLine(index));
    });
    // A line comes every 2 ms; where it stands in the text is asked only as often as somebody can see it.
    constexpr int kRefresh_ms = 40;
    auto* refresh = new QTimer(this);  // owned by this window
    refresh->setSingleShot(true);
    refresh->setInterval(kRefresh_ms);
    connect(machine_.get(), &MotionNodeManager::showCommandString, refresh, [refresh] {
        if (TORNVALE::myTimer::isAnyPlaying() && !refresh->isActive())
            refresh->start();
    });
    connect(refresh, &QTimer::timeout, this, [this] {
        if (codeIsPlayed_ && codePanel_->isVisible())
            codePanel_->setRunningLine(codePanel_->lineOfPlayed(TORNVALE::myTimer::currentLine()));
    });
    TORNVALE::myTimer::setProgramListener([this](const QString& text) { showPlayed(text); });
}

void Tornvale::showCode(CodeManagerItem* item) {
    codeIsPlayed_ = false;
    if (item == nullptr) {
        codePanel_->setTitle({});
        codePanel_->setTexts({}, {});
        return;
    }
    QString letters;
    for (const QChar letter : ConfigReader::instance().description().axisMap(item->chainName(), true))
        letters += letter;
    codePanel_->setAxisLetters(letters);
    codePanel_->setTitle(item->itemName());
    codePanel_->setTexts(item->WorkCode(), item->joinedCode());
}

/// What the playback runs is more than one item: the ways in and out belong to it.
void Tornvale::showPlayed(const QString& text) {
    if (text.isEmpty())
        return;
    const CodeManagerItem* item = programs_->currentProgram();
    codePanel_->setTitle(windowText("", "PlayedProgram"));
    codePanel_->setTexts(item ? item->WorkCode() : QString(), text);
    codePanel_->showCode(CodePanel::MachineCode);
    codeIsPlayed_ = true;
}

void Tornvale::addHistoryActions(QMenu& menu) {
    const auto add = [this, &menu](QAction* action, const char* key, const char* icon,
                                   QKeySequence::StandardKey shortcut) {
        action->setObjectName(QLatin1String(key));
        action->setIcon(QIcon(QStringLiteral(":/Icon/") + QLatin1String(icon)));
        action->setShortcuts(shortcut);
        menu.insertAction(menu.actions().value(0), action);
        addAction(action);
    };
    QUndoStack& history = programs_->history();
    add(history.createRedoAction(&menu, windowText("OperationMenu", "Redo")), "Redo", "redo.png",
        QKeySequence::Redo);
    add(history.createUndoAction(&menu, windowText("OperationMenu", "Undo")), "Undo", "undo.png",
        QKeySequence::Undo);
}

void Tornvale::playCurrent() {
    QTreeWidgetItem* const row = programs_->currentItem();
    if (auto* item = dynamic_cast<CodeManagerItem*>(row))
        item->play();
    else if (auto* group = dynamic_cast<UserTopItem*>(row))
        group->play();
    else
        programs_->root().play();
}

void Tornvale::generateNcFile() {
    // The file takes its name from the document, so the document must be on disk.
    if (!SaveFile())
        return;
    if (const std::optional<QString> seconds = programs_->GenerateIsoCode(documentPath_))
        userInfo_->setMachiningTime(*seconds);
}

void Tornvale::offerRecovery() {
    const std::optional<QString> left = RecoveryFile::leftBehind();
    if (!left)
        return;
    if (!userDialogs().ask(windowText("Recovery", "Title"), windowText("Recovery", "AskRecover"), this)) {
        RecoveryFile::setAside();
        return;
    }
    QByteArray content;
    const std::optional<ProjectDocument> project =
        ProjectFile::read(*left, content) ? readProject(content) : std::nullopt;
    if (!project) {
        RecoveryFile::setAside();
        userDialogs().tell(UserDialogs::Kind::Warning, windowText("Recovery", "Title"),
                           windowText("OpenFile", "EncodingErrorMsg") + QLatin1Char('\n') + *left, this);
        return;
    }
    clearState();
    LoadDocument(*project);
    // The job is not saved under any name yet.
    documentPath_.clear();
    showName(windowText("Recovery", "Title"));
    savedMark_ = {};
    recovery_->adopt();
}
