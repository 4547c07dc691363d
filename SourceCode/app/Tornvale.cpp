#include "app/Tornvale.h"

#include <QDebug>
#include <QDockWidget>
#include <QIcon>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <cstdlib>

#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "app/UserInfoForm.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/RecentFiles.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "machine/MotionNodeManager.h"
#include "machine/MotionNodeTreeWidget.h"
#include "machine/readConfig.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

constexpr int kOptimal = 0;
constexpr int kCam = 1;

QTabWidget::TabPosition tabPlace(const QString& name) {
    if (name == QLatin1String("West"))
        return QTabWidget::West;
    if (name == QLatin1String("East"))
        return QTabWidget::East;
    if (name == QLatin1String("South"))
        return QTabWidget::South;
    return QTabWidget::North;
}

Qt::DockWidgetArea dockArea(int number) {
    switch (number) {
        case Qt::RightDockWidgetArea:
        case Qt::TopDockWidgetArea:
        case Qt::BottomDockWidgetArea:
            return static_cast<Qt::DockWidgetArea>(number);
        default:
            return Qt::LeftDockWidgetArea;
    }
}

QColor colorOf(const QString& text, const QColor& fallback) {
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (parts.size() != 3)
        return fallback;
    double numbers[3] = {0, 0, 0};
    for (int i = 0; i < 3; ++i) {
        bool isNumber = false;
        numbers[i] = parts[i].toDouble(&isNumber);
        if (!isNumber || !(numbers[i] >= 0 && numbers[i] <= 1))
            return fallback;
    }
    return QColor::fromRgbF(numbers[0], numbers[1], numbers[2]);
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
    resize(1280, 800);
}

Tornvale::~Tornvale() {
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.setParent(nullptr);  // it lives as long as the process
    delete viewer_;            // the machine's scene goes after what shows it
    delete machineTree_;
    if (QWidget* spindles = machine_->spindleStatusWindow())
        spindles->setParent(nullptr);
    if (QToolBar* bar = machine_->toolBar())
        bar->setParent(nullptr);
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
    const ParaReader settings;
    viewer_->setDecoration(settings.isTrue(QStringLiteral("MainInterface/IsShow3DViewerDecoration")));
    viewer_->setBackground(colorOf(settings.value(QStringLiteral("MainInterface/BackGroundColor")).toString(),
                                   viewer_->background()));
    stack_->addWidget(viewer_);
    viewer_->viewAll();
    loadCamera();
}

void Tornvale::buildTabs() {
    tabs_ = new QTabWidget(programDock_);  // owned by the dock
    tabs_->setTabPosition(
        tabPlace(ParaReader().value(QStringLiteral("MainInterface/TabPosition")).toString()));
    const auto addPage = [this](QWidget* page, const char* key) {
        page->setObjectName(QLatin1String(key));
        tabs_->addTab(page, windowText("TabTitle", key));
    };
    addPage(&TORNVALE::ToolsManager::instance(), "ToolManager");
    machineTree_ = new MotionNodeTreeWidget(*machine_, tabs_);  // owned by the tabs
    addPage(machineTree_, "NodeTreeWidget");
    QWidget* spindles = machine_->spindleStatusWindow();
    spindles->setWindowFlags(Qt::Widget);
    addPage(scrollable(spindles), "SpindleStateTab");
    userInfo_ = new UserInfoForm(tabs_);  // owned by the tabs
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
    connect(machine_.get(), &MotionNodeManager::contactFound, this,
            [this](const QStringList& first, const QStringList& second) {
                const QString arrow = QStringLiteral("->");
                const QString text =
                    windowText("Contact", "FoundMsg").arg(first.join(arrow), second.join(arrow));
                if (text != contactLabel_->text())
                    qInfo().noquote() << text;
                contactLabel_->setText(text);
            });
}

/// Everything around the centre is taken out and put in again, in its order.
void Tornvale::updateLayout() {
    for (QToolBar* bar : findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
        removeToolBar(bar);
    for (QDockWidget* dock : findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
        removeDockWidget(dock);
    for (QToolBar* bar : {mainToolBar_, machine_->toolBar(), debugToolBar_}) {
        addToolBar(Qt::TopToolBarArea, bar);
        bar->show();
    }
    addToolBar(Qt::RightToolBarArea, sharedToolBar_);
    sharedToolBar_->show();
    constexpr int kLeft = Qt::LeftDockWidgetArea;
    addDockWidget(dockArea(ParaReader().integer(QStringLiteral("MainInterface/DockWidgetArea"), kLeft)),
                  programDock_);
    programDock_->show();
    setAdmin(false);
}
