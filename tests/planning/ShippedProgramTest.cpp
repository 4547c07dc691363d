#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <deque>
#include <optional>

#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/machineStatePreprocessing.h"
#include "planning/PlannedItem.h"
#include "planning/PlanningTestSupport.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"

// Programs on the shipped machines, read as their operator reads them.

namespace {

const QString kTable = QStringLiteral("X->Z->C->A;Y");

QByteArray shippedFile(const char* name) {
    QFile file(shippedInstallation() + QLatin1Char('/') + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

/// "10 M3 S6000" for a block, "G1 ... F36000" with the last line of a way or a body; empty lines left out.
QStringList listing(const QString& text) {
    QStringList entries;
    const QStringList lines = planningtest::linesOf(text);
    for (int i = 0; i < lines.size();) {
        const bool isMotion = lines[i].startsWith(QStringLiteral("G1 "));
        const auto feed = [&lines](int k) { return lines[k].mid(lines[k].indexOf(QLatin1Char('F'))); };
        int end = i + 1;
        while (end < lines.size() && (isMotion ? feed(end) == feed(i) : lines[end] == lines[i]))
            ++end;
        entries << (isMotion ? lines[end - 1].simplified() : QString::number(end - i) + ' ' + lines[i]);
        i = end;
    }
    return entries;
}

class ShippedProgram : public ::testing::Test {
  protected:
    void TearDown() override { ConfigReader::instance().setDescription(nullptr); }

    void SetUp() override {
        installation_.write(QStringLiteral("data.ini"),
                            "[StatusPreProcessing]\nIsPreLaunch=true\nPreLaunchTime=0.5\n");
        ConfigReader::instance().SetConfig(shippedInstallation() +
                                           QStringLiteral("/machineSample/TornBridge5.xml"));
        Diagnostics diagnostics;
        library_ = readToolLibrary(shippedFile("toollib.json"), QStringLiteral("3.3.0.5"), diagnostics);
        ASSERT_TRUE(library_.has_value());
    }

    /// An item with the shipped tool, converted as the program tree does it.
    void add(int spindle, int toolNumber, double rpm, const char* iso) {
        for (const ToolRecord& record : library_->tools) {
            if (record.spindleNo != spindle || record.toolNo != toolNumber)
                continue;
            ToolData& tool = tools_.emplace_back(record);
            HandleIsoCode::GCodeConverter converter(kTable);
            converter.tool = &tool;
            converter.WCSName = QStringLiteral("G54");
            EXPECT_TRUE(converter.doIt(QLatin1String(iso))) << iso;
            items_.emplace_back(
                PlanItem{&tool.record(), rpm, false, converter.LeadIn, converter.LeadOut, converter.IsoCode},
                true);
            return;
        }
        FAIL() << "no tool " << toolNumber << " on spindle " << spindle;
    }

    QString program() {
        QList<TORNVALE::ProgramItem*> list;
        for (PlannedItem& item : items_)
            list.append(&item);
        const QString home = ConfigReader::instance().description().homeLine(kTable);
        TORNVALE::machineStatePreprocessing planner;
        return planner.ProcessChain(home, home, kTable, {}, {}, {}, {}, list, {}, {}, nullptr);
    }

  private:
    TemporaryInstallation installation_;
    std::optional<ToolLibrary> library_;
    std::deque<ToolData> tools_;
    std::deque<PlannedItem> items_;
};

}  // namespace

// The end mill is mounted and comes in from the top; the saw starts half a second before the mill is done;
// the second mill is fetched at the top with the saw standing.
TEST_F(ShippedProgram, MillSawAndMillOnTheBridge) {
    add(1, 1, 18000, "G0 X100 Y100 Z60\nG1 Z50 F5000\nG1 Z10 F2000\nG1 X400 F6000\nG1 Z50 F5000\nG0 Z60");
    add(2, 1, 6000, "G0 X100 Y100 Z200\nG1 Z150 F5000\nG1 Z40 F2000\nG1 X400 F4000\nG1 Z150 F5000\nG0 Z200");
    add(1, 2, 18000, "G0 X300 Y200 Z60\nG1 Z50 F5000\nG1 Z5 F2000\nG1 X100 F4000\nG1 Z50 F5000\nG0 Z60");
    const QStringList expected{"10 M6 T1",
                               "10 M3 S18000",
                               "10 M93",
                               "11 (DLY,1)",
                               "G1 X200.000 Y250.000 Z-270.000 C0.000 A0.000 F36000",
                               "10 M93",
                               "G1 X200.000 Y250.000 Z-270.000 C0.000 A0.000 F5000",
                               "G1 X200.000 Y250.000 Z-310.000 C0.000 A0.000 F2000",
                               "G1 X500.000 Y250.000 Z-310.000 C0.000 A0.000 F6000",
                               "G1 X500.000 Y250.000 Z-309.972 C0.000 A0.000 F5000",
                               "10 M13 S6000",
                               "10 M94",
                               "G1 X500.000 Y250.000 Z-270.000 C0.000 A0.000 F5000",
                               "10 M5",
                               "G1 X200.000 Y250.000 Z-250.000 C0.000 A-90.000 F36000",
                               "10 M94",
                               "G1 X200.000 Y250.000 Z-250.000 C0.000 A-90.000 F5000",
                               "G1 X200.000 Y250.000 Z-360.000 C0.000 A-90.000 F2000",
                               "G1 X500.000 Y250.000 Z-360.000 C0.000 A-90.000 F4000",
                               "G1 X500.000 Y250.000 Z-250.000 C0.000 A-90.000 F5000",
                               "10 M15",
                               "G1 X500.000 Y250.000 Z0.000 C0.000 A-90.000 F36000",
                               "10 M6 T2",
                               "10 M3 S18000",
                               "10 M93",
                               "11 (DLY,1)",
                               "G1 X400.000 Y350.000 Z-290.000 C0.000 A0.000 F36000",
                               "10 M93",
                               "G1 X400.000 Y350.000 Z-290.000 C0.000 A0.000 F5000",
                               "G1 X400.000 Y350.000 Z-335.000 C0.000 A0.000 F2000",
                               "G1 X200.000 Y350.000 Z-335.000 C0.000 A0.000 F4000",
                               "G1 X200.000 Y350.000 Z-290.000 C0.000 A0.000 F5000",
                               "10 M5",
                               "G1 X0.000 Y1400.000 Z0.000 C0.000 A0.000 F36000"};
    EXPECT_EQ(listing(program()), expected);
}

// The first line of a program with a tool change stands at the top, over the work.
TEST_F(ShippedProgram, TheFirstWayBeginsAtTheTop) {
    add(1, 1, 18000, "G0 X100 Y100 Z60\nG1 Z50 F5000\nG1 X400 F6000\nG0 Z60");
    const QString text = program();
    const int place = text.indexOf(QStringLiteral("G1 "));
    EXPECT_EQ(text.mid(place, text.indexOf(QLatin1Char('\n'), place) - place).simplified(),
              QStringLiteral("G1 X200.000 Y250.000 Z0.000 C0.000 A0.000 F36000"));
}

// Where the first tool comes in and where tools are changed, nothing may stand in the way: the zero of the
// tool axis is its home.
TEST_F(ShippedProgram, EveryMachineHasItsToolAxisAtHomeAtZero) {
    const QDir folder(shippedInstallation() + QStringLiteral("/machineSample"));
    const QStringList names = folder.entryList({QStringLiteral("*.xml")}, QDir::Files);
    ASSERT_GE(names.size(), 4);
    for (const QString& name : names) {
        ConfigReader::instance().SetConfig(folder.filePath(name));
        for (const numericalAxisStruct* axis : ConfigReader::instance().numericalAxes()) {
            if (axis->id != 3)
                continue;
            EXPECT_EQ(axis->homePosition.toDouble(), 0.0) << name.toStdString();
            EXPECT_LT(axis->lower.toDouble(), -axis->upper.toDouble()) << name.toStdString();
        }
    }
}

// A spindle that cannot be started, stopped or told apart makes no program.
TEST_F(ShippedProgram, EverySpindleHasCommandsOfItsOwn) {
    const QDir folder(shippedInstallation() + QStringLiteral("/machineSample"));
    for (const QString& name : folder.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
        ConfigReader::instance().SetConfig(folder.filePath(name));
        QStringList seen;
        for (const spindleStruct* spindle : ConfigReader::instance().spindles()) {
            EXPECT_EQ(spindle->startString.count(QLatin1Char('#')), 1) << name.toStdString();
            EXPECT_FALSE(spindle->stopString.isEmpty()) << name.toStdString();
            EXPECT_EQ(spindle->range.toInt() > 1, spindle->toolChangeString.contains(QLatin1Char('#')))
                << name.toStdString() << ' ' << spindle->name.toStdString();
            for (const QString& text : {spindle->startString, spindle->stopString, spindle->checkString,
                                        spindle->toolChangeString}) {
                if (text.isEmpty())
                    continue;
                const QString word = text.section(QLatin1Char(' '), 0, 0);
                EXPECT_FALSE(seen.contains(word)) << name.toStdString() << ' ' << word.toStdString();
                seen << word;
            }
        }
    }
}
