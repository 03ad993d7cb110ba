// The shared overlays: where their box stands, whose it is, and what it is drawn in.
#include "shell/overlay/LoadingIndicator.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <memory>

#include "platform/MainThread.h"
#include "shell/overlay/RoundedRectView.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "shell/overlay/Wait.h"

namespace veltramoor {
namespace {

TEST(LoadingIndicatorTest, CentresOneBoxAndKeepsItsParent) {
  MainThread::attach([](const MainThread::Task&) {});
  View parent;
  parent.setFrame({0, 0, 320, 480});
  View other;
  LoadingIndicator::current().hideLoadingIndicators();
  LoadingIndicator& indicator = LoadingIndicator::sharedInstance();
  indicator.setParentView(&parent);
  indicator.setOffset(150);
  indicator.setString(QStringLiteral("Please wait..."));
  EXPECT_FALSE(indicator.isShown());
  indicator.showLoadingIndicators();
  const QRectF box = indicator.boxFrame();
  EXPECT_EQ(box.top(), 370);
  EXPECT_EQ(box.height(), 40);
  EXPECT_EQ(box.width(), 20 + 8 + indicator.labelFrame().width() + 30);
  EXPECT_EQ(box.left(), (320 - box.width()) / 2);
  EXPECT_EQ(indicator.wheelFrame(), QRectF(15, 10, 20, 20));
  EXPECT_EQ(indicator.labelFrame().left(), 43);

  LoadingIndicator& again = LoadingIndicator::sharedInstance();
  EXPECT_EQ(again.parentView(), nullptr);
  EXPECT_EQ(again.offset(), 0);
  EXPECT_TRUE(again.isShown());
  parent.setFrame({0, 0, 320, 580});
  EXPECT_EQ(again.boxFrame().top(), 420) << "the box on show keeps its shift";
  parent.setFrame({0, 0, 320, 480});
  again.setString(QStringLiteral("kept"));
  EXPECT_EQ(LoadingIndicator::current().string(), QStringLiteral("kept")) << "looked at, not reset";
  again.setParentView(&other);
  again.setString(QStringLiteral("Loading..."));
  again.showLoadingIndicators();
  EXPECT_EQ(again.shownText(), QStringLiteral("Loading..."));
  EXPECT_EQ(again.boxFrame().top(), 220) << "the box stays on its old parent";
  parent.setFrame({0, 0, 320, 580});
  EXPECT_EQ(again.boxFrame().top(), 270) << "and follows its size";
  EXPECT_FALSE(SendingTorrentIndicator::current().isShown()) << "the other one is its own";
  again.setHint(QStringLiteral("Tap to stop waiting"));
  again.hideLoadingIndicators();
  again.hideLoadingIndicators();
  EXPECT_FALSE(again.isShown());
  EXPECT_EQ(again.hint(), QString()) << "the next wait has not lasted yet";
  again.setHint(QStringLiteral("late"));
  EXPECT_EQ(again.hint(), QString());
  MainThread::close();
}

TEST(RoundedRectViewTest, RadiusIsAtMostHalfTheShorterSide) {
  RoundedRectView view;
  EXPECT_EQ(view.radiusIn({0, 0, 100, 40}), 20);
  EXPECT_EQ(view.radiusIn({0, 0, 30, 40}), 15);
  view.setProperty("cornerRadius", 8.0);
  EXPECT_EQ(view.radiusIn({0, 0, 100, 40}), 8);
  QImage image(40, 40, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  view.drawRect(painter, {0, 0, 40, 40});
  painter.end();
  EXPECT_EQ(image.pixelColor(20, 20), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

// What comes late takes nothing from the screen that waits now.
TEST(WaitTest, EndsItsOwnShowingAlone) {
  MainThread::attach([](const MainThread::Task&) {});
  View view;
  LoadingIndicator& overlay = LoadingIndicator::current();
  Wait first;
  first.begin(&view, QStringLiteral("first"), 7);
  EXPECT_TRUE(first.isShown());
  EXPECT_EQ(overlay.shownText(), QStringLiteral("first"));
  {
    Wait second;
    second.begin(&view, QStringLiteral("second"));
    first.end();
    EXPECT_TRUE(second.isShown()) << "the first one's end is late";
    EXPECT_FALSE(first.isShown());
    first.takeOver();
    second.end();
    EXPECT_TRUE(first.isShown()) << "handed over as it is";
    EXPECT_EQ(overlay.shownText(), QStringLiteral("second"));
    second.takeOver();
  }
  EXPECT_FALSE(overlay.isShown()) << "a wait ends with its object";
  Wait sending(SendingTorrentIndicator::current());
  sending.begin(&view, QStringLiteral("sending"));
  EXPECT_FALSE(overlay.isShown()) << "the other overlay is its own";
  sending.end();
  EXPECT_FALSE(SendingTorrentIndicator::current().isShown());

  // A screen that the last delivery holds may go after the overlays.
  class Overlay : public LoadingIndicator {};
  auto gone = std::make_unique<Overlay>();
  Wait late(*gone);
  late.begin(&view, QStringLiteral("late"));
  gone.reset();
  EXPECT_FALSE(late.isShown());
  late.end();
  MainThread::close();
}

}  // namespace
}  // namespace veltramoor
