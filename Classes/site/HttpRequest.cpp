#include "site/HttpRequest.h"

#include <chrono>

#include "Util/MBBase64.h"
#include "Util/Utf.h"
#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"

namespace veltramoor {
namespace {

// Keeps the site's pages in English, whose words the scraping expressions look for. The domain is
// the built-in host, not the configured one. One step, or a request on another thread could start
// between the deletion and the insertion and go out without it.
void storeLanguageCookie() {
  const std::string host =
      SiteConfiguration::hostWithoutPort(SiteConfiguration::current().defaultSiteHost);
  Cookie language;
  language.name = "language";
  language.value = "en_EN";
  language.domain = "." + host;
  CookieStorage::sharedInstance().keepOnly({language.domain, host}, language);
}

}  // namespace

HttpRequest::HttpRequest(std::optional<Url> url) : url_(std::move(url)) {}

bool HttpRequest::isResponseValid() const {
  const int status = urlResponse_ ? urlResponse_->statusCode : 0;
  return status >= 200 && status < 300;
}

UrlRequest HttpRequest::urlRequest() const {
  UrlRequest request{.url = *url_,
                     .method = type_,
                     .body = body_,
                     .sendOnce = sendOnce_,
                     .stop = stop_,
                     .deadline = deadline_,
                     .followsRedirects = followsRedirects_,
                     .progress = progress_};
  HeaderList& headers = request.headers;
  if (type_ == "POST" && !body_ && client_) {
    headers.emplace_back("Content-Type",
                         "multipart/form-data; boundary=" + std::string(kMultipartBoundary));
    headers.emplace_back("Keep-Alive", "115");
    headers.emplace_back("Accept",
                         "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8");
    request.body = client_->getData();
    headers.emplace_back("Content-Length", std::to_string(request.body->size()));
  } else if (type_ == "POST" && !body_) {
    request.body = postData_.value_or("");
    headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
    headers.emplace_back("Content-Length", std::to_string(utf16Length(*request.body)));
  } else if (!body_) {
    headers.emplace_back("Content-Type", "text/html");
  }
  headers.insert(headers.end(), extraHeaders_.begin(), extraHeaders_.end());
  if (username_ && !username_->empty()) {
    headers.emplace_back("Authorization",
                         "Basic " + base64Encoding(*username_ + ":" + password_.value_or("")));
  }
  headers.emplace_back("User-Agent", overwriteUserAgent_ ? kDesktopUserAgent : kHandsetUserAgent);
  if (timeout_ != 0) {
    request.timeoutInterval = std::chrono::seconds(timeout_);
  }
  return request;
}

TransferFailure HttpRequest::noAddress() {
  return {TransferFailureKind::NoAddress, "There is no valid address", "", 0};
}

void HttpRequest::request() {
  urlResponse_.reset();
  responseData_.reset();
  setResult(std::nullopt);
  headers_.reset();
  failure_.reset();
  if (!url_) {
    failure_ = noAddress();
    return;
  }
  storeLanguageCookie();
  UrlResult outcome = UrlLoading::sharedInstance().send(urlRequest());
  failure_ = std::move(outcome.failure);
  urlResponse_ = std::move(outcome.response);
  responseData_ = std::move(outcome.data);
  // ASCII, the fallback for what is not UTF-8, is a part of it: one check serves both.
  isResultData_ = responseData_ && isValidUtf8(*responseData_);
  if (urlResponse_) {
    headers_ = urlResponse_->headers;
  }
}

}  // namespace veltramoor
