#include "remote/Vuze.h"

#include "remote/Transmission.h"

namespace veltramoor {

std::string Vuze::getData() {
  const std::string boundary(kMultipartBoundary);
  name = "upfile_0";
  fileContentType = "application/octet-stream";
  // The upload page expects two files; the first part is an empty one.
  prefixData = "--" + boundary +
               "\r\nContent-Disposition: form-data; name=\"upfile_1\"; filename=\"\"\r\n"
               "Content-Type: application/octet-stream\r\n\r\n\r\n--";
  postfixData = "\r\n--" + boundary + "--\r\n";
  return BitClient::getData();
}

std::optional<Url> Vuze::getUrl() const { return urlWithPath("/index.tmpl?d=u&local=1"); }

std::optional<Url> Vuze::getWebUrl() const { return urlWithCredentialsAndPath("/"); }

HttpRequest Vuze::getProbe() const {
  HttpRequest request(urlWithPath("/transmission/rpc"));
  request.setType("POST");
  request.setBody(R"({"method":"session-get"})");
  request.setExtraHeaders({{"X-Requested-With", "XMLHttpRequest"}, {"Content-Type", "json"}});
  prepare(request);
  return request;
}

bool Vuze::isOwnAnswer(const HttpRequest& answered) const {
  // It never asks for a session, as Transmission does.
  const std::optional<UrlResponse>& response = answered.urlResponse();
  return response && response->statusCode != 409 && !isTransmission(answered) &&
         answered.result().value_or("").find("\"result\"") != std::string::npos;
}

}  // namespace veltramoor
