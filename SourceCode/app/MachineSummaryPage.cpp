#include "app/MachineSummaryPage.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/LanguageReader.h"

namespace {

QString text(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Tornvale/MachineSummary"),
                                                     QLatin1String(key));
}

QStringList headers(std::initializer_list<const char*> keys) {
    QStringList texts;
    for (const char* key : keys)
        texts.append(text(key));
    return texts;
}

/// The kind of motion in the user's language; a kind that is none stays as it is.
QString motion(const QString& type) {
    QString kind = type.trimmed();
    if (kind == QLatin1String("LINEAR"))
        return text("Linear");
    if (kind == QLatin1String("ROTATION"))
        return text("Rotation");
    if (kind == QLatin1String("FIXED"))
        return text("Fixed");
    return kind;
}

QVector<QStringList> axisRows(const MachineDescription& machine) {
    QVector<QStringList> rows;
    for (const auto& axis : machine.numericalAxes) {
        rows.append({axis->name, axis->nickName, QString::number(axis->id), motion(axis->type), axis->lower,
                     axis->upper, axis->homePosition, axis->maxVelocity, axis->acceleration, axis->jerk});
    }
    return rows;
}

QVector<QStringList> spindleRows(const MachineDescription& machine) {
    QVector<QStringList> rows;
    for (const auto& spindle : machine.spindles) {
        rows.append({spindle->name, spindle->parent, spindle->initialization, spindle->startString,
                     spindle->stopString, spindle->toolChangeString, spindle->range, spindle->coaxial});
    }
    return rows;
}

QVector<QStringList> coordinateRows(const MachineDescription& machine) {
    QVector<QStringList> rows;
    for (const auto& system : machine.workCoordinateSystems) {
        rows.append({system->name, system->nickName, system->parent, system->initialization,
                     system->kinematicChain.join(QStringLiteral(" | "))});
    }
    return rows;
}

}  // namespace

MachineSummaryPage::MachineSummaryPage(const MachineDescription& machine, QWidget* parent)
    : QScrollArea(parent), column_(nullptr) {
    auto* content = new QWidget(this);   // owned by this area
    column_ = new QVBoxLayout(content);  // owned by content
    const machineParametersStruct& head = machine.machineParameters;
    auto* line = new QLabel(content);  // owned by content
    line->setObjectName(QStringLiteral("MachineHead"));
    line->setTextFormat(Qt::PlainText);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setText(QStringLiteral("%1: %2\n%3: %4\n%5: %6\n%7: %8")
                      .arg(text("MachineType"), head.machineType, text("SerialNumber"), head.serialNumber,
                           text("Chain"), head.kinematicChain.join(QStringLiteral(" | ")), text("File"),
                           machine.path));
    column_->addWidget(line);
    addTable(QStringLiteral("AxesTable"), text("Axes"),
             headers({"Name", "NickName", "Id", "Type", "Lower", "Upper", "Home", "Velocity", "Acceleration",
                      "Jerk"}),
             axisRows(machine));
    addTable(QStringLiteral("SpindlesTable"), text("Spindles"),
             headers({"Name", "Parent", "Offset", "Start", "Stop", "ToolChange", "Range", "Coaxial"}),
             spindleRows(machine));
    addTable(QStringLiteral("CoordinatesTable"), text("WorkCoordinateSystems"),
             headers({"Name", "NickName", "Parent", "Origin", "Chain"}), coordinateRows(machine));
    column_->addStretch();
    setWidget(content);
    setWidgetResizable(true);
}

void MachineSummaryPage::addTable(const QString& objectName, const QString& title,
                                  const QStringList& headerTexts, const QVector<QStringList>& rows) {
    auto* box = new QGroupBox(title, widget());                            // owned by the layout's widget
    auto* table = new QTableWidget(rows.size(), headerTexts.size(), box);  // owned by box
    table->setObjectName(objectName);
    table->setHorizontalHeaderLabels(headerTexts);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->hide();
    for (int row = 0; row < rows.size(); ++row) {
        for (int cell = 0; cell < headerTexts.size(); ++cell)
            table->setItem(row, cell, new QTableWidgetItem(rows[row][cell]));  // owned by table
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    table->resizeRowsToContents();
    // High enough for the rows and a scroll bar below them.
    int height = table->horizontalHeader()->sizeHint().height() + 2 * table->frameWidth() +
                 table->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    for (int row = 0; row < std::min(rows.size(), 12); ++row)
        height += table->rowHeight(row);
    table->setFixedHeight(height);
    auto* inner = new QVBoxLayout(box);  // owned by box
    inner->addWidget(table);
    column_->addWidget(box);
}
