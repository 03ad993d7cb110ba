// Where things stand and how a row is drawn.
#include <QPainter>

#include "ScreenTest.h"
#include "lists/HeaderView.h"
#include "lists/ListLayout.h"
#include "lists/TorrentItemTableViewCell.h"
#include "platform/MainThread.h"
#include "shell/LoadingIndicator.h"
#include "shell/RoundedRectView.h"
#include "shell/SendingTorrentIndicator.h"
#include "shell/UIUnderlinedLabel.h"

namespace veltramoor {
namespace {

TEST(ListLayoutTest, FramesFollowScreenAndBars) {
  const ListLayout phone = listLayout({320, 568}, false, 568, 49);
  EXPECT_EQ(phone.banner, QRectF(0, 0, 320, 50));
  EXPECT_EQ(phone.header, QRectF(0, 50, 320, 70));
  EXPECT_EQ(phone.table, QRectF(0, 84, 320, 568 - 49 + 10 - 48));
  const ListLayout pad = listLayout({768, 1024}, true, 1024, 49);
  EXPECT_EQ(pad.header, QRectF(0, 90, 768, 70));
  EXPECT_EQ(pad.table, QRectF(0, 124, 768, 1024 - 49 - 70));
  EXPECT_TRUE(HeaderView::pointInside({10, 44.9}));
  for (const double y : {0.0, 45.0, 50.0}) {
    EXPECT_FALSE(HeaderView::pointInside({10, y}));
  }
}

TEST(LoadingIndicatorTest, CentresOneBoxAndKeepsItsParent) {
  MainThread::attach([](const MainThread::Task&) {});
  View parent;
  parent.setFrame({0, 0, 320, 480});
  View other;
  LoadingIndicator::sharedInstance().hideLoadingIndicators();
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
  again.setParentView(&other);
  again.setString(QStringLiteral("Loading..."));
  again.showLoadingIndicators();
  EXPECT_EQ(again.shownText(), QStringLiteral("Loading..."));
  EXPECT_EQ(again.boxFrame().top(), 220) << "the box stays on its old parent";
  parent.setFrame({0, 0, 320, 580});
  EXPECT_EQ(again.boxFrame().top(), 270) << "and follows its size";
  EXPECT_FALSE(SendingTorrentIndicator::sharedInstance().isShown()) << "the other one is its own";
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

TEST(UIUnderlinedLabelTest, TheLineIsAsLongAsTheTitleFivePointsAboveTheFoot) {
  UIUnderlinedLabel label;
  label.setTitle(QStringLiteral("iiii"));
  QImage image(120, 40, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::red);
  QPainter painter(&image);
  label.drawRect(painter, {0, 0, 120, 40});
  painter.end();
  const int end = static_cast<int>(label.implicitWidth());
  ASSERT_GT(end, 5);
  EXPECT_EQ(image.pixelColor(2, 35), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(end + 3, 35).alpha(), 0) << "cleared, and the line has ended";
  EXPECT_EQ(image.pixelColor(2, 38).alpha(), 0);
  EXPECT_EQ(image.pixelColor(110, 10), QColor(Qt::red)) << "only 100 by 100 points are cleared";
}

class RowDrawingTest : public testing::Test {
 protected:
  static QImage square(QColor colour) {
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
  }
  QImage drawn() {
    QImage image(320, 37, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3));
    QPainter painter(&image);
    cell_.drawContentView(painter, QRectF(0, 0, 320, 37));
    return image;
  }
  // Columns of a band that hold something other than the ground.
  static std::pair<int, int> inked(const QImage& image, int left, int right, int top, int bottom) {
    int first = -1;
    int last = -1;
    for (int x = left; x < right; ++x) {
      for (int y = top; y < bottom; ++y) {
        if (image.pixelColor(x, y) != QColor(0x22, 0x22, 0x22)) {
          first = first < 0 ? x : first;
          last = x;
        }
      }
    }
    return {first, last};
  }
  TorrentItemTableViewCell cell_;
};

TEST_F(RowDrawingTest, PutsEachPieceInItsPlace) {
  cell_.typeImg = square(Qt::red);
  cell_.upImg = square(Qt::green);
  cell_.downImg = square(Qt::blue);
  const QImage plain = drawn();
  EXPECT_EQ(plain.pixelColor(300, 30), QColor(0x22, 0x22, 0x22));
  EXPECT_EQ(plain.pixelColor(32, 32), QColor(Qt::red));
  EXPECT_EQ(plain.pixelColor(34, 34), QColor(0x22, 0x22, 0x22));
  EXPECT_EQ(plain.pixelColor(218, 24), QColor(Qt::green));
  EXPECT_EQ(plain.pixelColor(265, 24), QColor(Qt::blue));

  for (const char* count : {"1", "12345"}) {
    cell_.upLbl = QLatin1String(count);
    cell_.downLbl = QLatin1String(count);
    const QImage image = drawn();
    EXPECT_NEAR(inked(image, 150, 214, 20, 32).second, 208, 2) << "flush against the up icon";
    EXPECT_NEAR(inked(image, 226, 261, 20, 32).second, 255, 2) << "flush against the down icon";
  }
  cell_.nameLbl = QString(200, QLatin1Char('W'));
  const auto [left, right] = inked(drawn(), 36, 320, 4, 17);
  EXPECT_GE(left, 40);
  EXPECT_LE(right, 270) << "cut at 230 points on a phone";
  cell_.waitLbl = QStringLiteral("7");
  const QImage waiting = drawn();
  bool red = false;
  for (int x = 50; x < 70; ++x) {
    for (int y = 17; y < 37; ++y) {
      red = red || waiting.pixelColor(x, y) == QColor(Qt::red);
    }
  }
  EXPECT_TRUE(red);
}

TEST_F(RowDrawingTest, AHighlightedRowIsClearWhiteAndHalfItsIcon) {
  cell_.typeImg = square(Qt::red);
  cell_.nameLbl = QString(30, QLatin1Char('M'));
  cell_.setHighlighted(true);
  const QImage image = drawn();
  EXPECT_EQ(image.pixelColor(300, 30), QColor(1, 2, 3));
  EXPECT_NEAR(image.pixelColor(10, 10).red(), 128, 2);
  bool white = false;
  for (int x = 40; x < 270; ++x) {
    white = white || image.pixelColor(x, 11) == QColor(Qt::white);
  }
  EXPECT_TRUE(white);
}

}  // namespace
}  // namespace veltramoor
