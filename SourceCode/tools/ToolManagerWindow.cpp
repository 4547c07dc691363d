#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QKeySequence>
#include <QStyle>
#include <QStyleFactory>
#include <QToolBar>
#include <QVBoxLayout>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "tools/ToolData.h"
#include "tools/ToolEditor.h"
#include "tools/ToolManager.h"
#include "tools/ToolTree.h"

// The window of the tool library: tree, actions, tool bar. What the actions do stands in ToolManager.cpp.

namespace TORNVALE {

namespace {
QString text(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("ToolsManager"), QLatin1String(key));
}
}  // namespace

ToolsManager& ToolsManager::instance() {
    static ToolsManager* const kManager = new ToolsManager;  // owned by the process, never destroyed
    return *kManager;
}

ToolsManager::ToolsManager(QWidget* parent)
    : QWidget(parent), libraryPath_(installationPath(QStringLiteral("toollib.json"))) {
    setObjectName(QStringLiteral("ToolsManager"));
    setWindowFlag(Qt::Window);
    setWindowTitle(text("Title"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Tools.png")));
    resize(800, 600);
    closeOnEscape(*this);
    buildWindow();
    LoadingLocalTools();
}

ToolsManager::~ToolsManager() {
    ToolEditor::release(nullptr);
}

QTreeWidget* ToolsManager::treeWidget() const {
    return treeWidget_;
}

void ToolsManager::buildWindow() {
    treeWidget_ = new ToolTree(text("HeaderLables"), this);  // owned by this window
    if (QStyle* style = QStyleFactory::create(QStringLiteral("windows"))) {
        style->setParent(this);
        setStyle(style);
        treeWidget_->setStyle(style);
    }
    libraryRoot_ = treeWidget_->addRoot(text("LibraryToolManager"));
    installedRoot_ = treeWidget_->addRoot(text("InstalledToolManager"));
    installedRoot_->setFlags(installedRoot_->flags() & ~Qt::ItemIsSelectable);
    actions_ = {
        makeAction("AddTool", ":/Icon/add.png", Qt::Key_Insert, &ToolsManager::addNewTool),
        makeAction("EditTool", ":/Icon/editItem.png", Qt::Key_F2, &ToolsManager::editSelected),
        makeAction("RemoveTool", ":/Icon/delete.png", QKeySequence::Delete, &ToolsManager::removeSelected),
        makeAction("CopyTo", ":/Icon/Copy.png", QKeySequence(QStringLiteral("Ctrl+D")),
                   &ToolsManager::copySelectedTo),
        makeAction("ToolPreview", ":/Icon/preview.png", QKeySequence(QStringLiteral("Ctrl+P")),
                   &ToolsManager::previewSelected),
    };
    auto* bar = new QToolBar(this);  // owned by this window
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->addActions(actions_);
    treeWidget_->addActions(actions_);
    treeWidget_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(treeWidget_, &QTreeWidget::itemSelectionChanged, this, &ToolsManager::enableActions);
    connect(treeWidget_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* row) {
        if (toolOfRow(row) != nullptr)
            editSelected();
    });
    auto* layout = new QVBoxLayout(this);  // owned by this window
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(treeWidget_);
    enableActions();
}

QAction* ToolsManager::makeAction(const char* key, const char* icon, const QKeySequence& shortcut,
                                  void (ToolsManager::*slot)()) {
    auto* action = new QAction(QIcon(QLatin1String(icon)), text(key), this);  // owned by this window
    action->setObjectName(QLatin1String(key));
    action->setShortcut(shortcut);
    // As a tab of the main window the tree must not take that window's own shortcuts away.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void ToolsManager::enableActions() {
    const bool hasTool = !treeWidget_->selectedTools().isEmpty();
    for (QAction* action : actions_)
        action->setEnabled(hasTool || action->objectName() == QLatin1String("AddTool"));
}

void ToolsManager::closeEvent(QCloseEvent* event) {
    ToolEditor::release(nullptr);
    save();
    QWidget::closeEvent(event);
}

}  // namespace TORNVALE
