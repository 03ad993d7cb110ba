// Where things stand and how a row is drawn.
#include <QPainter>

#include "lists/HeaderView.h"
#include "lists/ListLayout.h"
#include "lists/TorrentItemTableViewCell.h"
#include "support/ScreenTest.h"

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
