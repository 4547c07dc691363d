#include "app/Tornvale.h"

#include <QDebug>
#include <QDockWidget>
#include <QIcon>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <cstdlib>

#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "app/ProgressDialog.h"
#include "app/RecoveryFile.h"
#include "app/UserInfoForm.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/RecentFiles.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "core/calc/SettingValues.h"
#include "items/CodePanel.h"
#include "items/TreeWidgetManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/MotionNodeTreeWidget.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "nc/myTimer.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

constexpr int kOptimal = 0;
constexpr int kCam = 1;

QString setting(const char* key) {
    return ParaReader().value(QLatin1String(key)).toString();
}

QTabWidget::TabPosition tabPlace(TabSide side) {
    switch (side) {
        case TabSide::East:
            return QTabWidget::East;
        case TabSide::South:
            return QTabWidget::South;
        case TabSide::North:
            return QTabWidget::North;
        case TabSide::West:
            break;
    }
    return QTabWidget::West;
}

Qt::DockWidgetArea dockPlace(DockArea area) {
    switch (area) {
        case DockArea::Right:
            return Qt::RightDockWidgetArea;
        case DockArea::Top:
            return Qt::TopDockWidgetArea;
        case DockArea::Bottom:
            return Qt::BottomDockWidgetArea;
        case DockArea::Left:
            break;
    }
    return Qt::LeftDockWidgetArea;
}

QColor colorOf(const std::array<double, 3>& parts) {
    return QColor::fromRgbF(qBound(0.0, parts[0], 1.0), qBound(0.0, parts[1], 1.0),
                            qBound(0.0, parts[2], 1.0));
}

QScrollArea* scrollable(QWidget* page) {
    auto* area = new QScrollArea;  // owned by the tabs
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(page);
    return area;
}

}  // namespace

QString windowText(const char* group, const char* key) {
    const QString path = QStringLiteral("Tornvale/") + QLatin1String(group);
    return TORNVALE::LanguageReader::instance().text(*group == '\0' ? QStringLiteral("Tornvale") : path,
                                                     QLatin1String(key));
}

Tornvale::Tornvale(const QString& machinePath, QWidget* parent) : QMainWindow(parent) {
    sinceStart_.start();
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    setAcceptDrops(true);
    setObjectName(QStringLiteral("StandardCorvane_4S"));  // key of the job's head, whatever the machine
    showName(applicationVersion());
    ConfigReader::instance().SetConfig(machinePath);
    stack_ = new QStackedWidget(this);  // owned by this window
    setCentralWidget(stack_);
    buildSharedToolBar();
    InitialOptimalWidget();
    updateLayout();
    loadTemplate();
    rememberSaved();
    sharedToolBar_->setVisible(false);
    programs_->setFocus();
    resize(1280, 800);
}

Tornvale::~Tornvale() {
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.setParent(nullptr);  // it lives as long as the process
    TORNVALE::myTimer::setProgramListener({});
    delete programs_;  // its paths hang in the machine's scene
    delete viewer_;    // the machine's scene goes after what shows it
    delete machineTree_;
    if (QWidget* spindles = machine_->spindleStatusWindow())
        spindles->setParent(nullptr);
    // These live longer than the window.
    for (QToolBar* bar : {machine_->toolBar(), TORNVALE::UserPostProcessor::instance().GetToolBar()}) {
        if (bar != nullptr)
            bar->setParent(nullptr);
    }
}

void Tornvale::buildSharedToolBar() {
    sharedToolBar_ = new QToolBar(this);  // owned by this window
    sharedToolBar_->setObjectName(QStringLiteral("SharedToolBar"));
    sharedToolBar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    QAction* optimal =
        sharedToolBar_->addAction(QIcon(QStringLiteral(":/Icon/optimal.png")), QStringLiteral("Optimal"));
    connect(optimal, &QAction::triggered, this, [this] {
        mode_ = kOptimal;
        updateLayout();
    });
    QAction* cam = sharedToolBar_->addAction(QIcon(QStringLiteral(":/Icon/Cam.png")), QStringLiteral("CAM"));
    connect(cam, &QAction::triggered, this, [this] { mode_ = kCam; });
}

void Tornvale::logStep(const char* key) {
    qInfo().noquote() << windowText("InitialInfo", key) << sinceStart_.elapsed() << "ms";
}

void Tornvale::InitialOptimalWidget() {
    if (!ConfigReader::instance().isValid()) {
        userDialogs().tell(UserDialogs::Kind::Warning, QStringLiteral("Fatal"),
                           windowText("", "ConfigFileErrorMsg"));
        std::exit(1);
    }
    machine_ = std::make_unique<MotionNodeManager>(ConfigReader::instance().description());
    logStep("S1");
    buildDocks();
    logStep("S2");
    buildViewer();
    logStep("S3");
    buildTabs();
    buildMenus();
    buildStatusBar();
    logStep("S4");
}

void Tornvale::buildDocks() {
    const auto makeDock = [this](const char* name) {
        auto* dock = new QDockWidget(this);  // owned by this window
        dock->setObjectName(QLatin1String(name));
        dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
        dock->setTitleBarWidget(new QWidget(dock));  // owned by the dock
        return dock;
    };
    programDock_ = makeDock("ProgramDockWidget");
    operationDock_ = makeDock("OperationDockWidget");
    operationDock_->setWindowTitle(windowText("", "OperationDockWidget"));
}

void Tornvale::buildViewer() {
    viewer_ = new MachineViewer(*machine_->root(), stack_);  // owned by the stack
    viewer_->setDecoration(ParaReader().isTrue(QStringLiteral("MainInterface/IsShow3DViewerDecoration")));
    viewer_->setBackground(colorOf(backgroundColour(setting("MainInterface/BackGroundColor"))));
    stack_->addWidget(viewer_);
    viewer_->viewAll();
    loadCamera();
}

void Tornvale::buildTabs() {
    tabs_ = new QTabWidget(programDock_);  // owned by the dock
    tabs_->setTabPosition(tabPlace(tabSide(setting("MainInterface/TabPosition"))));
    const auto addPage = [this](QWidget* page, const char* key) {
        page->setObjectName(QLatin1String(key));
        tabs_->addTab(page, windowText("TabTitle", key));
    };
    buildPrograms();
    tabs_->addTab(programs_, windowText("TabTitle", "IsoCodeTreeWidget"));  // keeps the name of its document
    if (!ParaReader().isNewToolDialog())
        addPage(&TORNVALE::ToolsManager::instance(), "ToolManager");
    machineTree_ = new MotionNodeTreeWidget(*machine_, tabs_);  // owned by the tabs
    addPage(machineTree_, "NodeTreeWidget");
    QWidget* spindles = machine_->spindleStatusWindow();
    spindles->setWindowFlags(Qt::Widget);
    addPage(scrollable(spindles), "SpindleStateTab");
    userInfo_ = new UserInfoForm(tabs_);  // owned by the tabs
    connect(userInfo_, &UserInfoForm::edited, recovery_, &RecoveryFile::jobChanged);
    addPage(userInfo_, "ProgramInfoTab");
    tabs_->setCurrentIndex(0);
    programDock_->setWidget(tabs_);
}

void Tornvale::buildStatusBar() {
    constexpr int kRefresh_ms = 50;
    lineLabel_ = new QLabel(this);     // owned by the status bar
    contactLabel_ = new QLabel(this);  // owned by the status bar
    lineLabel_->setObjectName(QStringLiteral("LineLabel"));
    contactLabel_->setObjectName(QStringLiteral("ContactLabel"));
    lineLabel_->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(lineLabel_, 1);
    statusBar()->addPermanentWidget(contactLabel_);
    // A line comes every 2 ms: the text is drawn only as often as somebody can read it.
    auto* refresh = new QTimer(this);  // owned by this window
    refresh->setSingleShot(true);
    refresh->setInterval(kRefresh_ms);
    connect(machine_.get(), &MotionNodeManager::showCommandString, this,
            [this, refresh](const QString& line) {
                lineLabel_->setProperty("line", line);
                if (!refresh->isActive())
                    refresh->start();
            });
    connect(refresh, &QTimer::timeout, this,
            [this] { lineLabel_->setText(lineLabel_->property("line").toString()); });
    showContacts();
}

/// A contact stands in the status bar until it has been gone for as long as one needs to see it.
void Tornvale::showContacts() {
    constexpr int kSeen_ms = 500;
    auto* gone = new QTimer(this);  // owned by this window
    gone->setSingleShot(true);
    gone->setInterval(kSeen_ms);
    connect(gone, &QTimer::timeout, contactLabel_, &QLabel::clear);
    connect(machine_.get(), &MotionNodeManager::contactsReset, gone, [this, gone] {
        if (!gone->isActive() && !contactLabel_->text().isEmpty())
            gone->start();
    });
    connect(machine_.get(), &MotionNodeManager::contactFound, this,
            [this, gone](const QStringList& first, const QStringList& second) {
                gone->stop();
                const QString arrow = QStringLiteral("->");
                const QString text =
                    windowText("Contact", "FoundMsg").arg(first.join(arrow), second.join(arrow));
                if (text != contactLabel_->text())
                    qInfo().noquote() << text;
                contactLabel_->setText(text);
            });
}

/// At first the program dock takes a third of the screen, more where the row of a spindle needs it.
void Tornvale::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (isDockSized_)
        return;
    isDockSized_ = true;
    constexpr int kNarrowest_px = 490;
    constexpr int kWidest_px = 640;
    const int third = screen()->availableGeometry().width() / 3;
    const int half = screen()->availableGeometry().width() / 2;
    const bool tabsAreBeside =
        tabs_->tabPosition() == QTabWidget::West || tabs_->tabPosition() == QTabWidget::East;
    const int spindleRow = machine_->spindleStatusWindow()->minimumSizeHint().width() +
                           (tabsAreBeside ? tabs_->tabBar()->sizeHint().width() : 0) +
                           2 * style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = qMin(qMax(qBound(kNarrowest_px, third, kWidest_px), spindleRow), half);
    resizeDocks({programDock_, codeDock_}, {width, width}, Qt::Horizontal);
    resizeDocks({programDock_, codeDock_}, {2 * height() / 3, height() / 3}, Qt::Vertical);
}

/// Everything around the centre is taken out and put in again, in its order.
void Tornvale::updateLayout() {
    for (QToolBar* bar : findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
        removeToolBar(bar);
    for (QDockWidget* dock : findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
        removeDockWidget(dock);
    QToolBar* patterns = TORNVALE::UserPostProcessor::instance().GetToolBar();
    for (QToolBar* bar : {mainToolBar_, machine_->toolBar(), patterns, debugToolBar_}) {
        addToolBar(Qt::TopToolBarArea, bar);
        bar->show();
    }
    addToolBar(Qt::RightToolBarArea, sharedToolBar_);
    sharedToolBar_->show();
    addDockWidget(dockPlace(dockArea(setting("MainInterface/DockWidgetArea"))), programDock_);
    programDock_->show();
    addDockWidget(dockWidgetArea(programDock_), codeDock_);
    splitDockWidget(programDock_, codeDock_, Qt::Vertical);
    codeDock_->show();
    setAdmin(false);
}
