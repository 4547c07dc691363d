#pragma once

#include <QWidget>
#include <array>

class QBoxLayout;
class QComboBox;
class QLineEdit;
class userCoordinateSystem;

/// Moves one user coordinate system and adds and removes its work pieces. Widgets are named after their
/// language keys of group "UserCoordinateSystem". The system owns the panel and outlives it.
class UserCoordinateSystemPanel : public QWidget {
    Q_OBJECT
  public:
    explicit UserCoordinateSystemPanel(userCoordinateSystem& system);

  private:
    void addOffset(QBoxLayout& layout);
    void addWorkPieces(QBoxLayout& layout);
    void apply();
    void refreshList();

    userCoordinateSystem& system_;
    std::array<QLineEdit*, 3> offset_{};
    QComboBox* workPieces_ = nullptr;
};
