// The cookies of one web engine profile, kept in step with a store outside it.
#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <functional>
#include <optional>

class QNetworkCookie;
class QUrl;

namespace veltramoor {

/// Cookies cross as maps: name, value, domain (with a leading dot for a domain cookie), path,
/// expires (Unix time in seconds; missing for a session cookie), secure, httpOnly.
class CookieMirror : public QObject {
  Q_OBJECT

 public:
  /// Tells the engine to set a cookie as a server at the URL would; the engine answers later.
  using SetCookie = std::function<void(const QNetworkCookie&, const QUrl&)>;

  explicit CookieMirror(SetCookie setCookie);

  /// What the engine says.
  void cookieAdded(const QNetworkCookie& cookie);
  void cookieRemoved(const QNetworkCookie& cookie);

  /// Makes the engine's cookies be `cookies` and no others. `pushed` says when the engine has taken
  /// them over, at once when nothing had to change.
  void push(const QVariantList& cookies);

 signals:
  void pushed();
  /// What a page or a server did to the engine's cookies.
  void added(const QVariantMap& cookie);
  void removed(const QVariantMap& cookie);

 private:
  struct Key {
    QString domain;
    QString path;
    QString name;
    friend bool operator==(const Key&, const Key&) = default;
    friend size_t qHash(const Key& key, size_t seed) {
      return qHashMulti(seed, key.domain, key.path, key.name);
    }
  };
  struct Content {
    QString value;
    bool secure = false;
    bool httpOnly = false;
    // Unix time in seconds; 0 for a session cookie.
    qint64 expires = 0;
    friend bool operator==(const Content&, const Content&) = default;
    [[nodiscard]] bool equalsButForTime(const Content& other) const {
      return value == other.value && secure == other.secure && httpOnly == other.httpOnly;
    }
  };
  static Key keyOf(const QNetworkCookie& cookie);
  static Content contentOf(const QNetworkCookie& cookie);
  void set(const Key& key, const Content& content);
  void expire(const Key& key, const Content& content);
  void reportRemovals();
  void settle(const Key& key);
  void giveUp();

  SetCookie setCookie_;
  // What the engine is known to hold, until it says that it dropped it; and what it has been told
  // to hold (nothing: to drop).
  QHash<Key, Content> held_;
  QHash<Key, std::optional<Content>> awaited_;
  // Told to go, until the engine says that it went: told again by every push, waited for once. One
  // that comes after all is an answer to what was told before, and nothing that a page did.
  QHash<Key, Content> leaving_;
  // Cookies that the engine did not confirm in time: it refuses them, or is slow. No load waits for
  // them twice.
  QHash<Key, Content> refused_;
  // Removals that may turn out to be the first half of a new value.
  QHash<Key, QVariantMap> gone_;
  QTimer patience_;
};

}  // namespace veltramoor
