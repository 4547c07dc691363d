#include "machine/calc/MachineFile.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <random>

#include "MachineSamples.h"
#include "support/TestSupport.h"

namespace {

std::unique_ptr<MachineDescription> read(const QByteArray& bytes, Diagnostics* into = nullptr) {
    Diagnostics diagnostics;
    auto machine = readMachineFile(bytes, into != nullptr ? *into : diagnostics);
    return machine;
}

QStringList keysOf(const Diagnostics& diagnostics) {
    QStringList keys;
    for (const Diagnostic& entry : diagnostics.entries) {
        EXPECT_EQ(static_cast<int>(entry.severity), static_cast<int>(Severity::Debug));
        keys.append(entry.key);
    }
    return keys;
}

/// A file whose only axis has these elements.
std::unique_ptr<MachineDescription> machineWithAxis(const QByteArray& elements) {
    return read("<root><numericalAxis><axis>" + elements + "</axis></numericalAxis></root>");
}

}  // namespace

TEST(MachineFile, CompleteFile_FillsNumericalAxis) {
    Diagnostics diagnostics;
    const auto machine = read(sampleMachineFile(), &diagnostics);
    EXPECT_EQ(keysOf(diagnostics), QStringList());
    EXPECT_TRUE(machine->valid);
    ASSERT_EQ(machine->numericalAxes.size(), 1U);
    const numericalAxisStruct& axis = *machine->numericalAxes[0];
    const QStringList texts = {axis.name,     axis.nickName,  axis.homePosition,   axis.maxVelocity,
                               axis.lower,    axis.upper,     axis.jerk,           axis.acceleration,
                               axis.color,    axis.direction, axis.initialization, axis.type,
                               axis.modelPath};
    EXPECT_EQ(texts.join('|'), QStringLiteral("X|X|1|2|-3|4|5|6|0 0.5 1|1 0 0|7 8 9|LINEAR|models/x.stl"));
    EXPECT_EQ(axis.id, 1);
    EXPECT_TRUE(axis.isRTCP);
    EXPECT_EQ(machine->findAxis('X'), &axis);
}

TEST(MachineFile, CompleteFile_FillsPartsAndSpindles) {
    const auto machine = read(sampleMachineFile());
    ASSERT_EQ(machine->nonNumericalAxes.size(), 1U);
    const nonNumericalAxisStruct& part = *machine->nonNumericalAxes[0];
    EXPECT_EQ((QStringList{part.name, part.parent, part.color, part.initialization, part.type, part.modelPath,
                           part.direction, part.lower, part.upper}
                   .join('|')),
              QStringLiteral("Bed|X|1 1 1|1 2 3|FIXED|models/bed.stl|0 0 1|-1|1"));
    ASSERT_EQ(machine->spindles.size(), 1U);
    const spindleStruct& spindle = *machine->spindles[0];
    EXPECT_EQ((QStringList{spindle.name, spindle.initialization, spindle.startString, spindle.reverseString,
                           spindle.stopString, spindle.checkString, spindle.toolChangeString, spindle.range,
                           spindle.coaxial, spindle.parent, spindle.color, spindle.direction}
                   .join('|')),
              QStringLiteral("T1|1 2 3 4|M3 S#|true|M5|M7|M6 T#|12|T2|X->A|0 0 1|0 0 -1"));
}

TEST(MachineFile, CompleteFile_FillsParameters) {
    const auto machine = read(sampleMachineFile());
    const machineParametersStruct& parameters = machine->machineParameters;
    EXPECT_EQ((QStringList{parameters.systemVendor, parameters.decimal, parameters.machineType,
                           parameters.type, parameters.serialNumber}
                   .join('|')),
              QStringLiteral("Vendor|3|Bridge|Root|S-1"));
    EXPECT_EQ(parameters.kinematicChain, (QStringList{"X->Y->Z->C->A;V->W", "U"}));
    const interpolationParametersStruct& numbers = machine->interpolationParameters;
    EXPECT_EQ(numbers.interpolationTime, 4U);
    EXPECT_EQ(numbers.minAcceleration, 301);
    EXPECT_EQ(numbers.rapidThreshold, 8000);
    EXPECT_EQ(numbers.decelerationAngle, 11);
    EXPECT_EQ(numbers.angleThreshold, 86);
    EXPECT_EQ(numbers.angleMaxFeedrate, 1201);
    EXPECT_EQ(numbers.deltaG0, 101);
    EXPECT_EQ(numbers.deltaG1, 51);
    EXPECT_EQ(numbers.interpolationSmooth, 0.5);
}

TEST(MachineFile, CompleteFile_FillsWorkSystemsAndLists) {
    const auto machine = read(sampleMachineFile());
    ASSERT_EQ(machine->workCoordinateSystems.size(), 1U);
    const workCoordinateSystemStruct& system = *machine->workCoordinateSystems[0];
    EXPECT_EQ(
        (QStringList{system.kind, system.parent, system.nickName, system.name, system.initialization}.join(
            '|')),
        QStringLiteral("userCoordinateSystem|V|left|G54|1 2 3"));
    EXPECT_EQ(system.kinematicChain, (QStringList{"X->A", "V"}));
    EXPECT_EQ(machine->userCommand.delay, QStringLiteral("G4 F1"));
    EXPECT_EQ(machine->userCommand.startList, (QMap<QString, QString>{{"X->A", "M10"}}));
    EXPECT_EQ(machine->collisionObjectList, (QMap<QString, bool>{{"X", true}, {"Y", false}}));
    ASSERT_EQ(machine->fixtures.size(), 1U);
    EXPECT_EQ(machine->fixtures[0].key, QStringLiteral("V"));
    EXPECT_EQ(machine->fixtures[0].value, QStringLiteral("automaticFixtures/a.xml"));
    EXPECT_EQ(machine->fixtures[0].number, 3);
    EXPECT_EQ(machine->fixtures[0].distance, 1.5F);
}

TEST(MachineFile, MissingElement_NamesItsKeyClearsValidAndGoesOn) {
    const std::vector<std::pair<QByteArray, QString>> table = {
        {"machineParameters", "ConfigReader/MachParaIsEmptyMsg"},
        {"numericalAxis", "ConfigReader/AxisNCNodeIsEmptyMsg"},
        {"nonNumericalAxis", "ConfigReader/AxisNonNCNodeIsEmptyMsg"},
        {"spindle", "ConfigReader/SpindleNodeIsEmptyMsg"},
        {"userCommand", "ConfigReader/UserCommandIsEmpty"},
    };
    for (const auto& [element, key] : table) {
        Diagnostics diagnostics;
        const auto machine = read(sampleMachineFileWithout(element), &diagnostics);
        EXPECT_EQ(keysOf(diagnostics), QStringList(key)) << element.constData();
        EXPECT_FALSE(machine->valid) << element.constData();
        EXPECT_EQ(machine->fixtures.size(), 1U) << element.constData();
    }
}

TEST(MachineFile, MissingMachineParameters_LeavesEmptyFields) {
    const auto machine = read(sampleMachineFileWithout("machineParameters"));
    EXPECT_EQ(machine->machineParameters.type, QString());
    EXPECT_EQ(machine->machineParameters.kinematicChain, QStringList());
}

TEST(MachineFile, SeveralMissingElements_NamesAllInReadingOrder) {
    Diagnostics diagnostics;
    EXPECT_FALSE(read("<root/>", &diagnostics)->valid);
    EXPECT_EQ(keysOf(diagnostics),
              (QStringList{"ConfigReader/MachParaIsEmptyMsg", "ConfigReader/AxisNCNodeIsEmptyMsg",
                           "ConfigReader/AxisNonNCNodeIsEmptyMsg", "ConfigReader/SpindleNodeIsEmptyMsg",
                           "ConfigReader/InterpolationNodeIsEmpty"}));
}

TEST(MachineFile, MissingInterpolationParameters_EndsTheReadingInvalid) {
    Diagnostics diagnostics;
    const auto machine = read(sampleMachineFileWithout("interpolationParameters"), &diagnostics);
    EXPECT_EQ(keysOf(diagnostics), QStringList("ConfigReader/InterpolationNodeIsEmpty"));
    EXPECT_FALSE(machine->valid);
    EXPECT_EQ(machine->interpolationParameters.rapidThreshold, 7000);
    EXPECT_EQ(machine->workCoordinateSystems.size(), 0U);
    EXPECT_EQ(machine->userCommand.delay, QString());
    EXPECT_EQ(machine->collisionObjectList.size(), 0);
    EXPECT_EQ(machine->fixtures.size(), 0U);
}

TEST(MachineFile, MissingUserCoordinateSystem_EndsTheReadingWithoutAMessage) {
    Diagnostics diagnostics;
    const auto machine = read(sampleMachineFileWithout("userCoordinateSystem"), &diagnostics);
    EXPECT_EQ(keysOf(diagnostics), QStringList());
    EXPECT_TRUE(machine->valid);
    EXPECT_EQ(machine->workCoordinateSystems.size(), 0U);
    EXPECT_EQ(machine->userCommand.delay, QString());
    EXPECT_EQ(machine->userCommand.startList.size(), 0);
    EXPECT_EQ(machine->collisionObjectList.size(), 0);
    EXPECT_EQ(machine->fixtures.size(), 0U);
}

TEST(MachineFile, MissingOptionalLists_AreNoFault) {
    for (const QByteArray element : {"collisionObjectList", "userFixtureList"}) {
        Diagnostics diagnostics;
        EXPECT_TRUE(read(sampleMachineFileWithout(element), &diagnostics)->valid);
        EXPECT_EQ(keysOf(diagnostics), QStringList());
    }
}

TEST(MachineFile, InterpolationWithoutRapidThreshold_GivesZero) {
    QByteArray file = sampleMachineFile();
    file.replace("<rapidThreshold>8000</rapidThreshold>", "");
    EXPECT_EQ(read(file)->interpolationParameters.rapidThreshold, 0);
    EXPECT_EQ(interpolationParametersStruct().rapidThreshold, 7000);
}

TEST(MachineFile, EmptyInterpolationParameters_AllNumbersAreZero) {
    const auto numbers = read("<r><interpolationParameters/></r>")->interpolationParameters;
    EXPECT_EQ(numbers.interpolationTime, 0U);
    EXPECT_EQ(numbers.minAcceleration, 0);
    EXPECT_EQ(numbers.decelerationAngle, 0);
    EXPECT_EQ(numbers.angleThreshold, 0);
    EXPECT_EQ(numbers.angleMaxFeedrate, 0);
    EXPECT_EQ(numbers.deltaG0, 0);
    EXPECT_EQ(numbers.deltaG1, 0);
    EXPECT_EQ(numbers.interpolationSmooth, 0);
}

TEST(MachineFile, FreshRecords_HoldTheirInitialValues) {
    const interpolationParametersStruct numbers;
    EXPECT_EQ(numbers.interpolationTime, 2U);
    EXPECT_EQ(numbers.minAcceleration, 300);
    EXPECT_EQ(numbers.decelerationAngle, 10);
    EXPECT_EQ(numbers.angleThreshold, 85);
    EXPECT_EQ(numbers.angleMaxFeedrate, 1200);
    EXPECT_EQ(numbers.deltaG0, 100);
    EXPECT_EQ(numbers.deltaG1, 50);
    EXPECT_EQ(numbers.interpolationSmooth, 0);
    EXPECT_EQ(spindleStruct().direction, QStringLiteral("0 0 -1"));
}

TEST(MachineFile, SpindleWithoutDirection_HasNone) {
    const auto machine = read("<r><spindle><s><name>T1</name></s></spindle></r>");
    ASSERT_EQ(machine->spindles.size(), 1U);
    EXPECT_EQ(machine->spindles[0]->direction, QString());
}

TEST(MachineFile, EmptyId_FollowsFromTheNickName) {
    const std::vector<std::pair<QByteArray, int>> table = {{"X", 1}, {"Y", 2}, {"Z", 3}, {"C", 4}, {"B", 4},
                                                           {"A", 5}, {"W", 6}, {"x", 6}, {"", 6},  {"XY", 6}};
    for (const auto& [nickName, id] : table) {
        for (const QByteArray idElement : {"", "<id/>", "<id></id>"}) {
            const auto machine = machineWithAxis("<nickName>" + nickName + "</nickName>" + idElement);
            EXPECT_EQ(machine->numericalAxes.at(0)->id, id) << nickName.constData();
        }
    }
}

TEST(MachineFile, EmptyNickName_TakesTheNameAndItsId) {
    const auto machine = machineWithAxis("<name>C</name>");
    EXPECT_EQ(machine->numericalAxes.at(0)->nickName, QStringLiteral("C"));
    EXPECT_EQ(machine->numericalAxes.at(0)->id, 4);
}

TEST(MachineFile, IdWithNickNameW_IsTheFourthAxis) {
    const auto machine = machineWithAxis("<name>Q</name><nickName>W</nickName><id>4</id>");
    EXPECT_EQ(machine->numericalAxes.at(0)->id, 4);
    EXPECT_EQ(machine->axisMap(QStringLiteral("Q"), false), (AxisMap{{4, 'Q'}}));
}

TEST(MachineFile, IdThatIsNoInteger_IsZeroAndInNoMap) {
    for (const QByteArray id : {"abc", "4.0", "0", "7", "-1", "99999999999999"}) {
        Diagnostics diagnostics;
        const auto machine = readMachineFile(
            "<r><numericalAxis><a><name>X</name><id>" + id + "</id></a></numericalAxis></r>", diagnostics);
        EXPECT_EQ(machine->numericalAxes.at(0)->id, QString::fromLatin1(id).toInt()) << id.constData();
        EXPECT_EQ(machine->axisMap(QStringLiteral("X"), true), AxisMap()) << id.constData();
        EXPECT_EQ(diagnostics.entries.at(1).text,
                  QStringLiteral("axis X: id %1 is none of 1 to 6").arg(QString::fromLatin1(id).toInt()));
    }
}

TEST(MachineFile, IsRtcp_TrueUnlessAnotherText) {
    EXPECT_TRUE(machineWithAxis("")->numericalAxes.at(0)->isRTCP);
    EXPECT_TRUE(machineWithAxis("<isRTCP/>")->numericalAxes.at(0)->isRTCP);
    EXPECT_TRUE(machineWithAxis("<isRTCP>true</isRTCP>")->numericalAxes.at(0)->isRTCP);
    for (const QByteArray text : {"false", "True", "1", " true "})
        EXPECT_FALSE(machineWithAxis("<isRTCP>" + text + "</isRTCP>")->numericalAxes.at(0)->isRTCP);
}

TEST(MachineFile, CommentAmongRecords_IsAnEmptyRecord) {
    const auto machine = read(
        "<r><numericalAxis><!-- c --><a><name>X</name></a></numericalAxis>"
        "<nonNumericalAxis><!-- c --></nonNumericalAxis><spindle><!-- c --></spindle>"
        "<interpolationParameters/><userCoordinateSystem><!-- c --></userCoordinateSystem></r>");
    ASSERT_EQ(machine->numericalAxes.size(), 2U);
    EXPECT_EQ(machine->numericalAxes[0]->name, QString());
    EXPECT_EQ(machine->numericalAxes[0]->id, 6);
    EXPECT_TRUE(machine->numericalAxes[0]->isRTCP);
    EXPECT_EQ(machine->nonNumericalAxes.size(), 1U);
    EXPECT_EQ(machine->spindles.size(), 1U);
    ASSERT_EQ(machine->workCoordinateSystems.size(), 1U);
    EXPECT_EQ(machine->workCoordinateSystems[0]->kind, QStringLiteral("userCoordinateSystem"));
}

TEST(MachineFile, RecordsOfAnyTagName_CountAndTheFirstElementOfANameWins) {
    const auto machine = read(
        "<r><numericalAxis><p><name>X</name><name>Q</name></p><q><name>Y</name></q></numericalAxis>"
        "<numericalAxis><p><name>Z</name></p></numericalAxis></r>");
    ASSERT_EQ(machine->numericalAxes.size(), 2U);
    EXPECT_EQ(machine->numericalAxes[0]->name, QStringLiteral("X"));
    EXPECT_EQ(machine->numericalAxes[1]->name, QStringLiteral("Y"));
}

TEST(MachineFile, ElementsInAnotherOrder_ReadTheSame) {
    QByteArray file = sampleMachineFile();
    const int first = file.indexOf("<userCommand>");
    const int end = file.indexOf("</userCommand>") + 14;
    const QByteArray command = file.mid(first, end - first);
    file.remove(first, end - first).replace("<anything>", "<anything>" + command);
    const auto machine = read(file);
    EXPECT_TRUE(machine->valid);
    EXPECT_EQ(machine->userCommand.delay, QStringLiteral("G4 F1"));
}

TEST(MachineFile, CollisionObjects_LaterElementOfTheSameKeyOverrides) {
    QByteArray file = sampleMachineFile();
    file.replace("<o key=\"Y\" value=\"True\"/>",
                 "<!-- c --><o key=\"X\" value=\"false\"/><o value=\"true\"/>");
    EXPECT_EQ(read(file)->collisionObjectList, (QMap<QString, bool>{{"X", false}, {"", true}}));
}

TEST(MachineFile, FixtureWithBadNumbers_IsLeftOutWithoutAMessage) {
    QByteArray file = sampleMachineFile();
    file.replace("<userFixtureList>",
                 "<userFixtureList><f key='a' number='1.5' distance='1'/><f key='b' number='x' distance='1'/>"
                 "<f key='c' number='1' distance='y'/><f key='d' number='1'/><f key='e' distance='1'/>"
                 "<!-- c --><f key='f' number='-2' distance='-0.5'/>");
    Diagnostics diagnostics;
    const auto machine = read(file, &diagnostics);
    EXPECT_EQ(keysOf(diagnostics), QStringList());
    ASSERT_EQ(machine->fixtures.size(), 2U);
    EXPECT_EQ(machine->fixtures[0].key, QStringLiteral("f"));
    EXPECT_EQ(machine->fixtures[0].number, -2);
    EXPECT_EQ(machine->fixtures[1].key, QStringLiteral("V"));
}

TEST(MachineFile, TextsOfTheFile_StandAsTheyAre) {
    const auto machine = machineWithAxis("<name> X </name><homePosition>1,5 &lt;&#20013;</homePosition>");
    EXPECT_EQ(machine->numericalAxes.at(0)->name, QStringLiteral(" X "));
    EXPECT_EQ(machine->numericalAxes.at(0)->homePosition, QString::fromUtf8("1,5 <中"));
}

TEST(MachineFile, MalformedDocuments_AreRefusedWithPlaceAndReason) {
    const std::vector<QByteArray> table = {
        "",
        "no XML at all",
        "<root>",
        "<root></other>",
        "<a/><b/>",
        "<root attribute></root>",
        "<root a='1' b=2/>",
        "<root",
        "<!-- open",
        "<root><![CDATA[open</root>",
        QByteArray("\0\0\0\0", 4),
        QByteArray("\xFF\xFE<\0r", 5),
        QByteArray("\xEF\xBB\xBF", 3),
        QByteArray(200, '\xFF'),
        "PK\x03\x04",
    };
    for (const QByteArray& bytes : table) {
        Diagnostics diagnostics;
        std::optional<XmlError> refusal;
        const auto machine = readMachineFile(bytes, diagnostics, &refusal);
        EXPECT_FALSE(machine->valid) << bytes.constData();
        EXPECT_EQ(keysOf(diagnostics), QStringList("ConfigReader/ParseErrorMsg")) << bytes.constData();
        ASSERT_TRUE(refusal.has_value()) << bytes.constData();
        EXPECT_FALSE(refusal->text.isEmpty()) << bytes.constData();
        EXPECT_EQ(machine->numericalAxes.size(), 0U) << bytes.constData();
    }
}

TEST(MachineFile, RefusedDocument_TellsLineAndColumnOfTheParser) {
    Diagnostics diagnostics;
    std::optional<XmlError> refusal;
    EXPECT_FALSE(readMachineFile("<root>\n  <a></b>\n</root>", diagnostics, &refusal)->valid);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ(refusal->text, QStringLiteral("tag mismatch"));
    EXPECT_EQ(refusal->line, 2);
    EXPECT_EQ(refusal->column, 9);
    EXPECT_EQ(diagnostics.entries.at(0).text, QStringLiteral("tag mismatch, line 2, column 9"));
    EXPECT_TRUE(readMachineFile(sampleMachineFile(), diagnostics, &refusal)->valid);
    EXPECT_FALSE(refusal.has_value());
}

TEST(MachineFile, LoadOfAPathThatCannotBeOpened_GivesNothingAndTheKey) {
    const QTemporaryDir folder;
    for (const QString& path : {folder.filePath("absent.xml"), folder.path(), QString()}) {
        Diagnostics diagnostics;
        EXPECT_EQ(loadMachineFile(path, diagnostics), nullptr);
        EXPECT_EQ(keysOf(diagnostics), QStringList("ConfigReader/InvalidErrorMsg"));
        EXPECT_EQ(diagnostics.entries.at(0).text, QStringLiteral("\tFile:") + path);
    }
}

TEST(MachineFile, LoadOfTheShippedMachine_IsComplete) {
    Diagnostics diagnostics;
    const QString path = shippedInstallation() + QStringLiteral("/machineSample/TornBridge5.xml");
    const auto machine = loadMachineFile(path, diagnostics);
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(keysOf(diagnostics), QStringList());
    EXPECT_TRUE(machine->valid);
    EXPECT_EQ(machine->path, path);
    EXPECT_EQ(machine->axisMap(machine->machineParameters.kinematicChain.at(0), false).size(), 5);
}

// Any damage to a file gives a machine or a refusal, never anything else.
TEST(MachineFile, RandomDamage_IsReadOrRefused) {
    std::mt19937 random(20240611);
    const QByteArray whole = sampleMachineFile();
    for (int round = 0; round < 400; ++round) {
        QByteArray damaged = whole;
        for (int i = 0; i < 1 + round % 5; ++i) {
            const int at = static_cast<int>(random() % static_cast<unsigned>(damaged.size()));
            if (round % 2 == 0)
                damaged[at] = static_cast<char>(random());
            else
                damaged.remove(at, static_cast<int>(random() % 40));
        }
        Diagnostics diagnostics;
        std::optional<XmlError> refusal;
        const auto machine = readMachineFile(damaged, diagnostics, &refusal);
        ASSERT_NE(machine, nullptr);
        const auto isKeyed = [](const Diagnostic& entry) { return !entry.key.isEmpty(); };
        const auto& entries = diagnostics.entries;
        EXPECT_EQ(machine->valid, std::none_of(entries.begin(), entries.end(), isKeyed))
            << damaged.constData();
        EXPECT_TRUE(!refusal || machine->numericalAxes.empty()) << damaged.constData();
    }
}
