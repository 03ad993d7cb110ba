#include "remote/BitClient.h"

#include <fmt/format.h>

#include "Util/AbsentValue.h"
#include "remote/ServerInfo.h"
#include "remote/Transmission.h"
#include "remote/Utorrent.h"
#include "remote/Vuze.h"

namespace veltramoor {
namespace {

template <typename Client>
BitClientClass classOf() {
  return {Client::kName, Client::kIndex, Client::kDefaultPort, Client::kDefaultDescription,
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

std::unique_ptr<BitClient> BitClient::configured(const ServerInfo& info) {
  const BitClientClass* kind = classNamed(info.client().value_or(""));
  if (kind == nullptr) {
    return nullptr;
  }
  std::unique_ptr<BitClient> client = kind->create();
  client->address = info.address();
  client->port = info.port();
  client->username = info.username();
  client->password = info.password();
  return client;
}

std::string BitClient::getData() {
  const std::string header = fmt::format(
      "{}\r\nContent-Disposition: form-data; name=\"{}\"; filename=\"{}\"\r\n"
      "Content-Type: {}\r\n\r\n",
      kMultipartBoundary, formatted(name), formatted(filename), formatted(fileContentType));
  return prefixData.value_or("") + header + file.value_or("") + postfixData.value_or("");
}

std::optional<Url> BitClient::urlWithPath(std::string_view path) const {
  return Url::parse(fmt::format("http://{}:{}{}", formatted(address), formatted(port), path));
}

std::optional<Url> BitClient::urlWithCredentialsAndPath(std::string_view path) const {
  if (!username || username->empty()) {
    return urlWithPath(path);
  }
  return Url::parse(fmt::format("http://{}:{}@{}:{}{}", *username, formatted(password),
                                formatted(address), formatted(port), path));
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
  request.setUsername(username);
  request.setPassword(password);
  return request;
}

}  // namespace veltramoor
