#include "app/ProgressDialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProgressDialog>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "support/TestSupport.h"

namespace {

QProgressDialog* shownDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QProgressDialog*>(window))
            return dialog;
    }
    return nullptr;
}

}  // namespace

// The step behind it comes too soon for all windows to be drawn again, and may be a long one.
TEST(ProgressDialog, NamesTheItemThatIsGeneratedNow) {
    setInstallationFolder(shippedInstallation());
    TORNVALE::LanguageReader::instance().reload();
    const QString text = TORNVALE::LanguageReader::instance().text("Progress", "Generating");
    ASSERT_TRUE(text.contains("%1"));
    ProgressDialog progress(nullptr);
    progress.begin(3);
    const QProgressDialog* const dialog = shownDialog();
    ASSERT_NE(dialog, nullptr);
    for (const char* item : {"slot", "pocket", "groove"}) {
        EXPECT_TRUE(progress.step(item));
        EXPECT_EQ(dialog->labelText(), text.arg(item));
    }
    progress.end();
    EXPECT_EQ(shownDialog(), nullptr);
}

TEST(ProgressDialog, OneItemNeedsNone) {
    ProgressDialog progress(nullptr);
    progress.begin(1);
    EXPECT_EQ(shownDialog(), nullptr);
    EXPECT_TRUE(progress.step("slot"));
    progress.end();
}
