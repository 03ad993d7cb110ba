#include "lists/ListLayout.h"

#include <algorithm>

#include "lists/HeaderView.h"

namespace veltramoor {
namespace {
// The usual banner heights: 320 x 50 on phones, 728 x 90 on tablets.
constexpr double kPhoneBanner = 50;
constexpr double kPadBanner = 90;
constexpr double kTableBelowBanner = 34;
constexpr double kSearchBar = 45;
constexpr double kRow = 37;
constexpr double kRowsInSight = 4;
}  // namespace

ListLayout listLayout(QSizeF screen, bool pad, double containerHeight, double tabBarHeight,
                      bool withSearchBar) {
  const double underBanner =
      tabBarHeight + (withSearchBar ? kTableBelowBanner + kSearchBar : HeaderView::kTouchHeight);
  // Four rows stay in sight: where they do not fit beneath the banner, it gives way.
  const double banner = std::clamp(containerHeight - underBanner - kRowsInSight * kRow, 0.0,
                                   pad ? kPadBanner : kPhoneBanner);
  const QRectF bannerFrame(0, 0, screen.width(), banner);
  const QRectF header(0, banner, screen.width(), HeaderView::kHeight);
  const double top = banner + kTableBelowBanner;
  if (withSearchBar) {
    const double height = containerHeight - tabBarHeight - kSearchBar - 53;
    return {.banner = bannerFrame,
            .table = QRectF(0, top + kSearchBar, screen.width(), height),
            .header = header,
            .searchBar = QRectF(0, top, screen.width(), kSearchBar),
            .tableTopInset = 0};
  }
  const double height =
      pad ? containerHeight - tabBarHeight - 70 : containerHeight - tabBarHeight + 10 - 48;
  return {.banner = bannerFrame,
          .table = QRectF(0, top, screen.width(), height),
          .header = header,
          .searchBar = {},
          .tableTopInset = HeaderView::kTouchHeight - kTableBelowBanner};
}

}  // namespace veltramoor
