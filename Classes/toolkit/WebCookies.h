// The shared cookies as web views exchange them.
#pragma once

#include <QObject>
#include <QVariantList>

namespace veltramoor {

/// Cookies cross as maps: name, value, domain (with a leading dot for a domain cookie), path,
/// expires (Unix time in seconds; missing for a session cookie), secure, httpOnly. Main thread
/// only.
class WebCookies : public QObject {
  Q_OBJECT

 public:
  static WebCookies& sharedInstance();

  /// All of the shared store.
  Q_INVOKABLE [[nodiscard]] QVariantList cookies() const;
  /// What a page set.
  Q_INVOKABLE void take(const QVariantMap& cookie);
  /// What a page deleted, or what ran out there; a newer one of the shared store stays.
  Q_INVOKABLE void drop(const QVariantMap& cookie);

  /// Has every web view take over the shared cookies at once: after a logout, so that no page that
  /// is still there goes on being signed in. Each load does so by itself. Tabs that show a page
  /// drop it then: the next person must not see it.
  void push() { emit pushRequested(); }

 signals:
  void pushRequested();

 private:
  friend class SharedInstances;

  WebCookies() = default;
};

}  // namespace veltramoor
