#include <QDebug>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QMenuBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <QXmlStreamReader>

#include "app/AddPointDialog.h"
#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "app/MainMenus.h"
#include "app/Packages.h"
#include "app/Tornvale.h"
#include "core/AboutTornvale.h"
#include "core/BusyCursor.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "core/RecentFiles.h"
#include "core/Restart.h"
#include "core/UiLanguage.h"
#include "core/UserDialogs.h"
#include "core/WholeFile.h"
#include "geometry/modelNode.h"
#include "machine/MotionNodeTreeWidget.h"
#include "nc/myTimer.h"
#include "tools/ToolManager.h"

// The menus of the main window and what their entries do.

namespace {

using Kind = UserDialogs::Kind;

const QString kUsedConfig = QStringLiteral("Config/UsedConfig");
const QString kCameraFile = QStringLiteral("camera.txt");
// clang-format off
const QString kPersonalView = QStringLiteral("position 2807.2527 -2896.792 409.22067orientation 0.89338863 0.25516731 0.36979267  1.4057969nearDistance 1341.7339farDistance 4272.5898focalDistance 3177.3345");
// clang-format on

/// True when the file has a machine in it; read only as far as needed.
bool isMachineFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement &&
            reader.name() == QLatin1String("machineParameters"))
            return true;
    }
    return false;
}

template <typename Window>
void showFree(QWidget* parent) {
    auto* window = new Window(parent);   // owned by the parent, deleted when it is closed
    window->setWindowFlags(Qt::Dialog);  // placed over the window that it belongs to
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

/// Not every desktop has a key for this command.
QKeySequence saveAsKey() {
    const QKeySequence key(QKeySequence::SaveAs);
    return key.isEmpty() ? QKeySequence(QStringLiteral("Ctrl+Shift+S")) : key;
}

}  // namespace

void Tornvale::buildMenus() {
    std::vector<QMenu*> menus{fileMenu(), settingMenu(), operationMenu(), aboutMenu()};
    for (QMenu* menu : menus)
        menuBar()->addMenu(menu);
    debugMenu_ = debugMenu();
    menus.push_back(debugMenu_);
    giveMnemonics(menus);
    mainToolBar_ = new QToolBar(this);  // owned by this window
    mainToolBar_->setObjectName(QStringLiteral("MainToolBar"));
    for (const char* key : {"New", "Open", "Save", "Undo", "Redo", "IsoCodeGenerator", "Playback"}) {
        if (auto* action = menuBar()->findChild<QAction*>(QLatin1String(key)))
            mainToolBar_->addAction(action);
    }
    debugToolBar_ = new QToolBar(this);  // owned by this window
    debugToolBar_->setObjectName(QStringLiteral("DebugToolBar"));
    debugToolBar_->addActions(debugMenu_->actions());
}

QMenu* Tornvale::fileMenu() {
    recentFiles_ = new RecentFiles(this);  // owned by this window
    connect(recentFiles_, &RecentFiles::fileChosen, this, &Tornvale::OpenFile);
    return makeMenu(menuBar(), "FileMenu",
                    {{"New", ":/Icon/new.png", QKeySequence::New, [this] { NewFile(); }},
                     {"Open", ":/Icon/open.png", QKeySequence::Open, [this] { OpenFile({}); }},
                     {"IsoCodeGenerator", ":/Icon/iso.png", {}, [this] { generateNcFile(); }},
                     {"Save", ":/Icon/save.png", QKeySequence::Save, [this] { SaveFile(); }},
                     {"SaveAs", ":/Icon/saveas.png", saveAsKey(),
                      [this] {
                          const QString before = std::exchange(documentPath_, QString());
                          if (!SaveFile())
                              documentPath_ = before;
                      }},
                     {"ImportOldVersion", ":/Icon/import.png", {}, [this] { LoadOldVersion(); }},
                     {"RecentFile", nullptr, {}, nullptr, recentFiles_->menu()},
                     {"Quit", nullptr, QKeySequence::Quit, [this] { close(); }}});
}

QMenu* Tornvale::settingMenu() {
    return makeMenu(menuBar(), "SettingMenu",
                    {{"UserDir", ":/Icon/open.png", {}, [this] { chooseUserFolder(); }},
                     {"ResetChain", ":/Icon/update.png", {}, [this] { ResetChain(); }},
                     {"Language", ":/Icon/translate.png", {}, [this] { showFree<UiLanguage>(this); }},
                     {"SetBackGroudColor", ":/Icon/color.png", {}, [this] { chooseBackground(); }},
                     {"Admin", nullptr, {}, nullptr, nullptr, [this](bool on) { setAdmin(on); }}});
}

QMenu* Tornvale::operationMenu() {
    QMenu* menu = makeMenu(menuBar(), "OperationMenu",
                           {{"AnimationAction",
                             ":/Icon/play.png",
                             {},
                             [this] { playCurrent(); },
                             nullptr,
                             nullptr,
                             "TreeWidgetManager/ContextMenu"},
                            {"Playback", ":/Icon/play.png", {}, [this] { showPlayback(); }},
                            {"ToolManagerButton", ":/Icon/Tools.png", {}, [this] { showTools(); }}});
    addHistoryActions(*menu);
    QAction* code = codeDock_->toggleViewAction();
    code->setText(windowText("", "CodeDockWidget"));
    code->setIcon(QIcon(QStringLiteral(":/Icon/iso.png")));
    menu->addAction(code);
    return menu;
}

QMenu* Tornvale::aboutMenu() {
    return makeMenu(menuBar(), "AboutMenu",
                    {{"UserManual", ":/Icon/userManual.png", {}, [this] { openManual(); }},
                     {"OneKeyPackaged", ":/Icon/wizard.png", {}, [this] { ExportPackage(); }},
                     {"ImportFeedback", ":/Icon/import.png", {}, [this] { ImportPackage(); }},
                     {"AboutTornvale", ":/Icon/about.png", QKeySequence::HelpContents,
                      [this] { showFree<AboutTornvale>(this); }},
                     {"UpdataInstruction", ":/Icon/update.png", {}, [this] { showUpdateMessage(); }}});
}

QMenu* Tornvale::debugMenu() {
    return makeMenu(this, "DebugMenu",
                    {{"AddPoint", ":/Icon/Point.png", {}, [this] { addPoint(); }},
                     {"PersonalView", ":/Icon/camera.png", {}, [this] { showPersonalView(); }},
                     {"OutCamera", ":/Icon/inVector.png", {}, [this] { saveCamera(); }},
                     {"InputCamera", ":/Icon/outVector.png", {}, [this] { loadCamera(); }}});
}

// --- operation ---

void Tornvale::showPlayback() {
    TORNVALE::myTimer& playback = TORNVALE::myTimer::instance();
    playback.show();
    playback.raise();
}

void Tornvale::showTools() {
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    if (tabs_->indexOf(&tools) >= 0) {
        tabs_->setCurrentWidget(&tools);
        programDock_->show();
    } else {  // a window of its own, by the settings
        tools.setWindowFlag(Qt::Window);
        tools.show();
        tools.raise();
        tools.activateWindow();
    }
    tools.treeWidget()->setFocus();
}

// --- settings ---

void Tornvale::chooseUserFolder() {
    ParaReader settings;
    const QString key = QStringLiteral("MainInterface/DefaultPath");
    const QString folder =
        userDialogs().chooseFolder(QStringLiteral("Select UserDir"), settings.value(key).toString());
    if (!folder.isEmpty())
        settings.setValue(key, folder);
}

void Tornvale::ResetChain() {
    const QString title = QStringLiteral("ResetChain");
    const QDir folder(installationPath(QStringLiteral("machineSample")));
    QStringList entries;
    for (const QString& name : folder.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
        if (isMachineFile(folder.filePath(name)))
            entries.append(QStringLiteral("machineSample/") + name);
    }
    const int current = entries.indexOf(ParaReader().value(kUsedConfig).toString());
    const std::optional<QString> choice =
        userDialogs().chooseItemFrom(title, QStringLiteral("Chain:"), entries, qMax(0, current));
    if (!choice || choice->isEmpty())
        return;
    ParaReader().setValue(kUsedConfig, *choice);
    userDialogs().tell(Kind::Information, title,
                       QStringLiteral("Sucessful.\nCurrentChain:%1.Will restart ").arg(*choice), this);
    restart();
}

void Tornvale::restart() {
    if (close()) {
        requestRestart();
        QCoreApplication::quit();
    }
}

void Tornvale::chooseBackground() {
    const std::optional<QColor> color =
        userDialogs().chooseColor(QStringLiteral("BackGroundColor"), QColor(Qt::white));
    if (!color)
        return;
    viewer_->setBackground(*color);
    ParaReader().setValue(QStringLiteral("MainInterface/BackGroundColor"),
                          QStringLiteral("%1 %2 %3")
                              .arg(color->redF(), 0, 'f', 2)
                              .arg(color->greenF(), 0, 'f', 2)
                              .arg(color->blueF(), 0, 'f', 2));
}

/// What only the machine's maker needs. Not stored: off at each start.
void Tornvale::setAdmin(bool on) {
    if (on && !menuBar()->actions().contains(debugMenu_->menuAction()))
        menuBar()->addMenu(debugMenu_);
    if (!on)
        menuBar()->removeAction(debugMenu_->menuAction());
    debugToolBar_->setVisible(on);
    tabs_->setTabVisible(tabs_->indexOf(machineTree_), on);
    tabs_->setTabEnabled(tabs_->indexOf(machineTree_), on);  // the wheel would find it while it is hidden
    if (auto* action = menuBar()->findChild<QAction*>(QStringLiteral("Admin")))
        action->setChecked(on);
}

// --- about ---

void Tornvale::openManual() {
    const QString path = installationPath(QStringLiteral("userManual/userManual.docx"));
    const QString title = windowText("AboutMenu", "Title");
    if (!QFile::exists(path))
        userDialogs().tell(Kind::Warning, title, windowText("AboutMenu", "ExistedErrorMsg"), this);
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        userDialogs().tell(Kind::Warning, title, windowText("AboutMenu", "OpenErrorMsg"), this);
}

void Tornvale::showUpdateMessage() {
    constexpr qint64 kLongest = 1 << 20;
    QFile file(installationPath(QStringLiteral("updateMessage.md")));
    if (!file.open(QIODevice::ReadOnly)) {
        userDialogs().tell(Kind::Warning, windowText("AboutMenu", "Title"),
                           windowText("AboutMenu", "UpdateFileError"), this);
        return;
    }
    auto* dialog = new QDialog(this);  // owned by this window, deleted when it is closed
    dialog->setObjectName(QStringLiteral("UpdateMessage"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(windowText("AboutMenu", "UpdataInstruction"));
    auto* column = new QVBoxLayout(dialog);  // owned by the dialog
    auto* text = new QTextBrowser(dialog);   // owned by the dialog
    text->setMarkdown(QString::fromUtf8(file.read(kLongest)));
    column->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);  // owned by the dialog
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    column->addWidget(buttons);
    dialog->resize(640, 480);
    dialog->show();
}

namespace {

void tellCopied(QWidget* parent, const char* group, const QString& message, const QStringList& failed) {
    if (failed.isEmpty()) {
        if (!message.isEmpty())
            userDialogs().tell(Kind::Information, windowText(group, "Title"), message, parent);
        return;
    }
    constexpr int kMostNames = 10;
    userDialogs().tell(Kind::Warning, windowText(group, "Title"),
                       windowText("ExportPackage", "CopyErrorMsg") + QLatin1Char('\n') +
                           failed.mid(0, kMostNames).join(QLatin1Char('\n')),
                       parent);
}

template <typename Work>
auto whileBusy(const Work& work) {
    const BusyCursor busy;
    return work();
}

}  // namespace

void Tornvale::ExportPackage() {
    const QString target = userDialogs().chooseFolder(windowText("ExportPackage", "Title"), {});
    if (target.isEmpty())
        return;
    const QStringList failed = whileBusy([&target] { return Packages::exportTo(target); });
    tellCopied(this, "ExportPackage", windowText("ExportPackage", "Notice").arg(target), failed);
}

void Tornvale::ImportPackage() {
    const QString title = windowText("ImportPackage", "Title");
    if (userDialogs().ask(title, QStringLiteral("do backup before replace items?"), this))
        ExportPackage();
    const QString source = userDialogs().chooseFolder(title, {});
    if (source.isEmpty())
        return;
    const QStringList failed = whileBusy([&source] { return Packages::importFrom(source); });
    tellCopied(this, "ImportPackage", {}, failed);
    // What came is the tool library now: closing must not write the old one over it.
    TORNVALE::ToolsManager::instance().LoadingLocalTools();
    restart();
}

// --- view ---

void Tornvale::addPoint() {
    AddPointDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        viewer_->scene().addMarker(new pointShape(dialog.place()));  // owned by the scene
}

void Tornvale::showPersonalView() {
    viewer_->scene().setCameraText(kPersonalView);
}

void Tornvale::saveCamera() {
    const QString path = installationPath(kCameraFile);
    if (!writeWhole(path, viewer_->scene().cameraText().toUtf8()))
        userDialogs().tell(Kind::Warning, windowText("DebugMenu", "OutCamera"),
                           windowText("DebugMenu", "CameraErrorMsg").arg(path), this);
}

void Tornvale::loadCamera() {
    constexpr qint64 kLongest = 65536;
    QFile file(installationPath(kCameraFile));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    if (!viewer_->scene().setCameraText(QString::fromUtf8(file.read(kLongest))))
        qWarning().noquote() << windowText("DebugMenu", "CameraErrorMsg").arg(file.fileName());
}
