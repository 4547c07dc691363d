#pragma once

#include <QList>
#include <string>
#include <utility>

class ToolData;

namespace TORNVALE {

/// Someone who follows the list of installed tools. Observers register with ToolsManager::addObserver under
/// the run-time name of their class, and deregister in their own destructor.
class ToolObserver {
  public:
    /// The installed tools changed. The pointers hold until the next call.
    virtual void UpdateToolList(QList<ToolData*> tools) = 0;
    /// A tool is about to be removed; false vetoes.
    [[nodiscard]] virtual bool canRemoveTool(ToolData* /*tool*/) { return true; }
    virtual ~ToolObserver() = default;

    /// The type name of the registration.
    [[nodiscard]] const std::string& observerName() const { return observerName_; }
    void setObserverName(std::string name) { observerName_ = std::move(name); }

  protected:
    QList<ToolData*> toolList_;  ///< the last list received, for the derived class to keep

  private:
    std::string observerName_;
};

}  // namespace TORNVALE
