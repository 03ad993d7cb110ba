#include "remote/Transmission.h"

namespace veltramoor {

bool isTransmission(const HttpRequest& answered) {
  const std::optional<UrlResponse>& response = answered.urlResponse();
  return response && (response->header("X-Transmission-Session-Id") ||
                      response->header("Server").value_or("").starts_with("Transmission"));
}

std::optional<Url> Transmission::getUrl() const {
  return urlWithPath("/transmission/upload?paused=false");
}

std::optional<Url> Transmission::getWebUrl() const {
  return urlWithCredentialsAndPath("/transmission/web/");
}

void Transmission::setSessionId() {
  HttpRequest request(urlWithPath("/transmission/rpc"));
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"},
                           {"Pragma", "no-cache"},
                           {"Cache-Control", "no-cache"},
                           {"Content-Type", "; charset=UTF-8json"}});
  // Stays on the device, the request being a GET: the server answers that with its id as well.
  request.setPostData(R"({"method":"session-get"})");
  prepare(request);
  request.request();
  setSessionId(request.urlResponse() ? request.urlResponse()->header("X-Transmission-Session-Id")
                                     : std::nullopt);
  setHandshake(std::move(request));
}

bool Transmission::isOwnAnswer(const HttpRequest& answered) const {
  return isTransmission(answered);
}

}  // namespace veltramoor
