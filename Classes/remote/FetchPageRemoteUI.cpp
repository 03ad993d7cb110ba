#include "remote/FetchPageRemoteUI.h"

#include <chrono>
#include <utility>

#include "platform/Alerts.h"
#include "platform/MainThread.h"
#include "remote/BitClient.h"
#include "remote/ConnectionFailed.h"
#include "remote/ServerInfo.h"

namespace veltramoor {
namespace {

// The credentials stand in the address as typed, and not every password can: one with a slash in it
// ends the host early, and the rest of it would be sent to whatever host the user name spells. The
// plain address does then, for the request carries the credentials in any case.
std::optional<Url> webUrl(BitClient& client) {
  std::optional<Url> url = client.getWebUrl();
  const std::optional<std::string> username = std::exchange(client.username, std::nullopt);
  std::optional<Url> plain = client.getWebUrl();
  client.username = username;
  return url && plain && url->withoutCredentials() == plain->absoluteString() ? url : plain;
}

std::optional<Url> configuredWebUrl() {
  const std::unique_ptr<BitClient> client = BitClient::configured(ServerInfo::sharedInstance());
  return client ? webUrl(*client) : std::nullopt;
}

// The settings may have changed since the operation was made: they are read again.
HttpRequest webInterface() {
  const std::unique_ptr<BitClient> client = BitClient::configured(ServerInfo::sharedInstance());
  if (!client) {
    return HttpRequest(std::nullopt);
  }
  client->deadline = std::chrono::steady_clock::now() + FetchPageRemoteUI::kLongest;
  client->setSessionId();
  HttpRequest request(webUrl(*client));
  request.setDeadline(client->deadline);
  request.setExtraHeaders({{"Keep-Alive", "115"}});
  request.setUsername(client->username);
  request.setPassword(client->password);
  request.request();
  return request;
}

}  // namespace

FetchPageRemoteUI::FetchPageRemoteUI(std::optional<Url> url, bool fromRemoteSettings,
                                     Completion completion, std::function<void()> failureClosed)
    : FetchPage(std::move(url), std::move(completion)),
      fromRemoteSettings_(fromRemoteSettings),
      failureClosed_(std::move(failureClosed)) {
  setUrl(configuredWebUrl());
}

void FetchPageRemoteUI::fetch() {
  const HttpRequest request = webInterface();
  if (!request.isResponseValid()) {
    showConnectionFailed(std::exchange(failureClosed_, {}));
  } else if (fromRemoteSettings_) {
    Alerts::showMessageAndWait("Success!", "");
  }
  returnObject_ = request.result();
  failure_ = request.failure();
  // Nobody's last reference is to be dropped by a worker.
  MainThread::perform([closed = std::exchange(failureClosed_, {})] {});
}

}  // namespace veltramoor
