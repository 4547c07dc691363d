#pragma once

#include "items/CodeManagerItem.h"
#include "items/calc/IsoRecord.h"

namespace HandleIsoCode {
class GCodeConverter;
}

namespace TORNVALE {

/// The program item that holds hand-made or imported ISO code; its code comes from the converter.
class IsoItem : public CodeManagerItem {
  public:
    IsoItem();
    ~IsoItem() override;

    /// A copy of the fields, without a group and without code: it is generated where it is placed. The caller
    /// owns it.
    [[nodiscard]] QTreeWidgetItem* clone() const override;
    void Set(const QJsonObject& object) override;
    [[nodiscard]] QJsonObject Get() const override;
    void reactToNewPlace() override;
    void refresh() override;
    /// A program that is refused leaves all code texts empty, the row red and the reason in problem(). Ends
    /// the process for an item without a group.
    void doIt() override;
    void openEditor() override;

    [[nodiscard]] const IsoRecord& iso() const { return iso_; }
    /// For changes of fields; the caller regenerates.
    [[nodiscard]] IsoRecord& editIso() { return changed(), iso_; }

    /// In the user's language: why the last generation made no code, with the line. Empty when it made some.
    [[nodiscard]] const QString& problem() const { return problem_; }

    /// Writes `WorkCode` and what the inverse transform makes of `IsoCode` into the working directory; a good
    /// transform gives equal files, but for the rounding.
    void writeComparisonFiles() const;

  protected:
    [[nodiscard]] KindRecord kindRecord() const override { return iso_; }
    void setKindRecord(const KindRecord& kind) override;

  private:
    [[nodiscard]] bool canBePlaced();
    void take(const HandleIsoCode::GCodeConverter& converter);
    void setProblem(const IsoProblem& problem);

    IsoRecord iso_;
    QString problem_;
};

}  // namespace TORNVALE
