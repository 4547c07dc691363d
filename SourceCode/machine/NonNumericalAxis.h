#pragma once

#include "machine/AxisBase.h"

/// A part of the machine that the NC program does not address; it may still be moved by hand.
class NonNumericalAxis : public AxisBase {
    Q_OBJECT
  public:
    NonNumericalAxis() : AxisBase(AxisRecord::NonNumerical) {}

    /// Takes the record and builds the scene; called once. -1, and an empty group, unless place, direction
    /// and colour are three numbers each.
    int set(nonNumericalAxisStruct& part);
    void initAxis();

    [[nodiscard]] AxisBase* clone() const override;
    void setValueFromText(QStringView word) override { moveToWord(word); }

    /// Name of the axis that carries this part, from the file; empty for the machine's root and for clones.
    [[nodiscard]] const QString& parentName() const { return parentName_; }

  protected:
    ~NonNumericalAxis() override = default;

  private:
    QString parentName_;
};
