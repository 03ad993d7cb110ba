#include "toolkit/WebHosts.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {

WebHosts& WebHosts::sharedInstance() { return SharedInstances::of<WebHosts>(); }

QStringList WebHosts::own() const {
  const SiteConfiguration& configuration = SiteConfiguration::current();
  QStringList hosts;
  for (const std::string& host :
       {configuration.siteHost, configuration.forumHost, configuration.movieDatabaseHost}) {
    if (!host.empty()) {
      hosts.append(QString::fromStdString(host));
    }
  }
  return hosts;
}

QString WebHosts::remote() const {
  // A store that cannot be read at the moment makes nothing reachable.
  if (const auto address = Preferences::sharedInstance().string(PreferencesKeys::serverAddress)) {
    lastRemote_ = QString::fromStdString(*address);
  }
  return lastRemote_;
}

}  // namespace veltramoor
