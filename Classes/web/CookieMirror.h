// The cookies of one web engine profile, kept in step with a store outside it.
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantList>
#include <optional>

class QNetworkCookie;
class QWebEngineCookieStore;

namespace veltramoor {

/// Cookies cross as maps: name, value, domain (with a leading dot for a domain cookie), path,
/// expires (Unix time in seconds; missing for a session cookie), secure, httpOnly.
class CookieMirror : public QObject {
  Q_OBJECT

 public:
  explicit CookieMirror(QWebEngineCookieStore* store);

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
  void cookieAdded(const QNetworkCookie& cookie);
  void cookieRemoved(const QNetworkCookie& cookie);
  void reportRemovals();
  void settle(const Key& key);
  void giveUp();

  QWebEngineCookieStore* store_;
  // What the engine is known to hold, until it says that it dropped it; and what it has been told
  // to hold (nothing: to drop).
  QHash<Key, Content> held_;
  QHash<Key, std::optional<Content>> awaited_;
  // Told to go, without an answer in time: told again by every push, waited for no more.
  QSet<Key> overdue_;
  // Cookies that the engine does not take; no load waits for them twice.
  QHash<Key, Content> refused_;
  // Removals that may turn out to be the first half of a new value.
  QHash<Key, QVariantMap> gone_;
  QTimer patience_;
};

}  // namespace veltramoor
