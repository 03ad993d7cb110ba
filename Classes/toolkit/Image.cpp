#include "toolkit/Image.h"

#include <QFile>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace veltramoor {
namespace {

// Two images have been asked for as JPEG since the first version; ours are drawn with transparency.
QString fileOf(const QString& name) {
  return name.endsWith(QLatin1String(".jpg")) ? name.chopped(4) + QLatin1String(".png") : name;
}

QString pathOf(const QString& file, int scale) {
  const QString suffix = scale > 1 ? QStringLiteral("@%1x").arg(scale) : QString();
  return QStringLiteral(":/veltramoor/icons/png/%1%2.png").arg(file.chopped(4), suffix);
}

int screenScale() {
  const double ratio = qApp == nullptr ? 1.0 : qGuiApp->devicePixelRatio();
  return std::clamp(static_cast<int>(std::ceil(ratio)), 1, 3);
}

}  // namespace

QImage imageNamed(const QString& name) {
  const QString file = fileOf(name);
  if (!file.endsWith(QLatin1String(".png"))) {
    return {};
  }
  for (int scale = screenScale(); scale >= 1; --scale) {
    const QString path = pathOf(file, scale);
    if (QFile::exists(path)) {
      QImage image(path);
      image.setDevicePixelRatio(scale);
      return image;
    }
  }
  return {};
}

QString imageUrl(const QString& name) { return QStringLiteral("qrc") + pathOf(fileOf(name), 1); }

}  // namespace veltramoor
