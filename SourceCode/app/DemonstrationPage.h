#pragma once

#include <QWidget>

struct Demonstration;
class PathPicture;
class QTextBrowser;

/// What the demonstration job made: its figures and, beside them, its tool path.
class DemonstrationPage : public QWidget {
    Q_OBJECT
  public:
    explicit DemonstrationPage(QWidget* parent = nullptr);

    void show(const Demonstration& job);
    void showProblem(const QString& problem);

  private:
    QTextBrowser* figures_;
    PathPicture* picture_;
};
