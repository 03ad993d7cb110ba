#include "web/CookieMirror.h"

#include <QDateTime>
#include <QNetworkCookie>
#include <QTimeZone>
#include <QUrl>
#include <utility>

namespace veltramoor {
namespace {

// The engine confirms a cookie within a few milliseconds, or not at all when it refuses it.
constexpr int kPatience = 1000;

// An expiry time in the past, which makes the engine drop a cookie. Unix time in seconds; 0 stands
// for none.
constexpr qint64 kLongAgo = 1;

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

CookieMirror::CookieMirror(SetCookie setCookie) : setCookie_(std::move(setCookie)) {
  patience_.setSingleShot(true);
  patience_.setInterval(kPatience);
  connect(&patience_, &QTimer::timeout, this, &CookieMirror::giveUp);
}

CookieMirror::Key CookieMirror::keyOf(const QNetworkCookie& cookie) {
  return {cookie.domain().toLower(), cookie.path(), QString::fromUtf8(cookie.name())};
}

CookieMirror::Content CookieMirror::contentOf(const QNetworkCookie& cookie) {
  return {QString::fromUtf8(cookie.value()), cookie.isSecure(), cookie.isHttpOnly(),
          cookie.expirationDate().isValid() ? cookie.expirationDate().toSecsSinceEpoch() : 0};
}

void CookieMirror::set(const Key& key, const Content& content) {
  QNetworkCookie cookie(key.name.toUtf8(), content.value.toUtf8());
  QUrl origin;
  // The store is ours, not a server's: only a secure origin may replace what is marked as secure.
  origin.setScheme(QStringLiteral("https"));
  if (key.domain.startsWith(QLatin1Char('.'))) {
    cookie.setDomain(key.domain);
    origin.setHost(key.domain.mid(1));
  } else {
    // Without a domain of its own the engine makes it the origin's alone.
    origin.setHost(key.domain);
  }
  cookie.setPath(key.path);
  origin.setPath(key.path);
  cookie.setSecure(content.secure);
  cookie.setHttpOnly(content.httpOnly);
  if (content.expires != 0) {
    cookie.setExpirationDate(QDateTime::fromSecsSinceEpoch(content.expires, QTimeZone::utc()));
  }
  setCookie_(cookie, origin);
}

// The engine's own deletion goes by name and address and takes other cookies along: those of the
// same name on another path, or of the host's where the domain's is meant.
void CookieMirror::expire(const Key& key, const Content& content) {
  set(key, {content.value, content.secure, content.httpOnly, kLongAgo});
}

void CookieMirror::push(const QVariantList& cookies) {
  // In the order in which they are to be sent.
  QList<std::pair<Key, Content>> wanted;
  QSet<Key> wantedKeys;
  for (const QVariant& one : cookies) {
    const QVariantMap map = one.toMap();
    const Key key{map[QStringLiteral("domain")].toString().toLower(),
                  map[QStringLiteral("path")].toString(), map[QStringLiteral("name")].toString()};
    const Content content{
        map[QStringLiteral("value")].toString(), map[QStringLiteral("secure")].toBool(),
        map[QStringLiteral("httpOnly")].toBool(), map[QStringLiteral("expires")].toLongLong()};
    wanted.append({key, content});
    wantedKeys.insert(key);
  }
  // First what goes: the engine refuses a cookie in whose place a secure one of that name is.
  QHash<Key, Content> unwanted = refused_;
  unwanted.insert(leaving_);
  unwanted.insert(held_);
  for (auto told = awaited_.constBegin(); told != awaited_.constEnd(); ++told) {
    if (*told) {
      unwanted.insert(told.key(), **told);
    }
  }
  for (auto one = unwanted.constBegin(); one != unwanted.constEnd(); ++one) {
    const Key& key = one.key();
    if (wantedKeys.contains(key)) {
      continue;
    }
    // One that a page has just removed may have been set anew, which is not known yet.
    const bool answers = !refused_.contains(key) && !gone_.contains(key);
    if (answers && !leaving_.contains(key)) {
      awaited_.insert(key, std::nullopt);
    }
    refused_.remove(key);
    leaving_.insert(key, *one);
    expire(key, *one);
  }
  for (const auto& [key, content] : wanted) {
    const bool held = held_.value(key) == content && held_.contains(key) && !leaving_.contains(key);
    const bool told = awaited_.contains(key) ? awaited_[key] == content : held;
    if (!told && !(refused_.contains(key) && refused_[key] == content)) {
      leaving_.remove(key);
      awaited_.insert(key, content);
      set(key, content);
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
  const Content content = contentOf(cookie);
  gone_.remove(key);
  const bool confirmsLate = refused_.contains(key) && refused_[key].equalsButForTime(content);
  refused_.remove(key);
  const auto awaited = awaited_.constFind(key);
  const bool goes = awaited != awaited_.constEnd() && !*awaited;
  const bool wentLate = awaited == awaited_.constEnd() && leaving_.contains(key) &&
                        leaving_[key].equalsButForTime(content);
  if (goes || wentLate || confirmsLate) {
    held_.insert(key, content);
    return;
  }
  leaving_.remove(key);
  if (awaited != awaited_.constEnd() && (*awaited)->equalsButForTime(content)) {
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
  // Not yet the one that is to go, but the one whose place it took.
  if (const auto leaving = leaving_.constFind(key);
      leaving != leaving_.constEnd() && !leaving->equalsButForTime(contentOf(cookie))) {
    held_.remove(key);
    return;
  }
  const bool left = leaving_.remove(key);
  const auto awaited = awaited_.constFind(key);
  if (awaited != awaited_.constEnd()) {
    if (!*awaited) {
      held_.remove(key);
      settle(key);
    }
    return;
  }
  if (left) {
    held_.remove(key);
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
    }
  }
  emit pushed();
}

}  // namespace veltramoor
