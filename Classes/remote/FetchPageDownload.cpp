#include "remote/FetchPageDownload.h"

#include "platform/Alerts.h"
#include "platform/Preferences.h"
#include "remote/BitClient.h"
#include "remote/ConnectionFailed.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"

namespace veltramoor {
namespace {

// The link's own contents: nothing for a magnet link, the file for an http one. Whether it could be
// had does not decide the send.
std::optional<std::string> contentsOf(const Url& url) {
  return url.isHttp() ? UrlLoading::sharedInstance().send({.url = url}).data : std::nullopt;
}

}  // namespace

FetchPageDownload::FetchPageDownload(std::optional<Url> url, std::string name,
                                     Completion completion)
    : FetchPage(std::move(url), std::move(completion)), name_(std::move(name)) {}

bool FetchPageDownload::send() {
  const std::unique_ptr<BitClient> client = BitClient::configured(ServerInfo::sharedInstance());
  if (!url() || !client) {
    failure_ = HttpRequest::noAddress();
    return false;
  }
  // The whole text of a magnet link without a slash; otherwise what follows its last one.
  const std::string& text = url()->absoluteString();
  client->filename = text.substr(text.rfind('/') + 1);
  client->file = contentsOf(*url());
  client->setSessionId();
  HttpRequest request = client->getDownload();
  request.request();
  failure_ = request.failure();
  return request.isResponseValid();
}

void FetchPageDownload::fetch() {
  if (!send()) {
    showConnectionFailed();
    return;
  }
  if (!DownloadHistory::append(name_)) {
    Alerts::showMessageAndWait("Sent, but not remembered.",
                               Preferences::sharedInstance().lastProblem().value_or(
                                   "The download history could not be written."));
  }
  returnObject_ = name_;
}

}  // namespace veltramoor
