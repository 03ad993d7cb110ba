// The application's image resources.
#pragma once

#include <QImage>
#include <QString>

namespace veltramoor {

/// The resource image of that file name ("download.png") at the sharpest scale that screens here
/// need (1, 2 or 3 pixels a point), with its device pixel ratio set; a null image when there is
/// none.
[[nodiscard]] QImage imageNamed(const QString& name);

/// URL of the same image at one pixel a point, for what picks the scale by itself.
[[nodiscard]] QString imageUrl(const QString& name);

}  // namespace veltramoor
