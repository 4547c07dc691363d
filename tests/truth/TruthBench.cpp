#include "TruthBench.h"

#include <gtest/gtest.h>

#include <QDomDocument>
#include <QFile>
#include <algorithm>
#include <cmath>

#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "items/GenerateIsoCode.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "nc/calc/ProgramAudit.h"

using TORNVALE::UserPostProcessor;

TruthBench::TruthBench(const QString& machine) : bench_(machine), postProcessor_(machine) {
    startEarly(std::nullopt);
}

const MachineDescription& TruthBench::machine() const {
    return ConfigReader::instance().description();
}

void TruthBench::startEarly(std::optional<double> time_s) {
    preLaunchTime_s_ = time_s;
    ParaReader settings;
    settings.setValue(QStringLiteral("StatusPreProcessing/IsPreLaunch"),
                      time_s ? QStringLiteral("true") : QStringLiteral("false"));
    settings.setValue(QStringLiteral("StatusPreProcessing/PreLaunchTime"), time_s.value_or(0));
}

void TruthBench::usePostProcessor(const QString& stem, const QByteArray& content) {
    postProcessor_ = stem;
    const QString name = QStringLiteral("UserPostProcessor/%1.xml").arg(stem);
    if (content.isNull()) {
        QFile file(shippedInstallation() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        ProgramBench::installation().write(name, file.readAll());
    } else {
        ProgramBench::installation().write(name, content);
    }
    ParaReader().setValue(QStringLiteral("StatusPreProcessing/PostProcessor"), name);
    UserPostProcessor::instance().reload();
}

ToolData& TruthBench::toolFor(const ItemPlan& plan) {
    ToolData& tool = tools_.emplace_back(*ProgramBench::tool(0));
    tool.record().spindleNo = plan.spindle;
    tool.record().spName = QStringLiteral("T%1").arg(plan.spindle);
    tool.record().toolNo = plan.tool;
    tool.record().rpm = static_cast<float>(plan.rpm);
    return tool;
}

void TruthBench::build(const std::vector<ItemPlan>& plans) {
    bench_.tree().clearAll();
    tools_.clear();
    for (const ItemPlan& plan : plans) {
        UserTopItem* group = bench_.tree().root().group(plan.group);
        ASSERT_NE(group, nullptr) << plan.group.toStdString();
        TORNVALE::IsoItem& item = bench_.add(*group, QString());
        item.SetTool(&toolFor(plan), false);
        item.editIso().sourceCodeString = plan.code;
        item.takeCheckState(true);
        item.doIt();
        if (!plan.isChecked || !item.isInLimits())
            item.setChecked(false);
    }
    bench_.commit();
}

TruthBench::Program TruthBench::generate(const QString& pattern) {
    UserPostProcessor& postProcessor = UserPostProcessor::instance();
    EXPECT_TRUE(postProcessor.choosePattern(pattern)) << pattern.toStdString();
    Program program;
    const TORNVALE::NcProgram made = TORNVALE::makeNcProgram(bench_.tree().root());
    EXPECT_EQ(made.refusal, QString());
    EXPECT_EQ(made.lines, made.text.count(QLatin1Char('\n')));
    EXPECT_NEAR(made.seconds, made.lines * 0.001 * machine().interpolationParameters.interpolationTime, 1e-9);
    program.nc = made.text;
    QVector<TORNVALE::ProgramGroup*> groups;
    for (const QString& name : postProcessor.GetCoordinateList()) {
        UserTopItem* group = bench_.tree().root().group(name);
        groups.append(group);
        for (const TORNVALE::CodeManagerItem* item : group->items()) {
            if (item->isActive())
                program.items.push_back({groups.size(), item->chainName(),
                                         item->toolData()->record().spindleNo,
                                         item->toolData()->record().toolNo, item->rpm(), item->LeadIn(),
                                         item->IsoCode(), item->LeadOut()});
        }
    }
    program.groups = groups.size();
    postProcessor.ProcessGroups(program.planned, groups, false);
    return program;
}

/// Planned lines hold the axes by their ids, written ones as the chain's text names them.
NcDialect TruthBench::dialect(bool isWritten) const {
    NcDialect dialect;
    dialect.rapidFeed = machine().interpolationParameters.rapidThreshold;
    dialect.delay = machine().userCommand.delay;
    QVector<QVector<QChar>> orders;
    for (const auto& system : machine().workCoordinateSystems) {
        for (const QString& chain : system->kinematicChain) {
            const AxisMap map = machine().axisMap(chain, false);
            QVector<QChar> order;
            if (isWritten) {
                for (const QChar letter : chain) {
                    if (map.values().contains(letter) && !order.contains(letter))
                        order.append(letter);
                }
            } else {
                order = map.values().toVector();
            }
            orders.append(order);
        }
    }
    // Chains differ in one axis at one place: all first axes, all second ones and so on.
    for (int place = 0; place < 6; ++place) {
        for (const QVector<QChar>& order : orders) {
            if (place < order.size() && !dialect.order.contains(order[place]))
                dialect.order += order[place];
        }
    }
    for (const QChar letter : dialect.order)
        dialect.letters.append(letter);
    std::sort(dialect.letters.begin(), dialect.letters.end());
    return dialect;
}

/// Lines of actions and of the pattern, from the file itself.
QStringList TruthBench::knownLines() const {
    QFile file(
        ProgramBench::installation().file(QStringLiteral("UserPostProcessor/%1.xml").arg(postProcessor_)));
    QDomDocument document;
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(document.setContent(&file));
    QStringList lines;
    for (const char* tag : {"Item", "Line"}) {
        const QDomNodeList list = document.elementsByTagName(QLatin1String(tag));
        for (int i = 0; i < list.size(); ++i)
            lines << list.at(i).toElement().text();
    }
    return lines;
}

/// The written motions must be the planned ones, equal neighbours on one line.
std::string TruthBench::foldFaults(const NcText& planned, const NcText& written, std::vector<bool>& folded) {
    const std::vector<const NcLine*> writtenMotions = written.motions();
    std::size_t at = 0;
    const NcLine* before = nullptr;
    int numberBefore = -1;
    for (const NcLine& line : planned.lines) {
        if (line.kind != NcLine::Kind::Motion)
            continue;
        const bool isRepeat =
            before != nullptr && numberBefore + 1 == line.number && before->text == line.text;
        before = &line;
        numberBefore = line.number;
        if (isRepeat) {
            ++foldedLines_;
            folded[at - 1] = true;
            continue;
        }
        if (at >= writtenMotions.size())
            return "the written program lacks planned line " + std::to_string(line.number) + '\n';
        if (!writtenMotions[at]->isSameMotion(line))
            return "written line " + std::to_string(writtenMotions[at]->number) + " is not planned line " +
                   std::to_string(line.number) + '\n';
        ++at;
        folded.push_back(false);
    }
    return at == writtenMotions.size() ? "" : "the written program has more motion than the planned one\n";
}

/// Each body on its own, by the audit of the program itself.
std::string TruthBench::auditFaults(const Program& program) const {
    std::string faults;
    for (std::size_t i = 0; i < program.items.size(); ++i) {
        Diagnostics diagnostics;
        const auto audit =
            auditProgram(machine(), program.items[i].chain, program.items[i].body, diagnostics);
        if (!audit || audit->hasViolation())
            faults += "the audit refuses the body of item " + std::to_string(i) + '\n';
    }
    return faults;
}

std::string TruthBench::played(const NcText& text, const NcDialect& dialect, const Program& program,
                               NcPlayer::Options options) {
    options.preLaunchTime_s = preLaunchTime_s_;
    options.known = knownLines();
    options.groups = program.groups;
    NcPlayer player(machine(), dialect, program.items, options);
    player.play(text);
    earlyStarts_ += player.earlyStarts();
    toolChanges_ += player.toolChanges();
    largestAcceleration_ = std::max(largestAcceleration_, player.limits().largestAcceleration());
    largestSpeed_ = std::max(largestSpeed_, player.limits().largestSpeed());
    return player.report();
}

std::string TruthBench::faultsOf(const Program& program) {
    const NcText planned(program.planned, dialect(false));
    const NcText written(program.nc, dialect(true));
    NcPlayer::Options options;
    options.isFolded = false;
    std::string faults = auditFaults(program);
    if (const std::string found = played(planned, dialect(false), program, options); !found.empty())
        faults += "planned:\n" + found;
    options.isFolded = true;
    faults += foldFaults(planned, written, options.foldedMotions);
    if (const std::string found = played(written, dialect(true), program, options); !found.empty())
        faults += "written:\n" + found;
    return faults;
}

// --- random jobs ---

namespace {

int pick(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

template <typename T>
T oneOf(std::mt19937& random, std::initializer_list<T> values) {
    return values.begin()[pick(random, 0, static_cast<int>(values.size()) - 1)];
}

/// A rapid approach, a few moves at one or several feeds, some of them back and forth, and off.
QString randomCode(std::mt19937& random, bool isFiveAxis) {
    const int x = pick(random, 50, 900);
    const int y = pick(random, 50, 500);
    QString code = QStringLiteral("G0 X%1 Y%2 Z220").arg(x).arg(y);
    if (isFiveAxis)
        code += QStringLiteral(" C%1 A%2")
                    .arg(oneOf(random, {0, 0, 90, -90, 45, 180}))
                    .arg(oneOf(random, {0, 0, 15, -15}));
    code +=
        QStringLiteral("\nG0 Z130\nG1 Z%1 F%2\n").arg(pick(random, 80, 120)).arg(oneOf(random, {900, 3000}));
    const int moves = pick(random, 1, 4);
    for (int i = 0; i < moves; ++i) {
        const double dx = pick(random, -30000, 30000) / 1000.0;
        const double dy = pick(random, -30000, 30000) / 1000.0;
        code += QStringLiteral("G1 X%1 Y%2").arg(x + dx).arg(y + dy);
        if (isFiveAxis && pick(random, 0, 4) == 0)
            code += QStringLiteral(" C%1").arg(pick(random, -60, 60));
        if (pick(random, 0, 2) == 0)
            code += QStringLiteral(" F%1").arg(oneOf(random, {1200, 4000, 9000}));
        code += QLatin1Char('\n');
    }
    if (pick(random, 0, 2) == 0)
        code += QStringLiteral("G0 Z140\nG0 X%1\nG1 Z110 F2000\n").arg(x);
    return code + QStringLiteral("G0 Z130\nG0 Z220\n");
}

}  // namespace

std::vector<ItemPlan> TruthBench::randomJob(std::mt19937& random) const {
    std::vector<ItemPlan> plans;
    const bool isFiveAxis =
        machine().axisMap(machine().machineParameters.kinematicChain.value(0), false).contains(5);
    const int spindles = static_cast<int>(machine().spindles.size());
    int coaxial = 1;
    for (const auto& spindle : machine().spindles)
        coaxial = spindle->coaxial.isEmpty() ? coaxial : spindle->coaxial.mid(1).toInt();
    for (const auto& system : machine().workCoordinateSystems) {
        const int count = pick(random, 1, 6);
        for (int i = 0; i < count; ++i) {
            ItemPlan plan;
            plan.group = system->name;
            plan.spindle = oneOf(random, {1, 1, 2, coaxial, pick(random, 1, spindles)});
            plan.tool = plan.spindle == 1 ? pick(random, 1, 3) : 1;
            plan.rpm = oneOf(random, {6000.0, 6000.0, 12000.0, 18000.0});
            plan.isChecked = pick(random, 0, 5) != 0;
            plan.code = randomCode(random, isFiveAxis);
            plans.push_back(plan);
        }
    }
    return plans;
}

std::string TruthBench::description(const std::vector<ItemPlan>& plans) {
    std::string text;
    for (const ItemPlan& plan : plans)
        text += plan.group.toStdString() + " T" + std::to_string(plan.spindle) + " tool " +
                std::to_string(plan.tool) + " rpm " + std::to_string(static_cast<int>(plan.rpm)) +
                (plan.isChecked ? "" : " unchecked") + "\n" + plan.code.toStdString();
    return text;
}
