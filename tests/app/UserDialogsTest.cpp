#include "core/UserDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <optional>

namespace {

/// The width of the box that `open` shows, which is answered with Escape.
int widthOfBox(const std::function<void()>& open) {
    int width = 0;
    QTimer::singleShot(0, [&width] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            width = box->width();
            box->reject();
        }
    });
    open();
    return width;
}

}  // namespace

TEST(UserDialogs, BoxesAreWideEnoughForTheirTitle) {
    setUserDialogs(nullptr);
    const QString title(30, 'M');
    constexpr int kIconAndButtons_px = 120;  // of the frame, whose title bar has the title between them
    const int needed = QApplication::fontMetrics().horizontalAdvance(title) + kIconAndButtons_px;
    EXPECT_GT(widthOfBox([&] { userDialogs().tell(UserDialogs::Kind::Information, title, "ok"); }), needed);
    EXPECT_GT(widthOfBox([&] { EXPECT_FALSE(userDialogs().ask(title, "ok")); }), needed);
    EXPECT_GT(widthOfBox([&] { EXPECT_EQ(userDialogs().askOrCancel(title, "ok"), std::nullopt); }), needed);
    EXPECT_GT(widthOfBox([&] { EXPECT_EQ(userDialogs().askToSave(title, "ok"), UserDialogs::Keep::Cancel); }),
              needed);
}
