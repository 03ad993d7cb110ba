#include "support/RemotePeers.h"

#include <nlohmann/json.hpp>

#include "Util/MBBase64.h"

namespace veltramoor::test {

RemotePeer::RemotePeer(PeerLogin login)
    : login_(std::move(login)),
      server_([this](const RecordedRequest& request) { return reply(request); }) {}

std::vector<std::string> RemotePeer::added() const {
  const std::lock_guard lock(mutex_);
  return added_;
}

void RemotePeer::add(std::string link) {
  const std::lock_guard lock(mutex_);
  added_.push_back(std::move(link));
}

std::string RemotePeer::port() const {
  // The server runs before the subclass is made; whoever has the port has seen that end, and so has
  // the thread that answers.
  const std::lock_guard lock(mutex_);
  return std::to_string(server_.port());
}

RawReply RemotePeer::reply(const RecordedRequest& request) {
  { const std::lock_guard lock(mutex_); }
  if (login_ && request.header("Authorization") !=
                    "Basic " + base64Encoding(login_->first + ":" + login_->second)) {
    return RawServer::response(401, "who are you?", {"WWW-Authenticate: Basic realm=\"peer\""});
  }
  return answer(request);
}

RawReply UtorrentPeer::answer(const RecordedRequest& request) {
  const std::lock_guard lock(mutex_);
  if (request.target == "/gui/token.html") {
    token_ = "token-" + std::to_string(++tokens_);
    return RawServer::response(
        200, "<html><div id='token' style='display:none;'>" + token_ + "</div></html>",
        {"Set-Cookie: GUID=guid-1; Path=/"});
  }
  if (request.target == "/gui/") {
    return RawServer::response(200, "<html>uTorrent</html>");
  }
  const std::string wanted = "/gui/?token=" + token_ + "&action=add-url&s=";
  const bool hasCookie =
      request.header("Cookie").value_or("").find("GUID=guid-1") != std::string::npos;
  if (token_.empty() || !hasCookie || !request.target.starts_with(wanted)) {
    return RawServer::response(400, "invalid request");
  }
  token_.clear();
  add(request.target.substr(wanted.size()));
  return RawServer::response(200, R"({"build":1})");
}

RawReply VuzePeer::answer(const RecordedRequest& request) {
  if (request.method == "GET" && request.target == "/") {
    return RawServer::response(200, "<html>Vuze</html>");
  }
  if (request.method != "POST" || request.target != "/transmission/rpc" ||
      request.header("X-Transmission-Session-Id")) {
    return RawServer::response(404);
  }
  if (request.header("Content-Length") != std::to_string(request.body.size())) {
    return RawServer::response(415);
  }
  const auto call = nlohmann::json::parse(request.body, nullptr, false);
  if (!call.is_discarded() && call.value("method", "") == "session-get") {
    return RawServer::response(200, R"({"arguments":{},"result":"success"})");
  }
  if (call.is_discarded() || call.value("method", "") != "torrent-add") {
    return RawServer::response(500);
  }
  add(call["arguments"].value("filename", ""));
  return RawServer::response(200, R"({"result":"success"})");
}

}  // namespace veltramoor::test
