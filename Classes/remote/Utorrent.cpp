#include "remote/Utorrent.h"

#include "Util/AbsentValue.h"
#include "site/HttpRequestRegEx.h"

namespace veltramoor {
namespace {

// What stands around the token on its page; neither has a character with a meaning of its own in an
// expression.
constexpr std::string_view kTokenBegin = "<html><div id='token' style='display:none;'>";
constexpr std::string_view kTokenEnd = "</div></html>";

}  // namespace

std::string Utorrent::getData() {
  name = "torrent_file";
  fileContentType = "application/x-bittorrent";
  prefixData = "--";
  postfixData = "\r\n--" + std::string(kMultipartBoundary) + "--\r\n";
  return BitClient::getData();
}

std::optional<Url> Utorrent::getUrl() const {
  return urlWithPath("/gui/?token=" + formatted(sessionId()) +
                     "&action=add-url&s=" + formatted(filename));
}

std::optional<Url> Utorrent::getWebUrl() const { return urlWithCredentialsAndPath("/gui/"); }

void Utorrent::setSessionId() {
  HttpRequestRegEx request(urlWithPath("/gui/token.html"),
                           std::string(kTokenBegin) + "(.*)" + std::string(kTokenEnd));
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"}, {"X-Request", "JSON"}});
  prepare(request);
  request.request();
  setSessionId(request.result());
  setHandshake(std::move(request));
}

HttpRequest Utorrent::getDownload() const {
  HttpRequest request(getUrl());
  request.setSendOnce(true);
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"},
                           {"Accept", "application/json"},
                           {"Accept-Enconding", "gzip,deflate,sdch"},
                           {"X-Request", "JSON"}});
  prepare(request);
  return request;
}

HttpRequest Utorrent::getProbe() const {
  HttpRequest request(urlWithPath("/gui/token.html"));
  prepare(request);
  return request;
}

bool Utorrent::isOwnAnswer(const HttpRequest& answered) const {
  const std::string page = answered.result().value_or("");
  const std::size_t begin = page.find(kTokenBegin);
  return begin != std::string::npos && page.find(kTokenEnd, begin) != std::string::npos;
}

}  // namespace veltramoor
