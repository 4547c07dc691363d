#include "tools/CheckRpmReverse.h"

#include <QDebug>
#include <cmath>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "machine/readConfig.h"

void SharedMethods::CheckRpmReverse(int spindleId, double& rpm, QWidget* parent) {
    const spindleStruct* spindle = ConfigReader::instance().description().findSpindle(spindleId);
    if (spindle == nullptr) {
        qWarning().noquote() << QStringLiteral(" Spindle is nullptr.Id:") + QString::number(spindleId);
        return;
    }
    if (spindle->reverseString == QLatin1String("true") || !(rpm < 0))
        return;
    rpm = std::abs(rpm);
    const auto& language = TORNVALE::LanguageReader::instance();
    const QString group = QStringLiteral("ToolEditor");
    userDialogs().tell(UserDialogs::Kind::Warning, language.text(group, QStringLiteral("Title")),
                       language.text(group, QStringLiteral("ReverseErrorMsg")), parent);
}
