#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "tools/ToolObserver.h"

class overStrock;

namespace TORNVALE {

class CodeManagerItem;
class IsoItem;
struct IsoEditorForm;

/// The window that edits one ISO item. Inputs that the user has not touched follow the item, whoever changes
/// it, and leave its fields exactly as they are.
class IsoEditor : public QWidget, public ToolObserver {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use.
    static IsoEditor& instance();
    /// Closes every editor of this item: it is going. nullptr: whichever item.
    static void release(const CodeManagerItem* item);

    explicit IsoEditor(QWidget* parent = nullptr);
    ~IsoEditor() override;
    IsoEditor(const IsoEditor&) = delete;
    IsoEditor& operator=(const IsoEditor&) = delete;

    /// Loads the item, which stays its group's, and shows the window.
    void edit(IsoItem& item);
    /// Fills all inputs from the item.
    void load(IsoItem& item);
    /// nullptr when none is being edited.
    [[nodiscard]] IsoItem* item() const { return item_; }

    /// The list of installed tools is new.
    void UpdateToolList(QList<ToolData*> tools) override;

    /// Stores the inputs in the item and generates it. A number that cannot be read keeps everything as it
    /// was: the input gets the focus and says what belongs there. True when the inputs are stored.
    bool apply();
    void accept();
    void reject();
    void play();
    /// Without code there is nothing to check, and no window.
    void checkLimits();
    /// Takes a file's text into the item, without generating it. What cannot be read is a log line.
    void openFile();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void connectInputs();
    void leave();
    void follow();
    void sync();
    void syncPlacement();
    void syncProgram();
    void fillSystems();
    void fillTools();
    void toolChosen();
    void showPercentage(int value);
    void showOutcome();
    void storePlacement();
    void storeProgram();
    void forgetTouches();

    std::unique_ptr<IsoEditorForm> form_;
    IsoItem* item_ = nullptr;
    QMetaObject::Connection following_;
    QPointer<overStrock> limits_;  ///< owned by this window
    bool busy_ = false;
    // What the boxes and lines showed when they were loaded.
    int loadedMirror_ = 0;
    int loadedSystem_ = 0;
    int loadedPercentage_ = 0;
    QString loadedTool_;
    QString loadedAnnotation_;
};

}  // namespace TORNVALE
