#include "remote/Utorrent.h"

#include "Util/AbsentValue.h"
#include "site/HttpRequestRegEx.h"

namespace veltramoor {

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
                           "<html><div id='token' style='display:none;'>(.*)</div></html>");
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"}, {"X-Request", "JSON"}});
  request.setUsername(username);
  request.setPassword(password);
  request.request();
  setSessionId(request.result());
}

HttpRequest Utorrent::getDownload() const {
  HttpRequest request(getUrl());
  request.setSendOnce(true);
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"},
                           {"Accept", "application/json"},
                           {"Accept-Enconding", "gzip,deflate,sdch"},
                           {"X-Request", "JSON"}});
  request.setUsername(username);
  request.setPassword(password);
  return request;
}

}  // namespace veltramoor
