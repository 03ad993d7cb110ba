#include "remote/BitClient.h"

#include <fmt/format.h>

#include "Util/AbsentValue.h"
#include "Util/Capitalized.h"
#include "remote/Transmission.h"
#include "remote/Utorrent.h"
#include "remote/Vuze.h"

namespace veltramoor {
namespace {

template <typename Client>
BitClientClass classOf() {
  return {Client::kName,
          Client::kIndex,
          Client::kDefaultPort,
          Client::kDefaultDescription,
          Client::kRemotePreferences,
          []() -> std::unique_ptr<BitClient> { return std::make_unique<Client>(); }};
}

}  // namespace

const std::vector<BitClientClass>& BitClient::classes() {
  static const std::vector<BitClientClass> all = {classOf<Vuze>(), classOf<Transmission>(),
                                                  classOf<Utorrent>()};
  return all;
}

const BitClientClass* BitClient::classNamed(std::string_view name) {
  for (const BitClientClass& one : classes()) {
    if (one.name == name) {
      return &one;
    }
  }
  return nullptr;
}

std::string BitClient::getClientByIndex(int index) {
  for (const BitClientClass& one : classes()) {
    if (one.index == index) {
      return std::string(one.name);
    }
  }
  return "";
}

std::unique_ptr<BitClient> BitClient::configured(const RemoteSettings& settings) {
  const BitClientClass* kind = classNamed(settings.client.value_or(""));
  if (kind == nullptr) {
    return nullptr;
  }
  std::unique_ptr<BitClient> client = kind->create();
  client->address = settings.address;
  client->port = settings.port;
  if (client->port && trimmed(*client->port).empty()) {
    client->port = kind->defaultPort;
  }
  client->username = settings.username;
  client->password = settings.password;
  return client;
}

void BitClient::prepare(HttpRequest& request) const {
  request.setUsername(username);
  request.setPassword(password);
  request.setDeadline(deadline);
  request.setProgress(progress);
}

HttpRequest BitClient::getProbe() const {
  HttpRequest request(urlWithPath("/transmission/rpc"));
  prepare(request);
  return request;
}

std::string BitClient::getData() {
  const std::string header = fmt::format(
      "{}\r\nContent-Disposition: form-data; name=\"{}\"; filename=\"{}\"\r\n"
      "Content-Type: {}\r\n\r\n",
      kMultipartBoundary, formatted(name), formatted(filename), formatted(fileContentType));
  return prefixData.value_or("") + header + file.value_or("") + postfixData.value_or("");
}

std::optional<Url> BitClient::urlWithPath(std::string_view path) const {
  return Url::parse(
      fmt::format("http://{}:{}{}", trimmed(formatted(address)), trimmed(formatted(port)), path));
}

std::optional<Url> BitClient::urlWithCredentialsAndPath(std::string_view path) const {
  if (!username || username->empty()) {
    return urlWithPath(path);
  }
  return Url::parse(fmt::format("http://{}:{}@{}:{}{}", *username, formatted(password),
                                trimmed(formatted(address)), trimmed(formatted(port)), path));
}

std::optional<Url> BitClient::getUrl() const { return urlWithPath("/"); }

std::optional<Url> BitClient::getWebUrl() const { return urlWithPath("/"); }

HttpRequest BitClient::getDownload() const {
  HttpRequest request(urlWithPath("/transmission/rpc"));
  // The file name goes in as it is: one with a quote makes invalid JSON, which the server refuses.
  const std::string body =
      fmt::format(R"({{"method":"torrent-add","arguments":{{"paused":false,"filename":"{}"}}}})",
                  formatted(filename));
  request.setType("POST");
  HeaderList headers = {
      {"X-Requested-With", "XMLHttpRequest"},
      {"Accept", "application/json, text/javascript, */*; q=0.01"},
      {"Accept-Enconding", "gzip,deflate,sdch"},  // misspelt in every version; servers ignore it
      {"Content-Type", "json"},
  };
  if (sessionId_) {
    headers.emplace_back("X-Transmission-Session-Id", *sessionId_);
  }
  headers.emplace_back("Content-Length", std::to_string(body.size()));
  request.setExtraHeaders(std::move(headers));
  request.setBody(body);
  prepare(request);
  return request;
}

}  // namespace veltramoor
