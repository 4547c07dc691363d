#pragma once

#include "machine/AxisBase.h"

/// An axis that the NC program moves.
class numericalAxis : public AxisBase {
    Q_OBJECT
  public:
    numericalAxis() : AxisBase(AxisRecord::Numerical) {}

    /// Takes the record and builds the scene with the axis at home; called once. Always 0: a bad vector and a
    /// missing model end the process.
    int set(numericalAxisStruct& axis);
    void Setup();

    [[nodiscard]] AxisBase* clone() const override;
    void setValueFromText(QStringView word) override { moveToWord(word); }
    void information(QString& text) const override;

    [[nodiscard]] const AxisDynamics& dynamics() const { return dynamics_; }

  protected:
    ~numericalAxis() override = default;

  private:
    AxisDynamics dynamics_;
};
