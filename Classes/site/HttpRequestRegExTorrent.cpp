#include "site/HttpRequestRegExTorrent.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"
#include "site/TorrentScraping.h"

namespace veltramoor {

void HttpRequestRegExTorrent::request() {
  torrents_.reset();
  trouble_.reset();
  HttpRequest::request();
  if (!result()) {
    trouble_ = troubleOf(*this);
    return;
  }
  const std::vector<std::string> history = Preferences::sharedInstance()
                                               .array(PreferencesKeys::torrentHistory)
                                               .value_or(std::vector<std::string>{});
  torrents_ = torrentsInPage(*result(), history);
  if (torrents_->empty()) {
    trouble_ = troubleOf(*this);
  }
}

}  // namespace veltramoor
