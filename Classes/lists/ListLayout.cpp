#include "lists/ListLayout.h"

#include "lists/HeaderView.h"

namespace veltramoor {
namespace {
// The usual banner heights: 320 x 50 on phones, 728 x 90 on tablets.
constexpr double kPhoneBanner = 50;
constexpr double kPadBanner = 90;
constexpr double kTableBelowBanner = 34;
}  // namespace

ListLayout listLayout(QSizeF screen, bool pad, double containerHeight, double tabBarHeight) {
  const double banner = pad ? kPadBanner : kPhoneBanner;
  const double height =
      pad ? containerHeight - tabBarHeight - 70 : containerHeight - tabBarHeight + 10 - 48;
  return {QRectF(0, 0, screen.width(), banner),
          QRectF(0, banner + kTableBelowBanner, screen.width(), height),
          QRectF(0, banner, screen.width(), HeaderView::kHeight),
          HeaderView::kTouchHeight - kTableBelowBanner};
}

}  // namespace veltramoor
