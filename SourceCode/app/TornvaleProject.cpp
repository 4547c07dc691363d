#include <QApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QJsonDocument>
#include <QMimeData>
#include <QRegularExpression>
#include <QTreeWidget>
#include <iostream>

#include "app/Demonstration.h"
#include "app/ProjectFile.h"
#include "app/QuietDialogs.h"
#include "app/RecoveryFile.h"
#include "app/Tornvale.h"
#include "app/UserInfoForm.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "core/RecentFiles.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "core/calc/VersionText.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "nc/myTimer.h"
#include "setup/WorkCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolEditor.h"
#include "tools/ToolManager.h"

// The job of the main window and its document.

namespace {

using Kind = UserDialogs::Kind;

QString defaultFolder() {
    return ParaReader().value(QStringLiteral("MainInterface/DefaultPath")).toString();
}

QJsonObject installedToolList() {
    QJsonObject list;
    const QList<ToolData*> tools = TORNVALE::ToolsManager::instance().installedTools();
    for (int i = 0; i < tools.size(); ++i)
        list.insert(QStringLiteral("tool%1").arg(i), tools[i]->toJson());
    return list;
}

/// In the title, behind the program's name.
QString titleWith(const QString& name) {
    return windowText("", "Title") + QStringLiteral(" - ") + name;
}

}  // namespace

void Tornvale::showName(const QString& name) {
    setWindowTitle(titleWith(name));
}

// --- document ---

ProjectDocument Tornvale::document() const {
    ProjectDocument project;
    project.head = userInfo_->head();
    project.toolList = installedToolList();
    project.machine = machine_->toJson();
    project.tree = programs_->Get();
    return project;
}

Tornvale::ChangeMark Tornvale::changeMark() const {
    ProjectDocument project;
    project.head = userInfo_->head();
    project.head.dateTime.clear();
    project.toolList = installedToolList();
    for (const WorkCoordinateSystem* zone : machine_->workCoordinateSystems())
        project.machine.insert(zone->displayName(), zone->toJson());
    return {writeProject(project, {}), TORNVALE::takeSnapshot(programs_->root())};
}

bool Tornvale::isChanged() const {
    const ChangeMark now = changeMark();
    return now.document != savedMark_.document || !TORNVALE::sameSnapshot(now.programs, savedMark_.programs);
}

void Tornvale::rememberSaved() {
    savedMark_ = changeMark();
    recovery_->remove();
}

bool Tornvale::letGoOfChanges() {
    if (!isChanged())
        return true;
    switch (
        userDialogs().askToSave(windowText("NewFile", "Title"), windowText("NewFile", "SaveAsked"), this)) {
        case UserDialogs::Keep::Save:
            return SaveFile();
        case UserDialogs::Keep::Discard:
            return true;
        case UserDialogs::Keep::Cancel:
            break;
    }
    return false;
}

bool Tornvale::SaveFile() {
    const QString title = windowText("SaveFile", "Title");
    if (documentPath_.isEmpty()) {
        const QDateTime now = QDateTime::currentDateTime();
        const QString suggestion =
            QStringLiteral("Tornvale_") + now.toString(QStringLiteral("yyyyMMdd_hhmmss"));
        documentPath_ = userDialogs().saveFile(title, QDir(defaultFolder()).filePath(suggestion),
                                               QStringLiteral("tornvale (*.tornvale)"));
        if (documentPath_.isEmpty())
            return false;
        if (QFileInfo(documentPath_).suffix().isEmpty())
            documentPath_ += QStringLiteral(".tornvale");
    }
    const QString timeBefore = userInfo_->head().dateTime;
    userInfo_->setCreatedTime(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    const ProjectFile::Saved saved =
        ProjectFile::write(documentPath_, writeProject(document(), applicationVersion()));
    const auto warn = [this, &title, &timeBefore](const char* key) {
        userInfo_->setCreatedTime(timeBefore);
        userDialogs().tell(Kind::Warning, title,
                           windowText("SaveFile", key) + QLatin1Char('\n') + documentPath_, this);
        return false;
    };
    switch (saved) {
        case ProjectFile::Saved::NoName:
            return warn("NameErrorMsg");
        case ProjectFile::Saved::NoSpace:
            return warn("StorageErrorMsg");
        case ProjectFile::Saved::CannotOpen:
        case ProjectFile::Saved::CannotWrite:
            return warn("ErrorMsg");
        case ProjectFile::Saved::Yes:
            break;
    }
    rememberSaved();
    recentFiles_->add(documentPath_);
    showName(QFileInfo(documentPath_).completeBaseName());
    userDialogs().tell(Kind::Information, title, windowText("SaveFile", "Sucessful"), this);
    return true;
}

bool Tornvale::OpenFile(const QString& path) {
    const QString title = windowText("OpenFile", "Title");
    const QString chosen = path.isEmpty() ? userDialogs().openFile(title, defaultFolder(),
                                                                   QStringLiteral("tornvale (*.tornvale)"))
                                          : path;
    if (chosen.isEmpty() || !letGoOfChanges())
        return false;
    QByteArray content;
    if (!ProjectFile::read(chosen, content)) {
        qWarning().noquote() << windowText("OpenFile", "ErrorMsg") << chosen;
        userDialogs().tell(Kind::Warning, title,
                           windowText("OpenFile", "ErrorMsg") + QLatin1Char('\n') + chosen, this);
        return false;
    }
    clearState();
    documentPath_.clear();
    const std::optional<ProjectDocument> project = readProject(content);
    if (!project) {
        rememberSaved();
        showName(applicationVersion());
        userDialogs().tell(Kind::Warning, title,
                           windowText("OpenFile", "EncodingErrorMsg") + QLatin1Char('\n') + chosen, this);
        return false;
    }
    showName(QFileInfo(chosen).completeBaseName());
    qInfo().noquote() << windowText("OpenFile", "State1");
    if (!LoadDocument(*project)) {
        // Stopped by the user: half a job is none.
        clearState();
        showName(applicationVersion());
        rememberSaved();
        return false;
    }
    qInfo().noquote() << windowText("OpenFile", "State2");
    documentPath_ = chosen;
    recentFiles_->add(chosen);
    rememberSaved();
    return true;
}

bool Tornvale::LoadDocument(const ProjectDocument& project) {
    userInfo_->setHead(project.head);
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.loadFromProject(project.toolList);
    machine_->fromJson(project.machine, project.isLegacy);
    const bool isComplete = programs_->Set(project.tree, project.isLegacy);
    machine_->UpdateToolList(tools.installedTools());
    return isComplete;
}

void Tornvale::LoadOldVersion() {
    const QString title = windowText("LoadOldVersion", "Title");
    const QString path =
        userDialogs().openFile(title, defaultFolder(), QStringLiteral("tornvale files(*.tornvale)"));
    if (path.isEmpty() || !letGoOfChanges())
        return;
    QByteArray content;
    const std::optional<ProjectDocument> project =
        ProjectFile::read(path, content) ? readProject(content) : std::nullopt;
    if (!project) {
        userDialogs().tell(Kind::Warning, title,
                           windowText("LoadOldVersion", "Failed") + QLatin1Char('\n') + path, this);
        return;
    }
    clearState();
    documentPath_.clear();
    showName(QFileInfo(path).completeBaseName());
    if (LoadDocument(*project))
        userDialogs().tell(Kind::Information, title, windowText("LoadOldVersion", "Sucessful"), this);
    else
        clearState();
}

void Tornvale::clearState() {
    // The old job is let go, and what is read in its place needs no copy until it is whole and edited.
    recovery_->remove();
    userInfo_->clear();
    programs_->clearAll();
    machine_->resetMachine(true, true);
    machine_->emptyToolChangers();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

void Tornvale::NewFile() {
    const std::optional<bool> save =
        userDialogs().askOrCancel(windowText("NewFile", "Title"), windowText("NewFile", "SaveAsked"), this);
    if (!save || (*save && !SaveFile()))
        return;
    closeFreeWindows();
    clearState();
    showName(applicationVersion());
    documentPath_.clear();
    rememberSaved();
}

void Tornvale::loadTemplate() {
    if (!QFileInfo::exists(installationPath(QLatin1String(kVersionFile))))
        userDialogs().tell(Kind::Warning, QStringLiteral("错误"),
                           QStringLiteral("获取软件版本文件错误:Tornvale.rc"), this);
    const QString path = ParaReader().value(QStringLiteral("UserData/TemplatePath")).toString();
    if (path.isEmpty() || !QFileInfo(installationPath(path)).isFile())
        return;
    rememberSaved();
    if (!OpenFile(installationPath(path)))
        return;
    // The template itself must never be overwritten.
    documentPath_.clear();
    showName(applicationVersion());
    qInfo().noquote() << windowText("", "LoadTemplateScessful");
}

// --- demonstration ---

bool Tornvale::loadDemonstration(const QString& path) {
    if (QFileInfo(path).suffix() != QLatin1String("tornvale"))
        return loadDemonstrationProgram(path);
    {
        const QuietDialogs quiet;
        if (!OpenFile(installationPath(path)))
            return false;
    }
    programs_->root().play();
    return true;
}

bool Tornvale::loadDemonstrationProgram(const QString& program) {
    constexpr int kTool = 0;
    QString problem;
    const std::optional<Demonstration> job = runDemonstration(program, kTool, problem);
    if (!job) {
        qWarning().noquote() << problem;
        userDialogs().tell(Kind::Warning, windowText("OpenFile", "Title"), problem, this);
        return false;
    }
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    QTreeWidgetItem* const library = tools.libraryRoot();
    for (int i = 0; i < library->childCount(); ++i) {
        if (const auto* tool = dynamic_cast<ToolData*>(library->child(i)))
            tools.addTool(new ToolData(*tool), tools.installedRoot());  // owned by its row
    }
    tools.treeWidget()->clearSelection();
    tools.treeWidget()->setCurrentItem(tools.libraryRoot(), 0, QItemSelectionModel::NoUpdate);
    tools.treeWidget()->scrollToTop();
    if (const ToolData* tool = tools.findTool(kTool, tools.installedRoot())) {
        if (SpindleNode* spindle = machine_->findSpindle(tool->record().spindleNo))
            spindle->setTool(*tool);
    }
    rememberSaved();
    TORNVALE::myTimer::instance().SetAnimationText(job->machineCode);
    const QString summary = summaryText(job->summary);
    qInfo().noquote() << summary;
    std::cout << job->program.toStdString() << '\n' << summary.toStdString() << std::flush;
    return true;
}

// --- window ---

void Tornvale::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasFormat(QStringLiteral("text/uri-list")))
        event->acceptProposedAction();
}

void Tornvale::dropEvent(QDropEvent* event) {
    const QString path = event->mimeData()->urls().value(0).toLocalFile();
    if (path.isEmpty() || QFileInfo(path).suffix() != QLatin1String("tornvale"))
        return;
    static const QRegularExpression beyondLatin(QStringLiteral("[^\\x00-\\xff]"));
    if (QFileInfo(path).fileName().contains(beyondLatin)) {
        userDialogs().tell(Kind::Warning, windowText("DropEvent", "Title"),
                           windowText("DropEvent", "FormatErrorMsg"), this);
        return;
    }
    OpenFile(path);
}

void Tornvale::closeFreeWindows() {
    TORNVALE::myTimer::closeIfOpen();
    ToolEditor::release(nullptr);
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    if (tools.isWindow())
        tools.close();
    // Every editor and panel that floats by itself; what belongs to this window closes with it.
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this && window->isVisible() && window->parentWidget() == nullptr)
            window->close();
    }
}

void Tornvale::closeEvent(QCloseEvent* event) {
    if (!letGoOfChanges()) {
        event->ignore();
        return;
    }
    closeFreeWindows();
    recovery_->remove();
    TORNVALE::ToolsManager::instance().save();
    QMainWindow::closeEvent(event);
}
