#pragma once

#include "nc/ProgramItem.h"
#include "planning/PlanningTestSupport.h"
#include "tools/ToolData.h"

/// A row of the program tree that holds given texts.
class PlannedItem : public TORNVALE::ProgramItem {
  public:
    PlannedItem(const PlanItem& item, bool isActive) : item_(item), tool_(*item.tool), isActive_(isActive) {}

    [[nodiscard]] int itemType() const override { return item_.isCurve ? TORNVALE::kCurveItem : type_; }
    [[nodiscard]] const QString& itemName() const override { return name_; }
    [[nodiscard]] const QString& chainName() const override { return planningtest::kChain; }
    [[nodiscard]] bool isActive() const override { return isActive_; }
    [[nodiscard]] const ToolData* toolData() const override { return &tool_; }
    [[nodiscard]] double rpm() const override { return item_.rpm; }
    [[nodiscard]] const QString& LeadIn() const override { return item_.leadIn; }
    [[nodiscard]] const QString& LeadOut() const override { return item_.leadOut; }
    [[nodiscard]] const QString& IsoCode() const override { return item_.body; }
    [[nodiscard]] const QString& WorkCode() const override { return item_.body; }
    void setTrajNode(trajNode* /*node*/) override {}
    [[nodiscard]] trajNode* pathNode() const override { return nullptr; }
    void setType(int type) { type_ = type; }

  private:
    PlanItem item_;
    ToolData tool_;
    bool isActive_;
    QString name_ = QStringLiteral("item");
    int type_ = TORNVALE::kIsoItem;
};
