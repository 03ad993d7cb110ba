#include "toolkit/DesktopWishes.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QVariant>
#include <cmath>
#include <optional>

#include "toolkit/Device.h"

namespace veltramoor {
namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
/// Of "contrast", where 0 is no preference.
constexpr unsigned kHighContrast = 1;

/// Absent for a value of another type. `Read` wraps its variant into a second one.
template <typename Value>
std::optional<Value> valueOf(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value.metaType() == QMetaType::fromType<Value>() ? std::optional(value.value<Value>())
                                                          : std::nullopt;
}

/// Under X11 a desktop makes its text larger by a higher resolution, which Qt makes the whole
/// window larger by: text that has grown so is not to grow again.
double withoutWhatQtDoes(double factor) {
  if (QGuiApplication::platformName() != QLatin1String("xcb") || !(factor > 0)) {
    return factor;
  }
  const double times = qGuiApp->devicePixelRatio() / factor;
  return times > 0.99 && std::abs(times - std::round(times)) < 0.01 ? 1 : factor;
}

struct Setting {
  const char* space;
  const char* key;
  void (*apply)(Device& device, const QVariant& value);
};

constexpr std::array kKnown{
    Setting{"org.gnome.desktop.interface", "enable-animations",
            [](Device& device, const QVariant& value) {
              if (const auto enabled = valueOf<bool>(value)) {
                device.setReducedMotion(!*enabled);
              }
            }},
    Setting{"org.gnome.desktop.interface", "text-scaling-factor",
            [](Device& device, const QVariant& value) {
              if (const auto factor = valueOf<double>(value)) {
                device.setTextScale(withoutWhatQtDoes(*factor));
              }
            }},
    Setting{"org.freedesktop.appearance", "contrast",
            [](Device& device, const QVariant& value) {
              if (const auto contrast = valueOf<unsigned>(value)) {
                device.setHighContrast(*contrast == kHighContrast);
              }
            }},
};

}  // namespace

DesktopWishes::DesktopWishes(const QDBusConnection& bus) : bus_(bus) {
  static_assert(kKnown.size() == kSettings);
  if (!bus_.isConnected()) {
    return;
  }
  // Without the sender's name, which Qt would wait for the bus to look up.
  bus_.connect(QString(), QLatin1String(kPath), QLatin1String(kInterface),
               QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QString, QString)));
  for (std::size_t setting = 0; setting < kSettings; ++setting) {
    ask(setting);
  }
}

DesktopWishes::~DesktopWishes() = default;

void DesktopWishes::settingChanged(const QString& space, const QString& key) {
  for (std::size_t setting = 0; setting < kSettings; ++setting) {
    if (space == QLatin1String(kKnown[setting].space) &&
        key == QLatin1String(kKnown[setting].key)) {
      ask(setting);
    }
  }
}

void DesktopWishes::ask(std::size_t setting) {
  QDBusMessage read =
      QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                     QLatin1String(kInterface), QStringLiteral("Read"));
  read << QString::fromLatin1(kKnown[setting].space) << QString::fromLatin1(kKnown[setting].key);
  questions_[setting] = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(read));
  connect(questions_[setting].get(), &QDBusPendingCallWatcher::finished, this,
          [apply = kKnown[setting].apply](QDBusPendingCallWatcher* answer) {
            const QVariantList values = answer->reply().arguments();
            if (!answer->isError() && !values.isEmpty()) {
              apply(Device::sharedInstance(), values.front());
            }
          });
}

}  // namespace veltramoor
