#include "web/WebProfile.h"

#include <QMetaObject>
#include <QNetworkCookie>
#include <QWebEngineCookieStore>

namespace veltramoor {

WebProfile::WebProfile(const QString& userAgent, QObject* jar, QObject* hosts)
    : QObject(jar),
      ownServerOnly_(hosts == nullptr),
      hosts_(hosts),
      cookies_([store = engine_.cookieStore()](const QNetworkCookie& cookie, const QUrl& origin) {
        store->setCookie(cookie, origin);
      }) {
  connect(engine_.cookieStore(), &QWebEngineCookieStore::cookieAdded, &cookies_,
          &CookieMirror::cookieAdded);
  connect(engine_.cookieStore(), &QWebEngineCookieStore::cookieRemoved, &cookies_,
          &CookieMirror::cookieRemoved);
  engine_.setOffTheRecord(true);
  engine_.setHttpCacheType(QQuickWebEngineProfile::MemoryHttpCache);
  engine_.setPersistentCookiesPolicy(QQuickWebEngineProfile::NoPersistentCookies);
  engine_.setHttpUserAgent(userAgent);
  engine_.setHttpAcceptLanguage(QStringLiteral("en-US,en"));
  engine_.setSpellCheckEnabled(false);
  engine_.setUrlRequestInterceptor(&guard_);
  engine_.installUrlSchemeHandler(PageSchemeHandler::kScheme, &pages_);
  connect(&cookies_, &CookieMirror::pushed, this, &WebProfile::cookiesReady);
  connect(&cookies_, &CookieMirror::added, this, [this](const QVariantMap& cookie) {
    QMetaObject::invokeMethod(parent(), "take", Q_ARG(QVariantMap, cookie));
  });
  connect(&cookies_, &CookieMirror::removed, this, [this](const QVariantMap& cookie) {
    QMetaObject::invokeMethod(parent(), "drop", Q_ARG(QVariantMap, cookie));
  });
  connect(jar, SIGNAL(pushRequested()), this, SLOT(pushCookies()));
}

QString WebProfile::shortPageFor(const QString& id, const QString& html, const QUrl& base) {
  ownServer_ = base.authority(QUrl::FullyEncoded);
  return pages_.shortPageFor(id, html, base);
}

PageReach WebProfile::reach() const {
  if (ownServerOnly_ || hosts_ == nullptr) {
    return {.own = {ownServer_}, .refused = {}, .nothingElse = true};
  }
  PageReach reach;
  QMetaObject::invokeMethod(hosts_, "own", Q_RETURN_ARG(QStringList, reach.own));
  QMetaObject::invokeMethod(hosts_, "remote", Q_RETURN_ARG(QString, reach.refused));
  return reach;
}

void WebProfile::pushCookies() {
  QVariantList cookies;
  QMetaObject::invokeMethod(parent(), "cookies", Q_RETURN_ARG(QVariantList, cookies));
  cookies_.push(cookies);
}

}  // namespace veltramoor
