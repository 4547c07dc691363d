#pragma once

#include <QTreeWidgetItem>
#include <optional>
#include <vector>

#include "nc/ProgramItem.h"
#include "nc/calc/ControlPoints.h"
#include "nc/calc/PathShapes.h"
#include "nc/trajNode.h"

/// A row of the program tree that says what the test has put in.
class FakeItem : public QTreeWidgetItem, public TORNVALE::ProgramItem {
  public:
    explicit FakeItem(int type, const QString& code = {}) : isoCode(code), type_(type) {}
    ~FakeItem() override {
        if (node != nullptr) {
            trajNode* const own = node;
            own->forgetItem();
            if (own->parentSystem() != nullptr)
                own->moveTo(nullptr);
        }
    }
    FakeItem(const FakeItem&) = delete;
    FakeItem& operator=(const FakeItem&) = delete;

    [[nodiscard]] int itemType() const override { return type_; }
    [[nodiscard]] const QString& itemName() const override { return name; }
    [[nodiscard]] const QString& chainName() const override { return chain; }
    [[nodiscard]] bool isActive() const override { return active; }
    [[nodiscard]] const ToolData* toolData() const override { return nullptr; }  // no node asks for it
    [[nodiscard]] double rpm() const override { return 0; }
    [[nodiscard]] const QString& LeadIn() const override { return none_; }
    [[nodiscard]] const QString& LeadOut() const override { return none_; }
    [[nodiscard]] const QString& IsoCode() const override { return isoCode; }
    [[nodiscard]] const QString& WorkCode() const override { return none_; }
    [[nodiscard]] const HoleShape* holeShape() const override { return hole ? &*hole : nullptr; }
    [[nodiscard]] const RectangleShape* rectangleShape() const override {
        return rectangle ? &*rectangle : nullptr;
    }
    [[nodiscard]] const ControlPoints* controlPoints() const override { return points ? &*points : nullptr; }
    void moveControlPoint(int index, double x, double y, double z) override {
        moves.push_back({index, x, y, z});
        if (points && index < points->size()) {
            (*points)[index][0] = x;
            (*points)[index][1] = y;
            (*points)[index][2] = z;
        }
        if (dropNodeOnMove && node != nullptr)
            node->moveTo(nullptr);
        else if (node != nullptr)
            node->UpdateNode();
    }
    void setTrajNode(trajNode* given) override { node = given; }
    [[nodiscard]] trajNode* pathNode() const override { return node; }

    struct Move {
        int index;
        double x, y, z;
    };
    QString name = QStringLiteral("item0");
    QString chain = QStringLiteral("XYZCA");
    QString isoCode;
    bool active = true;
    bool dropNodeOnMove = false;
    std::optional<HoleShape> hole;
    std::optional<RectangleShape> rectangle;
    std::optional<ControlPoints> points;
    std::vector<Move> moves;
    trajNode* node = nullptr;

  private:
    int type_;
    QString none_;
};
