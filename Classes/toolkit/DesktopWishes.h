// What the person has asked the desktop for.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <array>
#include <memory>

class QDBusPendingCallWatcher;
class QVariant;

namespace veltramoor {

/// Hands the desktop's wishes on to `Device`, as they are and whenever they change: no animations,
/// larger text, high contrast. They come from the desktop portal's settings, for which nobody
/// waits: without a bus or a portal, with one that never answers, and for what it does not know,
/// the device stays as it is. Main thread only.
class DesktopWishes final : public QObject {
  Q_OBJECT

 public:
  /// Asks the portal on `bus`. Must not outlive the shared instances.
  explicit DesktopWishes(const QDBusConnection& bus);
  ~DesktopWishes() override;

 private slots:
  // The value is left to be asked for: anybody on the bus can send this signal.
  void settingChanged(const QString& space, const QString& key);

 private:
  static constexpr std::size_t kSettings = 3;

  void ask(std::size_t setting);

  QDBusConnection bus_;
  // The latest question on each.
  std::array<std::unique_ptr<QDBusPendingCallWatcher>, kSettings> questions_;
};

}  // namespace veltramoor
