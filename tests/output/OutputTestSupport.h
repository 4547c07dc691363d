#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "nc/ProgramItem.h"
#include "nc/UserPostProcessor.h"
#include "nc/calc/HeaderTail.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"

/// An item that is only what the post-processor sees of one.
class PlainItem : public TORNVALE::ProgramItem {
  public:
    PlainItem(QString chain, QString code, bool active = true);

    [[nodiscard]] int itemType() const override { return TORNVALE::kIsoItem; }
    [[nodiscard]] const QString& itemName() const override { return name; }
    [[nodiscard]] const QString& chainName() const override { return chain; }
    [[nodiscard]] bool isActive() const override { return active; }
    [[nodiscard]] const ToolData* toolData() const override { return &tool; }
    [[nodiscard]] double rpm() const override { return speed; }
    [[nodiscard]] const QString& LeadIn() const override { return leadIn; }
    [[nodiscard]] const QString& LeadOut() const override { return leadOut; }
    [[nodiscard]] const QString& IsoCode() const override { return code; }
    [[nodiscard]] const QString& WorkCode() const override { return workCode; }
    void setTrajNode(trajNode* /*node*/) override {}
    [[nodiscard]] trajNode* pathNode() const override { return nullptr; }

    QString name;
    QString chain;
    QString code;
    QString leadIn;
    QString leadOut;
    QString workCode;
    ToolData tool;
    double speed = 12000;
    bool active;
};

class PlainGroup : public TORNVALE::ProgramGroup {
  public:
    explicit PlainGroup(QString wcs) : name(std::move(wcs)) {}

    [[nodiscard]] QString wcsName() const override { return name; }
    [[nodiscard]] QList<TORNVALE::ProgramItem*> programItems() const override;
    [[nodiscard]] std::shared_ptr<AuxiliaryAxis> auxiliaryAxis() const override { return axis; }
    [[nodiscard]] FormatItems* headerTail() const override { return list.get(); }

    PlainItem& add(const QString& chain, const QString& code, bool active = true);
    /// Gives the chain a record with these texts.
    void setEnds(const QString& chain, const QString& header, const QString& tail,
                 const QString& itemHeader = {}, const QString& itemTail = {});

    QString name;
    std::vector<std::unique_ptr<PlainItem>> items;
    std::shared_ptr<AuxiliaryAxis> axis;
    std::unique_ptr<FormatItems> list = std::make_unique<FormatItems>();
};

/// Letters of the two chains of the test machine: a head with two tables.
inline constexpr const char* kLeft = "X->Z->C->A;Y";
inline constexpr const char* kRight = "X->Z->C->A;V";

/// An installation with one post-processor file, a machine with the chains above (period 4 ms, rapid feed
/// 50000), and a planner that writes header, pre action, the items' code, post action and tail as they are
/// and keeps what it was asked.
class OutputBench {
  public:
    explicit OutputBench(const QByteArray& xml);
    ~OutputBench();
    OutputBench(const OutputBench&) = delete;
    OutputBench& operator=(const OutputBench&) = delete;

    /// Writes another post-processor file and reads it.
    void use(const QByteArray& xml);
    void settings(const QByteArray& lines);
    void setPeriod(unsigned period_ms);
    /// The machine's own planner in place of the plain one.
    void useMachinePlanner();
    [[nodiscard]] TORNVALE::UserPostProcessor& processor() { return TORNVALE::UserPostProcessor::instance(); }
    [[nodiscard]] QString file(const QString& name) const { return installation_.file(name); }
    void write(const QString& name, const QByteArray& content) const { installation_.write(name, content); }
    /// Program of the groups, in the pattern of this name; a null text: without pattern.
    QString program(const QVector<TORNVALE::ProgramGroup*>& groups, const QString& pattern = QString());

    std::vector<TORNVALE::ChainPlan> plans;

  private:
    TemporaryInstallation installation_;
};

/// A post-processor file with these attributes of "Regulation" and this content behind it.
[[nodiscard]] QByteArray postProcessorFile(const QByteArray& regulation, const QByteArray& content);
/// A pattern of the name "p" that is only the slot of G54.
[[nodiscard]] QByteArray oneSlot();
