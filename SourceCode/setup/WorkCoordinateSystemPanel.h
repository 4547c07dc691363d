#pragma once

#include <QWidget>

class QComboBox;
class WorkCoordinateSystem;

/// Adds and removes the user coordinate systems of one zone. Widgets are named after their language keys of
/// group "WorkCoordinateSystem". The zone owns the panel and outlives it.
class WorkCoordinateSystemPanel : public QWidget {
    Q_OBJECT
  public:
    explicit WorkCoordinateSystemPanel(WorkCoordinateSystem& zone);

  private:
    void refreshList();
    WorkCoordinateSystem& zone_;
    QComboBox* systems_;
};
