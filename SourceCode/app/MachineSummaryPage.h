#pragma once

#include <QScrollArea>

#include "machine/calc/MachineDescription.h"

class QVBoxLayout;

/// What the machine file says, to be read by the user: head, axes, spindles and work coordinate systems.
/// Every value stands as the file has it; nothing can be edited.
class MachineSummaryPage : public QScrollArea {
    Q_OBJECT
  public:
    explicit MachineSummaryPage(const MachineDescription& machine, QWidget* parent = nullptr);

  private:
    void addTable(const QString& objectName, const QString& title, const QStringList& headers,
                  const QVector<QStringList>& rows);

    QVBoxLayout* column_;
};
