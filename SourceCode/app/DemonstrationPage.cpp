#include "app/DemonstrationPage.h"

#include <QHBoxLayout>
#include <QTextBrowser>

#include "app/Demonstration.h"
#include "app/PathPicture.h"
#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "nc/calc/WayPointText.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Tornvale/Demonstration"),
                                                     QLatin1String(key));
}

QString cell(const QString& text, const char* style = "") {
    return QStringLiteral("<td style='padding:3px 14px 3px 0;white-space:nowrap;%1'>%2</td>")
        .arg(QLatin1String(style), text.toHtmlEscaped());
}

QString fact(const char* key, const QString& value) {
    return QStringLiteral("<tr>") + cell(textOf(key)) + cell(value, "font-weight:600") +
           QStringLiteral("</tr>");
}

QString verdict(bool over) {
    return textOf(over ? "Over" : "Within");
}

QString number(double value) {
    return QString::number(value, 'f', 0);
}

QString axisRow(const AxisDemand& axis, double period_s) {
    const bool over = isOverLimits(axis, period_s);
    const char* const style = over ? "text-align:right;color:#b3261e;font-weight:600" : "text-align:right";
    return QStringLiteral("<tr>") + cell(QString(axis.letter), "font-weight:600") +
           cell(number(axis.maxVelocity_perMin), style) +
           cell(number(axis.velocityLimit_perMin), "text-align:right") +
           cell(number(axis.maxAcceleration_perS2), style) +
           cell(number(axis.accelerationLimit_perS2), "text-align:right") + QStringLiteral("</tr>");
}

QString axisTable(const ProgramSummary& summary) {
    QString rows;
    for (const char* key : {"Axis", "Velocity", "VelocityLimit", "Acceleration", "AccelerationLimit"})
        rows += QStringLiteral("<th align='left' style='padding:3px 14px 3px 0;white-space:nowrap'>%1</th>")
                    .arg(textOf(key).toHtmlEscaped());
    rows = QStringLiteral("<tr>%1</tr>").arg(rows);
    for (const AxisDemand& axis : summary.axes)
        rows += axisRow(axis, summary.period_s);
    return QStringLiteral("<table cellspacing='0'>%1</table>").arg(rows);
}

QString report(const Demonstration& job) {
    const ProgramSummary& summary = job.summary;
    return QStringLiteral("<h3>%1</h3><table cellspacing='0'>").arg(job.program.toHtmlEscaped()) +
           fact("Tool", job.toolName) + fact("WorkCoordinate", job.workCoordinateName) +
           fact("Chain", job.chain) + fact("WayPoints", QString::number(summary.wayPoints)) +
           fact("Lines", QString::number(summary.lines)) + fact("RunTime", runTimeText(summary.seconds)) +
           fact("Period", QStringLiteral("%1 ms").arg(summary.period_s * 1000.0)) +
           fact("Travel", verdict(summary.isOverTravelLimits)) +
           fact("Dynamics", verdict(summary.isOverDynamicLimits)) + QStringLiteral("</table><br>") +
           axisTable(summary);
}

}  // namespace

DemonstrationPage::DemonstrationPage(QWidget* parent)
    : QWidget(parent),
      figures_(new QTextBrowser(this)),  // owned by this page
      picture_(new PathPicture(this)) {  // owned by this page
    auto* row = new QHBoxLayout(this);   // owned by this page
    row->addWidget(figures_, 6);
    row->addWidget(picture_, 5);
}

void DemonstrationPage::show(const Demonstration& job) {
    figures_->setHtml(report(job));
    picture_->setPath(job.timedPath);
}

void DemonstrationPage::showProblem(const QString& problem) {
    figures_->setPlainText(problem);
    picture_->setPath({});
}
