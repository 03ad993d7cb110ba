#include "web/CookieMirror.h"

#include <QDateTime>
#include <QNetworkCookie>
#include <QSet>
#include <QUrl>
#include <QWebEngineCookieStore>
#include <utility>

namespace veltramoor {
namespace {

// The engine confirms a cookie within a few milliseconds, or not at all when it refuses it.
constexpr int kPatience = 1000;

QNetworkCookie cookieOf(const QVariantMap& map) {
  QNetworkCookie cookie(map[QStringLiteral("name")].toString().toUtf8(),
                        map[QStringLiteral("value")].toString().toUtf8());
  const QString domain = map[QStringLiteral("domain")].toString();
  // Without a domain of its own the engine makes it the origin's alone.
  if (domain.startsWith(QLatin1Char('.'))) {
    cookie.setDomain(domain);
  }
  cookie.setPath(map[QStringLiteral("path")].toString());
  cookie.setSecure(map[QStringLiteral("secure")].toBool());
  cookie.setHttpOnly(map[QStringLiteral("httpOnly")].toBool());
  if (const QVariant expires = map[QStringLiteral("expires")]; expires.isValid()) {
    cookie.setExpirationDate(QDateTime::fromSecsSinceEpoch(expires.toLongLong(), Qt::UTC));
  }
  return cookie;
}

QUrl originOf(const QVariantMap& map) {
  QString host = map[QStringLiteral("domain")].toString();
  if (host.startsWith(QLatin1Char('.'))) {
    host.remove(0, 1);
  }
  QUrl origin;
  origin.setScheme(map[QStringLiteral("secure")].toBool() ? QStringLiteral("https")
                                                          : QStringLiteral("http"));
  origin.setHost(host);
  origin.setPath(map[QStringLiteral("path")].toString());
  return origin;
}

QVariantMap mapOf(const QNetworkCookie& cookie) {
  QVariantMap map{{QStringLiteral("name"), QString::fromUtf8(cookie.name())},
                  {QStringLiteral("value"), QString::fromUtf8(cookie.value())},
                  {QStringLiteral("domain"), cookie.domain()},
                  {QStringLiteral("path"), cookie.path()},
                  {QStringLiteral("secure"), cookie.isSecure()},
                  {QStringLiteral("httpOnly"), cookie.isHttpOnly()}};
  if (cookie.expirationDate().isValid()) {
    map[QStringLiteral("expires")] = cookie.expirationDate().toSecsSinceEpoch();
  }
  return map;
}

}  // namespace

CookieMirror::CookieMirror(QWebEngineCookieStore* store) : store_(store) {
  connect(store, &QWebEngineCookieStore::cookieAdded, this, &CookieMirror::cookieAdded);
  connect(store, &QWebEngineCookieStore::cookieRemoved, this, &CookieMirror::cookieRemoved);
  patience_.setSingleShot(true);
  patience_.setInterval(kPatience);
  connect(&patience_, &QTimer::timeout, this, &CookieMirror::giveUp);
}

CookieMirror::Key CookieMirror::keyOf(const QNetworkCookie& cookie) {
  return {cookie.domain().toLower(), cookie.path(), QString::fromUtf8(cookie.name())};
}

void CookieMirror::push(const QVariantList& cookies) {
  QSet<Key> wanted;
  for (const QVariant& one : cookies) {
    const QVariantMap map = one.toMap();
    const Key key{map[QStringLiteral("domain")].toString().toLower(),
                  map[QStringLiteral("path")].toString(), map[QStringLiteral("name")].toString()};
    const Content content{map[QStringLiteral("value")].toString(),
                          map[QStringLiteral("expires")].toLongLong()};
    wanted.insert(key);
    const bool told = awaited_.contains(key) ? awaited_[key] == content
                                             : held_.contains(key) && held_[key] == content;
    if (!told && !(refused_.contains(key) && refused_[key] == content)) {
      awaited_.insert(key, content);
      store_->setCookie(cookieOf(map), originOf(map));
    }
  }
  for (auto held = held_.constBegin(); held != held_.constEnd(); ++held) {
    if (!wanted.contains(held.key()) && !gone_.contains(held.key())) {
      const auto& [domain, path, name] = held.key();
      awaited_.insert(held.key(), std::nullopt);
      QNetworkCookie cookie(name.toUtf8());
      cookie.setDomain(domain);
      cookie.setPath(path);
      store_->deleteCookie(
          cookie, originOf({{QStringLiteral("domain"), domain}, {QStringLiteral("path"), path}}));
    }
  }
  if (awaited_.isEmpty()) {
    emit pushed();
  } else {
    patience_.start();
  }
}

void CookieMirror::cookieAdded(const QNetworkCookie& cookie) {
  const Key key = keyOf(cookie);
  Content content{
      QString::fromUtf8(cookie.value()),
      cookie.expirationDate().isValid() ? cookie.expirationDate().toSecsSinceEpoch() : 0};
  gone_.remove(key);
  refused_.remove(key);
  const auto awaited = awaited_.constFind(key);
  if (awaited != awaited_.constEnd() && *awaited && (*awaited)->value == content.value) {
    // As it was told, whatever the engine makes of the time.
    held_.insert(key, **awaited);
    settle(key);
    return;
  }
  held_.insert(key, content);
  emit added(mapOf(cookie));
  if (awaited != awaited_.constEnd()) {
    // A page was quicker.
    settle(key);
  }
}

void CookieMirror::cookieRemoved(const QNetworkCookie& cookie) {
  const Key key = keyOf(cookie);
  const auto awaited = awaited_.constFind(key);
  if (awaited != awaited_.constEnd()) {
    if (!*awaited) {
      held_.remove(key);
      settle(key);
    }
    return;
  }
  // A new value is reported as a removal with an addition after it.
  if (gone_.isEmpty()) {
    QTimer::singleShot(0, this, &CookieMirror::reportRemovals);
  }
  QVariantMap map = mapOf(cookie);
  if (const auto held = held_.constFind(key); held != held_.constEnd() && held->expires != 0) {
    map[QStringLiteral("expires")] = held->expires;
  }
  gone_.insert(key, map);
}

void CookieMirror::reportRemovals() {
  const QHash<Key, QVariantMap> gone = std::exchange(gone_, {});
  for (auto one = gone.constBegin(); one != gone.constEnd(); ++one) {
    held_.remove(one.key());
    emit removed(*one);
  }
}

void CookieMirror::settle(const Key& key) {
  awaited_.remove(key);
  if (awaited_.isEmpty()) {
    patience_.stop();
    emit pushed();
  }
}

void CookieMirror::giveUp() {
  const auto unanswered = std::exchange(awaited_, {});
  for (auto one = unanswered.constBegin(); one != unanswered.constEnd(); ++one) {
    if (one.value()) {
      refused_.insert(one.key(), *one.value());
    } else {
      held_.remove(one.key());
    }
  }
  emit pushed();
}

}  // namespace veltramoor
