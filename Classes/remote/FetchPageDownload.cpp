#include "remote/FetchPageDownload.h"

#include <exception>

#include "platform/Alerts.h"
#include "platform/Preferences.h"
#include "remote/BitClient.h"
#include "remote/ConnectionFailed.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"

namespace veltramoor {
namespace {

// A link whose server hangs leaves time enough for the send.
constexpr int kShareOfContents = 4;

using Deadline = std::chrono::steady_clock::time_point;

// The link's own contents: nothing for a magnet link, the file for an http one. Whether it could be
// had does not decide the send.
std::optional<std::string> contentsOf(const Url& url, Deadline deadline) {
  return url.isHttp() ? UrlLoading::sharedInstance().send({.url = url, .deadline = deadline}).data
                      : std::nullopt;
}

// A redirect that leads to a page makes a page's request of the send, whose success says nothing.
bool isAnswerToItself(const HttpRequest& add) {
  const UrlResponse& response = *add.urlResponse();
  return response.method == add.type() && (add.type() != "GET" || response.url == add.url());
}

}  // namespace

FetchPageDownload::FetchPageDownload(std::optional<Url> url, std::string name,
                                     Completion completion)
    : FetchPageDownload(std::move(url), std::move(name), std::move(completion), kLongest) {}

FetchPageDownload::FetchPageDownload(std::optional<Url> url, std::string name,
                                     Completion completion, std::chrono::milliseconds limit)
    : FetchPage(std::move(url), std::move(completion)), name_(std::move(name)), limit_(limit) {}

std::optional<DiagnosisStep> FetchPageDownload::send() {
  const RemoteSettings settings = ServerInfo::sharedInstance().settings();
  const std::unique_ptr<BitClient> client = BitClient::configured(settings);
  if (!url()) {
    return DiagnosisStep{.text = "The torrent has no valid link.", .ofSettings = false};
  }
  if (!client) {
    return RemoteDiagnosis::ofUnusable(settings);
  }
  const auto start = std::chrono::steady_clock::now();
  ReachedStages reached;
  client->deadline = start + limit_;
  // The handshake's, too: it may use the time up.
  client->progress = [&reached](const ConnectionStage& stage) {
    reached.peerAddress = stage.peerAddress;
    reached.localAddress = stage.localAddress;
  };
  // The whole text of a magnet link without a slash; otherwise what follows its last one.
  const std::string& text = url()->absoluteString();
  client->filename = text.substr(text.rfind('/') + 1);
  client->file = contentsOf(*url(), start + limit_ / kShareOfContents);
  client->setSessionId();
  reached.spoke = client->handshake() && client->handshake()->urlResponse();
  HttpRequest add = client->getDownload();
  add.request();
  if (add.isResponseValid() && isAnswerToItself(add)) {
    return std::nullopt;
  }
  return RemoteDiagnosis::ofFailedSend(settings, *client, add, reached);
}

void FetchPageDownload::fetch() {
  try {
    failure_ = send();
  } catch (const std::exception&) {
    failure_ =
        DiagnosisStep{.text = "The torrent could not be sent. Try again.", .ofSettings = false};
  }
  if (failure_) {
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
