#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <memory>

#include "app/calc/ProjectDocument.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/modelNode.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// The shipped demonstration job on the shipped machine, with its real models, as the window opens it.

namespace {

QByteArray shippedFile(const QString& name) {
    QFile file(shippedInstallation() + QLatin1Char('/') + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// The job, opened once for all tests of the suite.
class DemonstrationJob : public testing::Test {
  public:
    static void SetUpTestSuite() { job_ = std::make_unique<Job>(); }
    static void TearDownTestSuite() { job_.reset(); }

  protected:
    struct Job {
        Job();
        ~Job();
        ProjectDocument document;
        std::unique_ptr<MotionNodeManager> machine;
        std::unique_ptr<TreeWidgetManager> tree;
        QString program;
    };
    static std::unique_ptr<Job> job_;

    static QVector<TORNVALE::CodeManagerItem*> items() {
        QVector<TORNVALE::CodeManagerItem*> all;
        for (const UserTopItem* group : job_->tree->root().groups())
            all += group->items();
        return all;
    }
};

std::unique_ptr<DemonstrationJob::Job> DemonstrationJob::job_;

DemonstrationJob::Job::Job() {
    setInstallationFolder(shippedInstallation());
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
    ConfigReader::instance().SetConfig(installationPath(QStringLiteral("machineSample/TornBridge5.xml")));
    document = readProject(shippedFile(QStringLiteral("jobs/Demonstration.tornvale"))).value();
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.LoadingLocalTools();
    tools.removeInstalledTools();
    machine = std::make_unique<MotionNodeManager>(ConfigReader::instance().description());
    TORNVALE::UserPostProcessor::instance().reload();
    tree = std::make_unique<TreeWidgetManager>(*machine);
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);  // the tools keep the project's values
    tools.loadFromProject(document.toolList);
    machine->fromJson(document.machine, document.isLegacy);
    EXPECT_TRUE(tree->Set(document.tree, document.isLegacy));
    machine->UpdateToolList(tools.installedTools());
    QVector<TORNVALE::ProgramGroup*> groups;
    for (UserTopItem* group : tree->root().groups()) {
        group->refreshDerivedTexts();
        groups.append(group);
    }
    TORNVALE::UserPostProcessor::instance().ProcessGroups(program, groups, false);
}

DemonstrationJob::Job::~Job() {
    tree.reset();
    machine.reset();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

}  // namespace

TEST_F(DemonstrationJob, IsOfTheCurrentFormAndHasItsHead) {
    EXPECT_FALSE(job_->document.isLegacy);
    EXPECT_NE(job_->document.head.productsName, "");
    EXPECT_NE(job_->document.head.productsNo, "");
    EXPECT_NE(job_->document.head.partName, "");
    EXPECT_NE(job_->document.head.partNo, "");
    EXPECT_TRUE(job_->document.head.marked.contains('\n'));
}

TEST_F(DemonstrationJob, EveryCheckedItemHasCodeWithinTheLimits) {
    int checked = 0;
    for (const TORNVALE::CodeManagerItem* item : items()) {
        const auto* iso = dynamic_cast<const TORNVALE::IsoItem*>(item);
        ASSERT_NE(iso, nullptr);
        SCOPED_TRACE(iso->iso().sourceCodeName.toStdString());
        EXPECT_EQ(iso->problem(), "");
        EXPECT_NE(iso->LeadIn(), "");
        EXPECT_NE(iso->IsoCode(), "");
        EXPECT_NE(iso->LeadOut(), "");
        if (!iso->isActive())
            continue;
        ++checked;
        EXPECT_TRUE(iso->isInLimits());
    }
    EXPECT_GE(checked, 7);
}

TEST_F(DemonstrationJob, OneItemIsOverALimitAndUnchecked) {
    int unchecked = 0;
    for (TORNVALE::CodeManagerItem* item : items()) {
        if (item->isActive())
            continue;
        ++unchecked;
        item->takeCheckState(true);
        EXPECT_FALSE(item->isInLimits());
        item->takeCheckState(false);
    }
    EXPECT_EQ(unchecked, 1);
}

TEST_F(DemonstrationJob, ToolsOfTheLibraryWorkOnFourSpindlesAndBothTables) {
    const QJsonObject library = QJsonDocument::fromJson(shippedFile(QStringLiteral("toollib.json"))).object();
    QSet<int> tools;
    QSet<int> spindles;
    QSet<QString> zones;
    for (const TORNVALE::CodeManagerItem* item : items()) {
        const ToolRecord& tool = item->tool().record();
        SCOPED_TRACE(tool.annotation.toStdString());
        ToolData known;
        known.fromJson(library.value(QStringLiteral("tool%1").arg(tool.index)).toObject());
        EXPECT_TRUE(item->tool().toJson() == known.toJson());
        tools.insert(tool.index);
        spindles.insert(tool.spindleNo);
        zones.insert(item->record().WCSName);
    }
    EXPECT_GE(tools.size(), 4);
    EXPECT_GE(spindles.size(), 4);
    EXPECT_EQ(zones, (QSet<QString>{"G54", "G55"}));
    EXPECT_EQ(TORNVALE::ToolsManager::instance().installedTools().size(), library.size() - 1);
}

TEST_F(DemonstrationJob, EverySystemHasWorkPiecesAndPrograms) {
    for (const WorkCoordinateSystem* zone : job_->machine->workCoordinateSystems()) {
        EXPECT_GE(zone->ucsList().size(), 2);
        for (userCoordinateSystem* system : zone->ucsList()) {
            SCOPED_TRACE((zone->displayName() + system->name()).toStdString());
            EXPECT_FALSE(system->userModels().isEmpty());
            EXPECT_FALSE(system->trajNodes().isEmpty());
            for (const UserModelNode* model : system->userModels()) {
                EXPECT_TRUE(model->isVisible());
                EXPECT_NE(model->collisionObject(), nullptr);
            }
        }
    }
}

TEST_F(DemonstrationJob, ItsProgramsAreThoseOfTheInstallation) {
    for (const TORNVALE::CodeManagerItem* item : items()) {
        const IsoRecord& iso = dynamic_cast<const TORNVALE::IsoItem*>(item)->iso();
        EXPECT_EQ(iso.sourceCodeString.toUtf8(), shippedFile("programs/" + iso.sourceCodeName));
    }
}

namespace {

/// Plays the program and gives what touched what: name paths with arrows, both sides of a contact.
QSet<QString> played(MotionNodeManager& machine, const QString& program, int stride) {
    QSet<QString> contacts;
    QObject context;
    QObject::connect(&machine, &MotionNodeManager::contactFound, &context,
                     [&contacts](const QStringList& first, const QStringList& second) {
                         contacts.insert(first.join("->") + " | " + second.join("->"));
                     });
    int number = 0;
    for (const QStringRef& line : program.splitRef('\n', Qt::SkipEmptyParts)) {
        machine.switchCollision(++number % stride == 0);
        machine.executeLine(line.toString());
    }
    return contacts;
}

}  // namespace

// The work pieces are shown as they are at the end; a quarter of a millimetre keeps each tool clear of them.
TEST_F(DemonstrationJob, PlaysToItsEndWithoutACollision) {
    constexpr int kStride = 20;  // of the lines that are tested
    EXPECT_GT(job_->program.count('\n'), 10000);
    EXPECT_EQ(job_->program.count("M6 T"), 10 * 5) << "each tool of the magazine is taken";
    EXPECT_EQ(played(*job_->machine, job_->program, kStride), QSet<QString>());
}

// Every program works on its piece: with the pieces a millimetre aside each tool runs into wood.
TEST_F(DemonstrationJob, EveryToolTouchesItsWorkPiece) {
    for (const WorkCoordinateSystem* zone : job_->machine->workCoordinateSystems()) {
        for (userCoordinateSystem* system : zone->ucsList())
            system->setTranslation(system->translation() + SbVec3f(-1, -1, 1));
    }
    constexpr int kStride = 8;
    QSet<QString> expected;
    for (const char* contact :
         {"T1 | Y->G54->UCS0", "T2 | Y->G54->UCS0", "T1 | Y->G54->UCS1", "T4 | Y->G54->UCS1",
          "T1 | V->G55->UCS0", "T3 | V->G55->UCS0", "T1 | V->G55->UCS1"})
        expected.insert("X->Z->C->A->" + QLatin1String(contact) + "->userModel0");
    EXPECT_EQ(played(*job_->machine, job_->program, kStride), expected);
}
