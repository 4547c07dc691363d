#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QString>
#include <memory>

#include "app/calc/ProjectDocument.h"
#include "items/TreeSnapshot.h"

class CodePanel;
class MachineViewer;
class MotionNodeManager;
class MotionNodeTreeWidget;
class QDockWidget;
class ProgressDialog;
class QLabel;
class QMenu;
class QStackedWidget;
class QTabWidget;
class RecentFiles;
class RecoveryFile;
class TreeWidgetManager;
class UserInfoForm;

namespace TORNVALE {
class CodeManagerItem;
}

/// The main window: the machine in its 3D view, the tabs beside it, the menus, and the job's document.
class Tornvale : public QMainWindow {
    Q_OBJECT
  public:
    /// Reads the machine file into ConfigReader and builds the machine. A file that fails a check is told to
    /// the user and ends the process with status 1.
    explicit Tornvale(const QString& machinePath, QWidget* parent = nullptr);
    ~Tornvale() override;
    Tornvale(const Tornvale&) = delete;
    Tornvale& operator=(const Tornvale&) = delete;

    /// Opens a project document; false when that was not possible, which the user has then been told.
    bool openProject(const QString& path) { return OpenFile(path); }
    /// An empty path asks for one.
    bool OpenFile(const QString& path);
    /// Asks for a path when the document has none. True when the document is on disk.
    bool SaveFile();
    void NewFile();

    /// Asks whether a job that a crash has left is to be opened.
    void offerRecovery();
    /// `path` of the installation, ready in the playback: a project with all its programs, opened without a
    /// question, or a sample program, made dense on the machine.
    bool loadDemonstration(const QString& path);

    [[nodiscard]] TreeWidgetManager& programs() const { return *programs_; }
    [[nodiscard]] MotionNodeManager& machine() const { return *machine_; }
    [[nodiscard]] MachineViewer& viewer() const { return *viewer_; }
    [[nodiscard]] const QString& documentPath() const { return documentPath_; }
    /// 0 in the "Optimal" view, 1 in "CAM".
    [[nodiscard]] int mode() const { return mode_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    // Tornvale.cpp
    void buildSharedToolBar();
    void InitialOptimalWidget();
    void buildDocks();
    void buildViewer();
    void buildTabs();
    void buildStatusBar();
    void showContacts();
    void updateLayout();
    void logStep(const char* key);
    // TornvaleMenus.cpp
    void buildMenus();
    QMenu* fileMenu();
    QMenu* settingMenu();
    QMenu* operationMenu();
    QMenu* aboutMenu();
    QMenu* debugMenu();
    void showPlayback();
    void showTools();
    void chooseUserFolder();
    void ResetChain();
    void chooseBackground();
    void setAdmin(bool on);
    void openManual();
    void showUpdateMessage();
    void ExportPackage();
    void ImportPackage();
    void addPoint();
    void showPersonalView();
    void saveCamera();
    void loadCamera();
    void restart();
    // TornvalePrograms.cpp
    void buildPrograms();
    void buildCodeDock();
    void showCode(TORNVALE::CodeManagerItem* item);
    void showPlayed(const QString& text);
    void addHistoryActions(QMenu& menu);
    void generateNcFile();
    /// The current row of the tree: an item, a group, or all programs.
    void playCurrent();
    // TornvaleProject.cpp
    [[nodiscard]] ProjectDocument document() const;
    /// False when the user has stopped it.
    bool LoadDocument(const ProjectDocument& document);
    void clearState();
    void loadTemplate();
    void showName(const QString& name);
    void closeFreeWindows();
    /// False when the user wants to go on with the job as it is.
    bool letGoOfChanges();
    /// What a save would keep, apart from its time and from where the machine happens to stand.
    struct ChangeMark {
        QByteArray document;
        TORNVALE::TreeSnapshot programs;
    };
    [[nodiscard]] ChangeMark changeMark() const;
    [[nodiscard]] bool isChanged() const;
    /// The job as it stands is safe.
    void rememberSaved();
    void LoadOldVersion();
    bool loadDemonstrationProgram(const QString& program);

    QElapsedTimer sinceStart_;
    int mode_ = 0;
    bool isDockSized_ = false;
    QString documentPath_;
    ChangeMark savedMark_;
    std::unique_ptr<MotionNodeManager> machine_;
    QStackedWidget* stack_ = nullptr;
    QToolBar* sharedToolBar_ = nullptr;
    QToolBar* mainToolBar_ = nullptr;
    QToolBar* debugToolBar_ = nullptr;
    QMenu* debugMenu_ = nullptr;
    QDockWidget* programDock_ = nullptr;
    QDockWidget* operationDock_ = nullptr;
    MachineViewer* viewer_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    TreeWidgetManager* programs_ = nullptr;
    std::unique_ptr<ProgressDialog> progress_;
    RecoveryFile* recovery_ = nullptr;
    QDockWidget* codeDock_ = nullptr;
    CodePanel* codePanel_ = nullptr;
    bool codeIsPlayed_ = false;  ///< the panel shows what the playback runs
    MotionNodeTreeWidget* machineTree_ = nullptr;
    UserInfoForm* userInfo_ = nullptr;
    RecentFiles* recentFiles_ = nullptr;
    QLabel* lineLabel_ = nullptr;
    QLabel* contactLabel_ = nullptr;
};

/// Text of the group `Tornvale`/`group`.
[[nodiscard]] QString windowText(const char* group, const char* key);
