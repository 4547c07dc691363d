#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "nc/calc/AuxiliaryAxis.h"

class MachineDescription;

/// Where a program starts and ends on one chain. Each text is one line in the emitted form.
struct HeaderTailRecord {
    QString chain;
    QString header;      ///< position before the first item
    QString tail;        ///< position after the last item
    QString itemHeader;  ///< derived: first line of the first active item's `LeadIn`
    QString itemTail;    ///< derived: last line of the last active item's `LeadOut`

    friend bool operator==(const HeaderTailRecord&, const HeaderTailRecord&) = default;
};

namespace TORNVALE {

/// The records of a program group, one for each chain, in the order in which they were added.
class HeaderTailManager {
  public:
    /// The record of `chain`. When there is none, one is added that holds the chain's home line in `header`
    /// and `tail`. The reference holds until the list changes.
    HeaderTailRecord& add(const MachineDescription& machine, const QString& chain);
    /// nullptr when there is none.
    [[nodiscard]] HeaderTailRecord* record(const QString& chain);
    [[nodiscard]] const HeaderTailRecord* record(const QString& chain) const;
    [[nodiscard]] const std::vector<HeaderTailRecord>& records() const { return records_; }
    [[nodiscard]] QStringList chains() const;
    void clear() { records_.clear(); }
    void setRecords(std::vector<HeaderTailRecord> records) { records_ = std::move(records); }

    /// One object per chain, under the chain's name, with the other four texts.
    [[nodiscard]] QJsonObject toJson() const;
    /// Replaces the list. What is not an object makes no record; a text that is absent or of another kind
    /// reads as empty.
    void fromJson(const QJsonObject& object);

  private:
    std::vector<HeaderTailRecord> records_;
};

}  // namespace TORNVALE

/// The header and tail list of one program group, with the group's auxiliary axis.
class FormatItems {
  public:
    FormatItems() = default;
    explicit FormatItems(std::shared_ptr<AuxiliaryAxis> axis) : auxiliaryAxis(std::move(axis)) {}
    FormatItems(const FormatItems&) = delete;
    FormatItems& operator=(const FormatItems&) = delete;

    TORNVALE::HeaderTailManager headerTail;
    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis;  ///< null when the group has none

    /// Goes when the list goes: whoever keeps a pointer to the list watches this object's destroyed().
    [[nodiscard]] const QObject* life() const { return life_.get(); }

  private:
    std::unique_ptr<QObject> life_ = std::make_unique<QObject>();
};
