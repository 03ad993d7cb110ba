#include "toolkit/WebCookies.h"

#include <string>
#include <vector>

#include "platform/CookieLine.h"
#include "platform/CookieStorage.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

std::string text(const QVariantMap& map, const char* name) {
  return map[QLatin1String(name)].toString().toStdString();
}

Cookie cookieOf(const QVariantMap& map) {
  Cookie cookie;
  cookie.name = text(map, "name");
  cookie.value = text(map, "value");
  cookie.domain = lowerCaseDomain(text(map, "domain"));
  cookie.path = text(map, "path");
  if (const QVariant expires = map[QStringLiteral("expires")]; expires.isValid()) {
    cookie.expires = expires.toLongLong();
  }
  cookie.secure = map[QStringLiteral("secure")].toBool();
  cookie.httpOnly = map[QStringLiteral("httpOnly")].toBool();
  return cookie;
}

}  // namespace

WebCookies& WebCookies::sharedInstance() { return SharedInstances::of<WebCookies>(); }

QVariantList WebCookies::cookies() const {
  QVariantList list;
  for (const Cookie& cookie : CookieStorage::sharedInstance().cookies()) {
    QVariantMap map{{QStringLiteral("name"), QString::fromStdString(cookie.name)},
                    {QStringLiteral("value"), QString::fromStdString(cookie.value)},
                    {QStringLiteral("domain"), QString::fromStdString(cookie.domain)},
                    {QStringLiteral("path"), QString::fromStdString(cookie.path)},
                    {QStringLiteral("secure"), cookie.secure},
                    {QStringLiteral("httpOnly"), cookie.httpOnly}};
    if (cookie.expires) {
      map[QStringLiteral("expires")] = static_cast<qlonglong>(*cookie.expires);
    }
    list.append(map);
  }
  return list;
}

void WebCookies::take(const QVariantMap& map) {
  CookieStorage::sharedInstance().insert(cookieOf(map));
  CookieStorage::sharedInstance().saveIfChanged();
}

void WebCookies::drop(const QVariantMap& map) {
  const Cookie gone = cookieOf(map);
  CookieStorage::sharedInstance().atomically([&](CookieStorage& store) {
    std::vector<Cookie> others;
    bool found = false;
    for (const Cookie& cookie : store.cookies()) {
      if (cookie.name != gone.name || lowerCaseDomain(cookie.domain) != gone.domain) {
        continue;
      }
      if (cookie.path == gone.path && cookie.value == gone.value &&
          cookie.expires.value_or(0) <= gone.expires.value_or(0)) {
        found = true;
      } else {
        others.push_back(cookie);
      }
    }
    if (!found) {
      return;
    }
    store.erase({gone.domain}, gone.name);
    for (const Cookie& cookie : others) {
      store.insert(cookie);
    }
  });
  CookieStorage::sharedInstance().saveIfChanged();
}

}  // namespace veltramoor
