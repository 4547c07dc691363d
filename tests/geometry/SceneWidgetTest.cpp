#include "geometry/SceneWidget.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>

#include "support/TestSupport.h"

namespace {

class Panel : public SceneWidget {
  public:
    explicit Panel(QWidget* parent = nullptr) : SceneWidget(parent) { ++alive; }
    static int alive;

  protected:
    ~Panel() override { --alive; }
};
int Panel::alive = 0;

void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

class SceneWidgetTest : public ::testing::Test {
  protected:
    void SetUp() override {
        SoDB::init();
        ASSERT_EQ(Panel::alive, 0);
        root_ = new SoSeparator;  // owned by its reference
        root_->ref();
    }
    void TearDown() override {
        root_->unref();
        settle();
        EXPECT_EQ(Panel::alive, 0);
    }
    SoSeparator* root_ = nullptr;
};

}  // namespace

TEST_F(SceneWidgetTest, SceneAlone_DeletesIt) {
    root_->addChild(new Panel);  // owned by the scene
    EXPECT_EQ(Panel::alive, 1);
    root_->removeAllChildren();
    EXPECT_EQ(Panel::alive, 0);
}

TEST_F(SceneWidgetTest, ParentGoesFirst_SceneKeepsIt) {
    auto* host = new QWidget;       // deleted below
    auto* panel = new Panel(host);  // owned by the scene and its parent
    root_->addChild(panel);
    delete host;
    settle();
    EXPECT_EQ(Panel::alive, 1);
    EXPECT_EQ(panel->parentWidget(), nullptr);
    EXPECT_EQ(root_->getNumChildren(), 1);
}

TEST_F(SceneWidgetTest, SceneGoesFirst_ParentKeepsIt) {
    QWidget host;
    auto* panel = new Panel(&host);  // owned by the scene and its parent
    root_->addChild(panel);
    root_->removeAllChildren();
    EXPECT_EQ(Panel::alive, 1);
    EXPECT_EQ(host.findChildren<QWidget*>().size(), 1);
}

TEST_F(SceneWidgetTest, ParentAlone_DeletesItWithItself) {
    auto* host = new QWidget;  // deleted below
    new Panel(host);           // owned by its parent
    delete host;
    settle();
    EXPECT_EQ(Panel::alive, 0);
}

TEST_F(SceneWidgetTest, MovesBetweenParents_HoldsOneReference) {
    auto* first = new QWidget;  // deleted below
    QWidget second;
    auto* panel = new Panel;  // owned by the scene
    root_->addChild(panel);
    panel->setParent(first);
    panel->setParent(&second);
    delete first;
    settle();
    EXPECT_EQ(panel->getRefCount(), 2);
    panel->setParent(nullptr);
    EXPECT_EQ(panel->getRefCount(), 1);
}

TEST_F(SceneWidgetTest, DisplayNameKeepsWhatCoinDoesNot) {
    auto* panel = new Panel;  // owned by the scene
    root_->addChild(panel);
    panel->setDisplayName(QStringLiteral("Tisch links+1"));
    EXPECT_EQ(panel->displayName(), QStringLiteral("Tisch links+1"));
    EXPECT_STREQ(panel->getName().getString(), "Tisch_links_1");
}
