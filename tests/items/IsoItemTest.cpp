#include "items/IsoItem.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <random>

#include "IsoBench.h"
#include "items/ItemMaker.h"
#include "machine/Transform.h"
#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/trajNode.h"
#include "setup/userCoordinateSystem.h"

using TORNVALE::IsoItem;

namespace {

constexpr int kName = IsoItem::kNameColumn;

/// The texts that the converter makes of the item's fields when it is asked directly.
HandleIsoCode::GCodeConverter converted(const IsoItem& item, double previousFifth = 0) {
    HandleIsoCode::GCodeConverter converter(item.record().Chain);
    converter.translation = item.record().translation;
    converter.offset = item.record().offset;
    converter.mirrorAngle = item.iso().mirrorAngle;
    converter.tool = &item.tool();
    converter.axisShift = item.iso().axisShift;
    converter.UserCoordinate = item.record().UserCoordinate;
    converter.WCSName = item.record().WCSName;
    converter.previousFifth = previousFifth;
    static_cast<void>(converter.doIt(item.iso().sourceCodeString));
    return converter;
}

void expectTexts(const IsoItem& item, const HandleIsoCode::GCodeConverter& expected) {
    EXPECT_EQ(item.WorkCode(), expected.WorkCode);
    EXPECT_EQ(item.LeadIn(), expected.LeadIn);
    EXPECT_EQ(item.IsoCode(), expected.IsoCode);
    EXPECT_EQ(item.LeadOut(), expected.LeadOut);
}

void expectRefused(const IsoItem& item) {
    EXPECT_EQ(item.WorkCode() + item.LeadIn() + item.IsoCode() + item.LeadOut(), QString());
    EXPECT_EQ(item.isActive(), false);
    for (int column = 0; column < IsoItem::kColumnCount; ++column)
        EXPECT_EQ(item.background(column).color(), QColor(255, 0, 0)) << column;
}

QByteArray fileContent(const QString& name) {
    QFile file(name);
    EXPECT_EQ(file.open(QIODevice::ReadOnly), true) << name.toStdString();
    return file.readAll();
}

/// The working directory is an empty folder while it lives.
struct WorkingFolder {
    WorkingFolder() { QDir::setCurrent(folder.path()); }
    ~WorkingFolder() { QDir::setCurrent(before); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    QString before = QDir::currentPath();
    QTemporaryDir folder;
};

const QString kTitle = QStringLiteral("提示");
const QString kWritten =
    QStringLiteral("输入的IsoCode和输出的IsoCode已经写入到当前目录下的input_file.txt和output_file.txt");

}  // namespace

TEST(IsoItem, FreshItem_HasItsTypeAndName) {
    IsoBench bench;
    const IsoItem item;
    EXPECT_EQ(item.type(), 1001);
    EXPECT_EQ(item.text(IsoItem::kKindColumn), QStringLiteral("Iso"));
    EXPECT_EQ(item.checkState(kName), Qt::Checked);
    EXPECT_EQ(item.iso(), IsoRecord());
    EXPECT_EQ(item.problem(), QString());
}

TEST(IsoItem, Generated_HasTheTextsOfTheConverter) {
    IsoBench bench;
    IsoItem& item = bench.add(kShortProgram);
    item.editRecord().translation = SbVec3f(5, -6, 7);
    item.editRecord().offset = SbVec3f(0, 0, 2);
    item.editIso().mirrorAngle = 90;
    item.editIso().axisShift = 1.5;
    item.doIt();
    expectTexts(item, converted(item));
    EXPECT_GT(item.IsoCode().count('\n'), 20);
    EXPECT_EQ(item.LeadIn().count('\n'), 2);
    EXPECT_EQ(item.problem(), QString());
    EXPECT_EQ(item.isActive(), true);
    // One line every 4 ms.
    const int lines = item.joinedCode().count('\n') + 1;
    EXPECT_NEAR(item.record().Time, lines * 0.004, 1e-9);
}

TEST(IsoItem, EveryParameter_ChangesTheCode) {
    IsoBench bench;
    IsoItem& item = bench.made(kShortProgram);
    QString before = item.IsoCode();
    const auto expectChange = [&](const char* what) {
        item.doIt();
        EXPECT_NE(item.IsoCode(), before) << what;
        expectTexts(item, converted(item));
        before = item.IsoCode();
    };
    item.editRecord().translation = SbVec3f(1, 0, 0);
    expectChange("translation");
    item.editRecord().offset = SbVec3f(0, 1, 0);
    expectChange("offset");
    item.editIso().mirrorAngle = 180;
    expectChange("mirrorAngle");
    item.editIso().axisShift = 3;
    expectChange("axisShift");
    item.SetTool(TORNVALE::ToolsManager::instance().installedTools().last(), false);
    expectChange("tool");
    item.changeUserCoordinateSystem(1);
    expectChange("UserCoordinate");
    EXPECT_EQ(item.record().UserCoordinate, SbVec3f(10, 20, 30));
    item.editIso().sourceCodeString += "G1 X7\n";
    expectChange("sourceCodeString");
}

TEST(IsoItem, PreviousItem_DecidesTheWayAroundOfAxisFive) {
    IsoBench bench;
    bench.made("G0 X0 Y0 Z50 A-170\nG1 X5 F2000\nG0 X6\n");
    IsoItem& item = bench.made("G0 X0 Y0 Z50 A180\nG1 X5 F2000\nG0 X6\n");
    EXPECT_EQ(item.previousFifth(), -170.0);
    expectTexts(item, converted(item, -170));
    EXPECT_EQ(item.LeadIn().contains("A-180.000"), true) << item.LeadIn().toStdString();
}

TEST(IsoItem, AuxiliaryAxisOfTheGroup_StandsInEveryLine) {
    IsoBench bench([](MachineDescription& machine) {
        auto axis = std::make_unique<numericalAxisStruct>(*machine.numericalAxes.front());
        axis->name = axis->nickName = QStringLiteral("E");
        axis->id = 6;
        axis->lower = QStringLiteral("-40");
        machine.numericalAxes.push_back(std::move(axis));
        machine.machineParameters.kinematicChain = QStringList{QStringLiteral("X->Y->Z->C->A;E")};
        machine.workCoordinateSystems.front()->kinematicChain = QStringList{QStringLiteral("XYZCAE")};
    });
    const IsoItem& item = bench.made(kShortProgram);
    ASSERT_NE(bench.group().auxiliaryAxis(), nullptr);
    EXPECT_EQ(item.WorkCode().count(" E-40.000 "), item.WorkCode().count('\n'))
        << item.WorkCode().toStdString();
    EXPECT_GT(item.WorkCode().count('\n'), 2);
}

TEST(IsoItem, RefusedProgram_TurnsRedAndNamesTheLine) {
    IsoBench bench;
    const IsoItem& item = bench.made(kRefusedProgram);
    expectRefused(item);
    EXPECT_EQ(item.problem(),
              english("IsoItem/Problem", "Line").arg(3).arg(english("IsoItem/Problem", "ArcChord")));
    EXPECT_EQ(item.toolTip(kName), item.problem());
    EXPECT_EQ(item.toolTip(IsoItem::kLimitColumn), item.problem());
    EXPECT_EQ(bench.log.contains("ISO line 3"), true);
}

TEST(IsoItem, MendedProgram_LosesItsProblem) {
    IsoBench bench;
    IsoItem& item = bench.made(kRefusedProgram);
    item.editIso().sourceCodeString = kShortProgram;
    item.doIt();
    EXPECT_EQ(item.problem(), QString());
    EXPECT_EQ(item.toolTip(kName), QString());
    expectTexts(item, converted(item));
    item.editIso().sourceCodeString.clear();
    item.doIt();
    expectRefused(item);
    EXPECT_EQ(item.problem(), english("IsoItem/Problem", "Empty"));
}

TEST(IsoItem, PlacedOnAChainWithoutRotaryAxes_TurnsRedAndSaysSo) {
    IsoBench bench;
    IsoItem& item = bench.made(kShortProgram);
    item.editRecord().Chain = QStringLiteral("XYZ");
    const auto generate = [&item] {
        item.doIt();
        return item.problem();
    };
    EXPECT_EQ(generate(), QString()) << "nothing is placed";
    const QString reason = english("IsoItem/Problem", "NoRotaryAxes");
    ASSERT_FALSE(reason.isEmpty());
    item.editRecord().translation = SbVec3f(1, 0, 0);
    EXPECT_EQ(generate(), reason);
    expectRefused(item);
    item.editRecord().translation = SbVec3f(0, 0, 0);
    item.editRecord().offset = SbVec3f(0, 1, 0);
    EXPECT_EQ(generate(), reason);
    item.editRecord().offset = SbVec3f(0, 0, 0);
    item.editIso().mirrorAngle = 90;
    EXPECT_EQ(generate(), reason);
    item.editIso().mirrorAngle = 0;
    EXPECT_EQ(generate(), QString());
    EXPECT_FALSE(item.IsoCode().isEmpty());
}

TEST(IsoItem, UndoneRefusal_BringsTheReasonBack) {
    IsoBench bench;
    IsoItem& item = bench.made(kRefusedProgram);
    const TORNVALE::SharedItemState refused = item.state();
    const QString problem = item.problem();
    item.editIso().sourceCodeString = kShortProgram;
    item.doIt();
    const TORNVALE::SharedItemState good = item.state();
    item.restore(*refused);
    EXPECT_EQ(item.problem(), problem);
    EXPECT_EQ(item.iso().sourceCodeString, kRefusedProgram);
    expectRefused(item);
    item.restore(*good);
    EXPECT_EQ(item.problem(), QString());
    EXPECT_EQ(item.toolTip(kName), QString());
    EXPECT_EQ(item.iso().sourceCodeString, kShortProgram);
    expectTexts(item, converted(item));
}

TEST(IsoItem, WithoutAGroup_GenerationEndsTheProcess) {
    IsoBench bench;
    IsoItem item;
    EXPECT_FATAL(item.doIt(), "parent is nullptr\\.");
    item.reactToNewPlace();
    EXPECT_EQ(item.record().Name, QString());
}

TEST(IsoItem, Clone_HasTheFieldsAndNoCode) {
    IsoBench bench;
    IsoItem& item = bench.add(kShortProgram);
    ItemRecord& fields = item.editRecord();
    fields.translation = SbVec3f(1, 2, 3);
    fields.offset = SbVec3f(4, 5, 6);
    fields.Annotation = "comment";
    fields.t = 0.4;
    fields.ItemRpm = -1234;
    fields.UserCoordiSystemId = 1;
    item.editIso() = {90, 2.5, "a.nc", "/p/a.nc", kShortProgram, {}};
    item.doIt();
    ASSERT_NE(item.IsoCode(), QString());

    const std::unique_ptr<QTreeWidgetItem> row(item.clone());
    auto* copy = dynamic_cast<IsoItem*>(row.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->type(), 1001);
    EXPECT_EQ(copy->group(), nullptr);
    EXPECT_EQ(copy->WorkCode() + copy->LeadIn() + copy->IsoCode() + copy->LeadOut(), QString());
    EXPECT_EQ(copy->iso(), item.iso());
    EXPECT_EQ(copy->userCoordinateIds(), (QVector<int>{0, 1}));
    EXPECT_EQ(toolToJson(copy->tool().record()), toolToJson(item.tool().record()));
    EXPECT_EQ(copy->record().UserCoordiSystemId, 1);
    EXPECT_EQ(copy->record().translation, SbVec3f(1, 2, 3));
    EXPECT_EQ(copy->record().offset, SbVec3f(4, 5, 6));
    EXPECT_EQ(copy->record().Annotation, QStringLiteral("comment"));
    EXPECT_EQ(copy->record().t, 0.4);
    EXPECT_EQ(copy->record().ItemRpm, -1234.0);

    // Tools that come and go do not touch a clone that stands nowhere.
    TORNVALE::ToolsManager::instance().notifyObservers();
    EXPECT_EQ(copy->IsoCode(), QString());
}

TEST(IsoItem, PlacedClone_GetsANameOfItsOwnAndGeneratesTheSameCode) {
    IsoBench bench;
    const IsoItem& item = bench.made(kShortProgram);
    auto* copy = dynamic_cast<IsoItem*>(item.clone());
    bench.group().adopt(std::unique_ptr<TORNVALE::CodeManagerItem>(copy), -1);
    copy->reactToNewPlace();
    EXPECT_EQ(copy->record().Chain, QStringLiteral("XYZCA"));
    EXPECT_EQ(copy->record().WCSName, QStringLiteral("G54"));
    EXPECT_NE(copy->record().Name, item.record().Name);
    EXPECT_EQ(copy->text(kName), copy->record().Name);
    EXPECT_EQ(copy->record().Name.startsWith("userCodeItem"), true);
    copy->doIt();
    EXPECT_EQ(copy->IsoCode(), item.IsoCode());
}

TEST(IsoItem, NewPlace_ReplacesAnUnknownSystemByTheFirst) {
    IsoBench bench;
    IsoItem& item = bench.add(kShortProgram);
    item.editRecord().UserCoordiSystemId = 1;
    item.reactToNewPlace();
    EXPECT_EQ(item.record().UserCoordiSystemId, 1);
    item.editRecord().UserCoordiSystemId = 99;
    item.reactToNewPlace();
    EXPECT_EQ(item.record().UserCoordiSystemId, 0);
    EXPECT_EQ(item.userCoordinateIds(), (QVector<int>{0, 1}));
}

TEST(IsoItem, NewPlace_MovesThePathToTheSystem) {
    IsoBench bench;
    IsoItem& item = bench.made(kShortProgram);
    ASSERT_NE(item.pathNode(), nullptr);
    EXPECT_EQ(bench.system(0).trajNodes().size(), 1);
    item.editRecord().UserCoordiSystemId = 1;
    item.reactToNewPlace();
    ASSERT_NE(item.pathNode(), nullptr);
    EXPECT_EQ(bench.system(0).trajNodes().size(), 0);
    EXPECT_EQ(bench.system(1).trajNodes().size(), 1);
    EXPECT_EQ(item.pathNode()->parentSystem(), &bench.system(1));
}

TEST(IsoItem, FirstPlaceInAnEmptyGroup_IsNotCountedFromItsOldName) {
    IsoBench bench;
    const QString first = bench.group().uniqueName(1001);
    auto made = std::make_unique<IsoItem>();
    IsoItem& item = *made;
    item.setName("userCodeItem7");
    bench.group().adopt(std::move(made), -1);
    item.reactToNewPlace();
    EXPECT_EQ(item.record().Name, first);
}

TEST(IsoItem, Document_RoundTripsAllButThePath) {
    IsoBench bench;
    IsoItem& item = bench.add(QStringLiteral("\uFEFFG1 X1 F2000\r\n\tG1 X9 ; 刀 \r\n"));
    item.editIso().mirrorAngle = 270;
    item.editIso().axisShift = 0.125;
    item.editIso().sourceCodeName = "a.anc";
    item.editIso().sourceCodePath = "/p/a.anc";
    item.editRecord().translation = SbVec3f(0.1F, 2, 3);
    item.editRecord().offset = SbVec3f(0, 0, 1.1F);
    item.editRecord().Annotation = QStringLiteral("注释");
    item.editRecord().t = 0.7;
    item.editRecord().ItemRpm = 4321;
    item.editRecord().UserCoordiSystemId = item.editRecord().lastUserCoordinateSystemId = 1;
    item.setChecked(false);
    const QJsonObject block = item.Get();
    EXPECT_EQ(block["checkState"], QJsonValue(false));
    EXPECT_EQ(block["sourceCodePath"], QJsonValue("/p/a.anc"));

    IsoItem& read = bench.add({});
    read.Set(block);
    EXPECT_EQ(read.text(kName), item.record().Name);
    EXPECT_EQ(read.isActive(), true);  // the group's matter
    EXPECT_EQ(read.iso().sourceCodePath, QString());
    EXPECT_EQ(read.record().lastUserCoordinateSystemId, 1);
    QJsonObject again = read.Get();
    again["sourceCodePath"] = "/p/a.anc";
    again["checkState"] = false;
    EXPECT_EQ(again, block);
}

TEST(IsoItem, Set_ReadsTheToolInBothForms) {
    IsoBench bench;
    IsoItem& item = bench.add({});
    const QJsonObject object = toolToJson(IsoBench::tool(7, 66));
    item.Set({{"tool", object}, {"itemRPM", 500}});
    EXPECT_EQ(toolToJson(item.tool().record()), object);
    EXPECT_EQ(item.record().ItemRpm, 500.0);
    // The older form, by position.
    const QJsonArray array{9, 1, 4, 77.5, 30, 12, 20, 8000, QJsonArray{0, 0, 0, 0, 0, 0}, "old", "A"};
    item.Set({{"tool", array}, {"itemRPM", -7}});
    EXPECT_EQ(item.tool().record().index, 9);
    EXPECT_EQ(item.tool().record().toolNo, 4);
    EXPECT_EQ(item.tool().record().length, 77.5F);
    EXPECT_EQ(item.record().ItemRpm, -7.0);
    // An empty array is the object form of nothing.
    item.Set({{"tool", QJsonArray()}});
    EXPECT_EQ(item.tool().record().toolNo, 0);
    EXPECT_EQ(item.record().ItemRpm, 0.0);
}

TEST(IsoItem, Set_KeepsTheDefaultOfAnImpossibleT) {
    IsoBench bench;
    for (const double t : {0.0, 1.5}) {
        IsoItem& item = bench.add({});
        item.Set({{"t", t}});
        EXPECT_EQ(item.record().t, 1.0) << t;
    }
}

TEST(IsoItem, ComparisonFiles_AreTheWorkCodeTwice) {
    IsoBench bench;
    IsoItem& item = bench.add("G0 X0 Y0 Z50 C30 A10\nG1 X1 F2000\nX4\nG0 X0\n");
    item.changeUserCoordinateSystem(1);
    item.doIt();
    const WorkingFolder folder;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, kTitle, kWritten);
    item.writeComparisonFiles();
    EXPECT_EQ(fileContent("input_file.txt"), item.WorkCode().toUtf8());
    const QByteArray output = fileContent("output_file.txt");
    TransformationOperator inverse(&item.tool(), 0.0, SbVec3f(10, 20, 30), "XYZCA", "G54", 1);
    EXPECT_EQ(QString(output), inverse.transformText(item.IsoCode()));
    // First and last timed line lie where the feed moves of the work code begin and end.
    const QStringList lines = QString(output).trimmed().split('\n');
    const auto word = [](const QString& line, char letter) {
        return HandleIsoCode::GCodeConverter::ReadWord(line, QChar(letter), nullptr);
    };
    for (const auto& [letter, value] :
         {std::pair{'X', 1.0}, {'Y', 0.0}, {'Z', 50.0}, {'C', 30.0}, {'A', 10.0}})
        EXPECT_NEAR(word(lines.first(), letter), value, 0.002) << letter;
    EXPECT_NEAR(word(lines.last(), 'X'), 4.0, 0.002);
}

TEST(IsoItem, ComparisonFilesThatCannotBeOpened_AreSkipped) {
    IsoBench bench;
    const IsoItem& item = bench.made(kShortProgram);
    const WorkingFolder folder;
    ASSERT_EQ(QDir().mkdir("input_file.txt"), true);
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, kTitle, kWritten);
    item.writeComparisonFiles();
    EXPECT_EQ(bench.log.contains("input_file.txt cannot be written"), true);
    EXPECT_GT(fileContent("output_file.txt").size(), 100);
}

TEST(IsoItem, AwkwardProgram_ReadsAsTheConverterReads) {
    IsoBench bench;
    for (const char* source : {"\xEF\xBB\xBFG1 X5 F2000\r\n\tX9\t\r\n", "g1 x5 f2000\nG1 X5 F2000\n",
                               "G1 X Y- Z.5 F2000\nG1 X\n", "N10G1X5F2000N11\nG1X-.25",
                               "%\nO1000\n(comment)\nG1 X1 F2000\n;G1 X9\nX2", "G1 X1-2 Y3 F1500\nG1 Y5"}) {
        IsoItem& item = bench.made(QString::fromUtf8(source));
        expectTexts(item, converted(item));
        EXPECT_NE(item.IsoCode(), QString()) << source;
        bench.group().release(&item);
    }
}

TEST(IsoItem, AnyBytes_GiveCodeOrAReason) {
    IsoBench bench;
    IsoItem& item = bench.add({});
    std::mt19937 random(5);
    const QString letters = QStringLiteral("GGGXYZCAFR0123456789.-  \n\n()U;=,\r\t\u4e00");
    for (int i = 0; i < 300; ++i) {
        QString source;
        for (int n = static_cast<int>(random() % 120); n > 0; --n)
            source += random() % 50 == 0
                          ? QChar(static_cast<ushort>(random()))
                          : letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        item.editIso().sourceCodeString = source;
        const ExpectedDialogs dialogs;
        item.doIt();
        EXPECT_EQ(item.IsoCode().isEmpty(), !item.problem().isEmpty())
            << source.toUtf8().toHex().toStdString();
    }
}

TEST(IsoItem, ALineOfFiftyMegabytes_IsReadInNoTime) {
    IsoBench bench;
    const QString blank(50 << 20, QLatin1Char(' '));
    const IsoItem& item = bench.made("G0 X0 Y0 Z50\nG1 X5 F2000" + blank + "Y7\nG0 Z50\n");
    EXPECT_EQ(item.problem(), QString());
    EXPECT_EQ(item.WorkCode().contains("X5.000 Y7.000"), true);
}

TEST(IsoItem, MakerAndGroup_KnowTheKind) {
    IsoBench bench;
    const std::unique_ptr<TORNVALE::CodeManagerItem> item = TORNVALE::makeItem(1001);
    EXPECT_NE(dynamic_cast<IsoItem*>(item.get()), nullptr);
}
