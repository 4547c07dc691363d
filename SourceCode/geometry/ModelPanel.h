#pragma once

#include <fcl/narrowphase/collision_object.h>

#include <QStringList>
#include <QWidget>

class QLabel;
class QPlainTextEdit;

/// Shows what a model is and where its collision object stands. Read only; rows are named after their
/// language keys in group "UserModelNode".
class ModelPanel : public QWidget {
  public:
    explicit ModelPanel(QWidget* parent = nullptr);

    /// `chain` ends with the model's own name. nullptr empties the collision rows.
    void refresh(const QStringList& chain, const QString& parentName,
                 const fcl::CollisionObject<float>* object);

  private:
    QLabel* addRow(const char* key);
    QLabel* name_;
    QLabel* parent_;
    QLabel* path_;
    QLabel* center_;
    QLabel* max_;
    QLabel* min_;
    QPlainTextEdit* transform_;
};
