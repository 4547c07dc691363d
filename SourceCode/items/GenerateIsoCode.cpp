#include "items/GenerateIsoCode.h"

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/WholeFile.h"
#include "items/CodeManagerItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolData.h"

namespace TORNVALE {

namespace {

QString textOf(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("Tornvale/GenerateIsoCode"), QLatin1String(key));
}

/// Empty when all items of the group keep the limits.
QString overLimitText(const UserTopItem& group) {
    QString rows;
    const QVector<CodeManagerItem*> items = group.items();
    for (int row = 0; row < items.size(); ++row) {
        if (!items[row]->isInLimits())
            rows += QStringLiteral("%1 ").arg(row);
    }
    if (rows.isEmpty())
        return {};
    return group.wcsName() + QStringLiteral(" Item:") + rows + QStringLiteral("\nover limited.");
}

}  // namespace

QString missingSpindleText(const QVector<UserTopItem*>& groups) {
    const MachineDescription& machine = ConfigReader::instance().description();
    for (const UserTopItem* group : groups) {
        for (const CodeManagerItem* item : group->items()) {
            const int spindle = item->tool().record().spindleNo;
            if (item->isActive() && machine.findSpindle(spindle) == nullptr)
                return LanguageReader::instance()
                    .text(QStringLiteral("UserTopItem"), QStringLiteral("SpindleErrorMsg"))
                    .arg(item->itemName(), group->wcsName())
                    .arg(spindle);
        }
    }
    return {};
}

NcProgram makeNcProgram(const UserTopItemManager& root) {
    UserPostProcessor& postProcessor = UserPostProcessor::instance();
    NcProgram program;
    QVector<UserTopItem*> groups;
    for (const QString& name : postProcessor.GetCoordinateList()) {
        UserTopItem* group = root.group(name);
        if (group == nullptr)
            continue;
        group->refreshDerivedTexts();
        program.refusal = overLimitText(*group);
        if (!program.refusal.isEmpty())
            return program;
        groups.append(group);
    }
    program.refusal = missingSpindleText(groups);
    if (!program.refusal.isEmpty())
        return program;
    postProcessor.ProcessGroups(program.text, {groups.begin(), groups.end()}, true);
    constexpr double kMsPerSecond = 1000.0;
    program.lines = program.text.count(QLatin1Char('\n'));
    program.seconds =
        program.lines *
        (ConfigReader::instance().description().interpolationParameters.interpolationTime / kMsPerSecond);
    return program;
}

}  // namespace TORNVALE

std::optional<QString> TreeWidgetManager::GenerateIsoCode(const QString& documentPath) {
    using Kind = UserDialogs::Kind;
    const QString title = TORNVALE::textOf("Title");
    if (!TORNVALE::UserPostProcessor::instance().hasPatternOrTells())
        return std::nullopt;
    const TORNVALE::NcProgram program = TORNVALE::makeNcProgram(*root_);
    if (!program.refusal.isEmpty()) {
        userDialogs().tell(Kind::Warning, title, program.refusal, this);
        return std::nullopt;
    }
    const QString path = TORNVALE::UserPostProcessor::instance().outputPath(documentPath);
    // An empty text is no program, and would take the place of one.
    if (program.text.isEmpty() || !writeWhole(path, program.text.toUtf8())) {
        userDialogs().tell(Kind::Warning, title, TORNVALE::textOf("ErrorMsg") + QLatin1Char('\n') + path,
                           this);
        return std::nullopt;
    }
    userDialogs().tell(Kind::Information, title, TORNVALE::textOf("Sucessful") + QLatin1Char('\n') + path,
                       this);
    constexpr int kDecimals = 3;
    return QString::number(program.seconds, 'f', kDecimals);
}
