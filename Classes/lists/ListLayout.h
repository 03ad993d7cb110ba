// Where the pieces of a list screen stand.
#pragma once

#include <QRectF>
#include <QSizeF>

namespace veltramoor {

/// Frames in points from the screen's top left.
struct ListLayout {
  QRectF banner;
  /// Reaches under the header, and may reach below the screen.
  QRectF table;
  QRectF header;
  /// Between header and table; empty for a list without a search bar.
  QRectF searchBar;
  /// Height of the table's top that the header's touch area covers; the first row begins below it.
  double tableTopInset = 0;
};

/// `containerHeight` is the tab bar controller's view height, `tabBarHeight` that of its bar.
[[nodiscard]] ListLayout listLayout(QSizeF screen, bool pad, double containerHeight,
                                    double tabBarHeight, bool withSearchBar = false);

}  // namespace veltramoor
