#include "web/WebProfiles.h"

#include <QJSEngine>
#include <memory>

namespace veltramoor {

WebProfile* WebProfiles::profile(const QString& userAgent, const QString& key, QObject* jar,
                                 QObject* hosts) {
  const QString name = userAgent + QLatin1Char('\n') + key;
  auto* profile = jar->findChild<WebProfile*>(name, Qt::FindDirectChildrenOnly);
  if (profile == nullptr) {
    profile =
        std::make_unique<WebProfile>(userAgent, jar, key.isEmpty() ? hosts : nullptr).release();
    profile->setObjectName(name);
    QJSEngine::setObjectOwnership(profile, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(profile->engine(), QJSEngine::CppOwnership);
  }
  return profile;
}

}  // namespace veltramoor
