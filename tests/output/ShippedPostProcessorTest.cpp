#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSet>
#include <QSettings>

#include "OutputTestSupport.h"
#include "core/InstallationFolder.h"
#include "core/getUniquelyIdentifies.h"
#include "machine/calc/MachineFile.h"
#include "machine/readConfig.h"

using namespace TORNVALE;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList shippedFiles() {
    return QDir(shippedInstallation() + "/UserPostProcessor").entryList({"*.xml"}, QDir::Files);
}

std::unique_ptr<MachineDescription> shippedMachine(const QString& name) {
    Diagnostics diagnostics;
    auto machine = loadMachineFile(shippedInstallation() + "/machineSample/" + name, diagnostics);
    EXPECT_TRUE(machine != nullptr && machine->valid) << name.toStdString();
    return machine;
}

/// A short program on one chain: rapid, feed, a delay, a command, in the emitted form.
void fill(PlainGroup& group, const QString& chain, const QString& table, int shift) {
    const QString line = QStringLiteral("G1 X%1.000 %2%3.000 Z%4.000 C0.000 A0.000 ");
    const QString rapid =
        'F' + QString::number(ConfigReader::instance().description().interpolationParameters.rapidThreshold);
    const QString home = line.arg(0).arg(table).arg(1400).arg(650) + rapid;
    QString code = line.arg(shift).arg(table).arg(100).arg(300) + rapid + '\n';
    code += QString("M3 S12000\n").repeated(10) + "(DLY,1)\n";
    for (int i = 0; i < 4; ++i)
        code += line.arg(shift + i).arg(table).arg(100).arg(250) + " F6000\n";
    code += QString("M5\n").repeated(10) + line.arg(shift + 4).arg(table).arg(100).arg(300) + rapid + '\n';
    group.add(chain, code).tool.record().toolNo = 2;
    group.setEnds(chain, home, home, home, home);
}

/// Compares with tests/output/golden/<name>; a missing file writes its candidate and fails.
void expectGolden(const QString& name, const QString& text) {
    QFile golden(QStringLiteral(TORNVALE_GOLDEN_FOLDER "/") + name);
    if (!golden.open(QIODevice::ReadOnly)) {
        QFile candidate(name + ".candidate");
        ASSERT_TRUE(candidate.open(QIODevice::WriteOnly));
        candidate.write(text.toUtf8());
        FAIL() << "no expected result; look at " << QFileInfo(candidate).absoluteFilePath().toStdString();
    }
    EXPECT_EQ(text, QString::fromUtf8(golden.readAll()));
}

/// Programs of all patterns of a shipped file on the two tables of the bridge machine.
void expectGoldenPatterns(const QString& file) {
    OutputBench bench(contentOf(shippedInstallation() + "/UserPostProcessor/" + file + ".xml"));
    ConfigReader::instance().setDescription(shippedMachine("TornBridge5.xml"));
    PlainGroup left("G54");
    PlainGroup right("G55");
    fill(left, "X->Z->C->A;Y", "Y", 500);
    fill(right, "X->Z->C->A;V", "V", 2000);
    for (const QString& pattern : bench.processor().patternNames()) {
        ASSERT_TRUE(bench.processor().choosePattern(pattern));
        QVector<ProgramGroup*> groups;
        for (const QString& name : bench.processor().GetCoordinateList())
            groups.append(name == "G54" ? &left : &right);
        expectGolden(file + '-' + pattern + ".nc", bench.program(groups, pattern));
    }
}

}  // namespace

TEST(ShippedPostProcessor, BridgePatterns_WriteTheirGoldenPrograms) {
    expectGoldenPatterns("TornBridge5");
}

TEST(ShippedPostProcessor, TandemPatterns_WriteTheirGoldenPrograms) {
    expectGoldenPatterns("TornBridge5Tandem");
}

TEST(ShippedPostProcessor, TandemOfTwoHeads_WritesItsGoldenProgram) {
    OutputBench bench(contentOf(shippedInstallation() + "/UserPostProcessor/TornBridge5Tandem.xml"));
    PlainGroup group("G54");
    group.add("X->Z", "G1 X1.000 Z2.000  F6000\nG1 X2.000 Z2.000  F6000\nM5\n");
    group.add("V", "G1 V1.000  F6000\nG1 V2.000  F6000\nG1 V3.000  F6000\nG1 V4.000  F6000\n");
    group.setEnds("X->Z", "G1 X0.000 Z100.000 F50000", "G1 X0.000 Z100.000 F50000");
    group.setEnds("V", "G1 V0.000 F50000", "G1 V0.000 F50000");
    expectGolden("two-heads.nc", bench.program({&group}, "left"));
}

TEST(ShippedPostProcessor, EveryFile_IsReadWithoutAWarning) {
    for (const QString& file : shippedFiles()) {
        SCOPED_TRACE(file.toStdString());
        const TemporaryInstallation installation;
        installation.write("post.xml", contentOf(shippedInstallation() + "/UserPostProcessor/" + file));
        installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=post.xml\n");
        const LogCapture log;
        const PostProcessorConfigulation configuration;
        EXPECT_TRUE(log.lines().empty()) << log.all().toStdString();
        EXPECT_FALSE(configuration.entrySequences().isEmpty());
        EXPECT_FALSE(configuration.exitSequences().isEmpty());
        EXPECT_FALSE(PostProcessorConfigulation::GetPatternData().isEmpty());
        // The folder is a part of the installation, so that the first program has a place to go to.
        EXPECT_EQ(configuration.OutputDir.path(), installation.file("output"));
        EXPECT_TRUE(QDir(shippedInstallation() + "/output").exists());
    }
}

TEST(ShippedPostProcessor, EveryPattern_HasItsOwnPicturePrefixAndSuffix) {
    for (const QString& file : shippedFiles()) {
        SCOPED_TRACE(file.toStdString());
        const TemporaryInstallation installation;
        installation.write("post.xml", contentOf(shippedInstallation() + "/UserPostProcessor/" + file));
        installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=post.xml\n");
        const PostProcessorConfigulation configuration;
        QSet<QString> pictures;
        QSet<QString> prefixes;
        const QVector<PatternRow> rows = PostProcessorConfigulation::GetPatternData();
        for (const PatternRow& row : rows) {
            const QDomElement pattern = configuration.pattern(row.name);
            EXPECT_FALSE(row.nickName.isEmpty());
            EXPECT_FALSE(QImage(shippedInstallation() + "/UserPostProcessor/" + row.image).isNull())
                << row.image.toStdString();
            EXPECT_FALSE(pattern.attribute("Suffix").isEmpty());
            pictures << row.image;
            prefixes << pattern.attribute("Prefix");
        }
        EXPECT_EQ(pictures.size(), rows.size());
        EXPECT_EQ(prefixes.size(), rows.size());
        EXPECT_FALSE(prefixes.contains(QString()));
    }
}

TEST(ShippedPostProcessor, TableModes_HaveTheNamesOfTheInstallation) {
    setInstallationFolder(shippedInstallation());
    getUniquelyIdentifies::instance().reload();
    const UniqueNames names = getUniquelyIdentifies::instance().names();
    const TemporaryInstallation installation;
    installation.write("post.xml", contentOf(shippedInstallation() + "/UserPostProcessor/TornBridge5.xml"));
    installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=post.xml\n");
    const PostProcessorConfigulation configuration;
    const auto attribute = [&configuration](const QString& pattern, const char* name) {
        return configuration.pattern(pattern).attribute(name);
    };
    EXPECT_EQ(attribute(names.leftTableProcessing, "Prefix"), names.leftOutputFilePrefix);
    EXPECT_EQ(attribute(names.rightTableProcessing, "Prefix"), names.rightOutputFilePrefix);
    EXPECT_EQ(attribute(names.consecutiveProcessing, "Prefix"), names.mergeOutputFilePrefix);
    EXPECT_EQ(attribute(names.consecutiveProcessing, "Suffix"), names.mergeOutputFileExtension);
    EXPECT_FALSE(configuration.pattern(names.alternateProcessing).isNull());
}

TEST(ShippedPostProcessor, Slots_AreWorkCoordinateSystemsOfTheMachine) {
    for (const QString& name : {QString("TornBridge5"), QString("TornNest3"), QString("TornPortal5")}) {
        const auto machine = shippedMachine(name + ".xml");
        const TemporaryInstallation installation;
        installation.write("post.xml",
                           contentOf(shippedInstallation() + "/UserPostProcessor/" + name + ".xml"));
        installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=post.xml\n");
        const PostProcessorConfigulation configuration;
        for (const PatternRow& row : PostProcessorConfigulation::GetPatternData()) {
            for (const QString& slot : coordinateList(configuration.pattern(row.name)))
                EXPECT_NE(machine->findWorkCoordinateSystem(slot), nullptr) << slot.toStdString();
        }
        for (const auto& actions : configuration.prePostActions()) {
            bool known = false;
            for (const auto& system : machine->workCoordinateSystems)
                known = known || system->kinematicChain.contains(actions->Chain);
            EXPECT_TRUE(known) << actions->Chain.toStdString();
        }
    }
}

TEST(ShippedPostProcessor, Settings_NameAShippedFile) {
    const QSettings settings(shippedInstallation() + "/data.ini", QSettings::IniFormat);
    const QString file = settings.value("StatusPreProcessing/PostProcessor").toString();
    EXPECT_TRUE(QFile::exists(shippedInstallation() + '/' + file)) << file.toStdString();
}
