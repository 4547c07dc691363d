#pragma once

#include <QWidget>

class QFormLayout;
class QLineEdit;
struct SpindleRecord;
struct ToolRecord;

/// Shows what a spindle is, which tool it holds and how fast it turns. Read only; the edits' object names are
/// their language keys of group "SpindleNode".
class SpindlePanel : public QWidget {
    Q_OBJECT
  public:
    explicit SpindlePanel(QWidget* parent = nullptr);

    void setSpindle(const SpindleRecord& spindle);
    void setPath(const QString& path);
    void setTool(const ToolRecord& tool, const QString& typeText);
    void setSpeed(const QString& text);

  private:
    QLineEdit* addRow(QFormLayout& form, const char* key);
    void setText(const char* key, const QString& text);
};
