#include "web/WebProfiles.h"

#include <QCoreApplication>
#include <QEvent>
#include <QJSEngine>
#include <memory>
#include <unordered_map>

namespace veltramoor {
namespace {

std::unordered_map<QString, std::unique_ptr<WebProfile>>& profiles() {
  static std::unordered_map<QString, std::unique_ptr<WebProfile>> all;
  return all;
}

// Runs before the engine's own end, which has registered itself earlier.
void endProfiles() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  profiles().clear();
}

}  // namespace

WebProfile* WebProfiles::profile(const QString& userAgent, const QString& key, QObject* jar) {
  std::unique_ptr<WebProfile>& profile = profiles()[userAgent + QLatin1Char('\n') + key];
  if (profile == nullptr) {
    profile = std::make_unique<WebProfile>(userAgent, jar);
    QJSEngine::setObjectOwnership(profile.get(), QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(profile->engine(), QJSEngine::CppOwnership);
    if (profiles().size() == 1) {
      qAddPostRoutine(endProfiles);
    }
  }
  return profile.get();
}

}  // namespace veltramoor
