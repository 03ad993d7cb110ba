// One HTTP exchange, as the whole application performs it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "platform/Url.h"
#include "platform/UrlLoading.h"
#include "site/MultipartUpload.h"

namespace veltramoor {

/// Separates the parts of a multipart upload: 27 hyphens and 29 digits.
inline constexpr std::string_view kMultipartBoundary =
    "---------------------------20072377098235644401115438165";

/// Fill in URL, method and body, call `request()`, then read status, bytes, text and headers from
/// the same object. `request()` blocks until the exchange is over and never throws or reports; the
/// outcome is what `isResponseValid()` and the accessors say. Each object belongs to one thread.
class HttpRequest {
 public:
  /// Ends after the last "NET CLR" with neither version nor parenthesis; servers have seen it so.
  static constexpr std::string_view kDesktopUserAgent =
      "Mozilla/4.0 (compatible; MSIE 7.0; Windows NT 6.1; Trident/4.0; SLCC2; .NET CLR 2.0.50727; "
      ".NET CLR 3.5.30729; .NET CLR";
  static constexpr std::string_view kHandsetUserAgent =
      "Mozilla/5.0 (iPhone; U; CPU like Mac OS X; en) AppleWebKit/420+ (KHTML, like Gecko) "
      "Version/3.0 Mobile/1C25 Safari/419.3";

  explicit HttpRequest(std::optional<Url> url);
  virtual ~HttpRequest() = default;
  HttpRequest(const HttpRequest&) = default;
  HttpRequest(HttpRequest&&) = default;
  HttpRequest& operator=(const HttpRequest&) = default;
  HttpRequest& operator=(HttpRequest&&) = default;

  /// Performs the exchange and overwrites the outputs. Without a URL it fails like an unreachable
  /// host.
  virtual void request();

  /// Whether the final response's status lies in 200 to 299; false without a response.
  [[nodiscard]] bool isResponseValid() const;

  [[nodiscard]] const std::optional<Url>& url() const { return url_; }
  void setUrl(std::optional<Url> url) { url_ = std::move(url); }

  /// The method; "GET" at first. Compared with "POST" exactly.
  [[nodiscard]] const std::string& type() const { return type_; }
  void setType(std::string type) { type_ = std::move(type); }

  /// Form text of a POST. Its stated Content-Length counts UTF-16 units, as the site has always
  /// been told, and is therefore too small for text outside ASCII.
  [[nodiscard]] const std::optional<std::string>& postData() const { return postData_; }
  void setPostData(std::optional<std::string> text) { postData_ = std::move(text); }

  /// A ready-made body for any method; no content header is added for it.
  [[nodiscard]] const std::optional<std::string>& body() const { return body_; }
  void setBody(std::optional<std::string> bytes) { body_ = std::move(bytes); }

  /// On a POST without `body`: whose multipart upload is the body.
  [[nodiscard]] const std::shared_ptr<MultipartUpload>& client() const { return client_; }
  void setClient(std::shared_ptr<MultipartUpload> client) { client_ = std::move(client); }

  /// Basic authentication, used when the user name is not empty.
  [[nodiscard]] const std::optional<std::string>& username() const { return username_; }
  void setUsername(std::optional<std::string> text) { username_ = std::move(text); }
  [[nodiscard]] const std::optional<std::string>& password() const { return password_; }
  void setPassword(std::optional<std::string> text) { password_ = std::move(text); }

  /// Idle timeout in seconds; 0 keeps the transport's default.
  [[nodiscard]] int timeout() const { return timeout_; }
  void setTimeout(int seconds) { timeout_ = seconds; }

  /// True (at first): the desktop User-Agent; false: the handset one.
  [[nodiscard]] bool overwriteUserAgent() const { return overwriteUserAgent_; }
  void setOverwriteUserAgent(bool overwrite) { overwriteUserAgent_ = overwrite; }

  /// Further header fields, added as they stand in this order, beside any of the same name.
  [[nodiscard]] const HeaderList& extraHeaders() const { return extraHeaders_; }
  void setExtraHeaders(HeaderList headers) { extraHeaders_ = std::move(headers); }

  /// For a GET that has an effect at the server: never sent again by itself on a kept connection
  /// that the server dropped.
  void setSendOnce(bool once) { sendOnce_ = once; }

  /// Asking for a stop makes a request that is under way on another thread fail at once.
  void setStop(std::stop_token stop) { stop_ = std::move(stop); }

  /// The request has failed when it is not over by then, redirects included.
  void setDeadline(std::optional<std::chrono::steady_clock::time_point> deadline) {
    deadline_ = deadline;
  }

  /// False: a redirect is a final answer like any other.
  void setFollowsRedirects(bool follows) { followsRedirects_ = follows; }

  /// Called on the thread of `request()` as the stages of a connection are reached.
  void setProgress(std::function<void(const ConnectionStage&)> progress) {
    progress_ = std::move(progress);
  }

  /// Why the last `request()` had no response: of kind NoAddress without a URL. Absent when there
  /// was one, of whatever status, and before the first.
  [[nodiscard]] const std::optional<TransferFailure>& failure() const { return failure_; }

  /// What `failure()` is without a URL.
  [[nodiscard]] static TransferFailure noAddress();

  /// Absent when no response was had.
  [[nodiscard]] const std::optional<UrlResponse>& urlResponse() const { return urlResponse_; }
  [[nodiscard]] const std::optional<std::string>& responseData() const { return responseData_; }
  void setResponseData(std::optional<std::string> bytes) {
    if (isResultData_) {
      setResult(std::move(responseData_));
    }
    responseData_ = std::move(bytes);
  }
  /// The body as text; absent when there is none or it is not UTF-8. Always well-formed UTF-8.
  [[nodiscard]] const std::optional<std::string>& result() const {
    return isResultData_ ? responseData_ : result_;
  }
  void setResult(std::optional<std::string> text) {
    result_ = std::move(text);
    isResultData_ = false;
  }
  [[nodiscard]] const std::optional<HeaderList>& headers() const { return headers_; }

 private:
  [[nodiscard]] UrlRequest urlRequest() const;

  std::optional<Url> url_;
  std::string type_ = "GET";
  std::optional<std::string> postData_;
  std::optional<std::string> body_;
  std::shared_ptr<MultipartUpload> client_;
  std::optional<std::string> username_;
  std::optional<std::string> password_;
  int timeout_ = 0;
  bool overwriteUserAgent_ = true;
  bool sendOnce_ = false;
  std::stop_token stop_;
  std::optional<std::chrono::steady_clock::time_point> deadline_;
  bool followsRedirects_ = true;
  std::function<void(const ConnectionStage&)> progress_;
  HeaderList extraHeaders_;
  std::optional<TransferFailure> failure_;
  std::optional<UrlResponse> urlResponse_;
  std::optional<std::string> responseData_;
  std::optional<std::string> result_;
  // The text is the very bytes that came, and not kept twice: a second copy of every page is enough
  // to make the C library return the memory to the kernel after each, at the cost of an exchange.
  bool isResultData_ = false;
  std::optional<HeaderList> headers_;
};

}  // namespace veltramoor
