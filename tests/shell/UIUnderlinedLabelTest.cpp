#include "shell/UIUnderlinedLabel.h"

#include <gtest/gtest.h>

#include <QPainter>

namespace veltramoor {
namespace {

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

}  // namespace
}  // namespace veltramoor
