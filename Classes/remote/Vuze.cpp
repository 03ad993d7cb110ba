#include "remote/Vuze.h"

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

}  // namespace veltramoor
