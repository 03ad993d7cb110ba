#include "platform/CurlTransfer.h"

#include <curl/curl.h>
#include <fmt/format.h>
#include <netdb.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <climits>
#include <new>
#include <string_view>

#include "platform/CookieEngine.h"
#include "platform/CurlFailure.h"
#include "platform/CurlGlobal.h"
#include "platform/RedirectRules.h"

namespace veltramoor {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Room for an ordinary page of the site at once: growing step by step cost more than any other part
// of an exchange. With libcurl's own buffers it stays under 128 KiB, from which on the C library
// gives freed memory back to the kernel, and every page would be mapped and cleared anew: three
// times as slow.
constexpr std::size_t kUsualBodySize = std::size_t{96} * 1024;

struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

class FieldList {
 public:
  void append(const std::string& line) {
    curl_slist* grown = curl_slist_append(first_.get(), line.c_str());
    if (grown == nullptr) {
      throw std::bad_alloc();
    }
    static_cast<void>(first_.release());
    first_.reset(grown);
  }
  [[nodiscard]] curl_slist* get() const { return first_.get(); }

 private:
  std::unique_ptr<curl_slist, ListDeleter> first_;
};

bool hasField(const HeaderList& headers, std::string_view name) {
  return std::any_of(headers.begin(), headers.end(),
                     [name](const auto& field) { return isSameFieldName(field.first, name); });
}

FieldList fieldLines(const HeaderList& headers) {
  FieldList lines;
  for (const auto& [name, value] : headers) {
    // Host is the URL's (RFC 9110 section 7.2): libcurl would take another one for the cookies'
    // host.
    if (isSameFieldName(name, "Host")) {
      continue;
    }
    // "Name:" without a value would take the field away; "Name;" sends it empty.
    const bool isBlank = value.find_first_not_of(" \t") == std::string::npos;
    lines.append(isBlank ? name + ";" : name + ": " + value);
  }
  for (const std::string ownField : {"Expect", "Content-Type"}) {
    if (!hasField(headers, ownField)) {
      lines.append(ownField + ":");
    }
  }
  return lines;
}

// Path and query as they were given, for the request line: libcurl would write escapes its own way.
std::string requestTarget(const Url& url) {
  const std::string& text = url.absoluteString();
  const std::size_t start = text.find_first_of("/?#", text.find("//") + 2);
  const std::string target =
      start == std::string::npos ? "" : text.substr(start, text.find('#', start) - start);
  return target.starts_with('/') ? target : "/" + target;
}

// Spare bytes of the body would be taken for the beginning of the connection's next request.
bool isLengthMisstated(const UrlRequest& request) {
  const std::string length = std::to_string(request.body.value_or("").size());
  return std::any_of(request.headers.begin(), request.headers.end(), [&length](const auto& field) {
    return isSameFieldName(field.first, "Transfer-Encoding") ||
           (isSameFieldName(field.first, "Content-Length") && field.second != length);
  });
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos
             ? std::string_view()
             : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

class CurlTransfer::Impl {
 public:
  explicit Impl(CookieStorage& cookies) {
    initialiseCurl();
    multi_.reset(curl_multi_init());
    easy_.reset(curl_easy_init());
    if (multi_ == nullptr || easy_ == nullptr) {
      throw std::bad_alloc();
    }
    prepare();
    cookies_.emplace(easy_.get(), cookies);
  }

  TransferOutcome perform(const UrlRequest& request, const TransferLimits& limits,
                          const std::atomic<bool>& abandoned) {
    answer_ = {};
    headerSize_ = 0;
    inHead_ = false;
    tooLarge_.clear();
    errorText_.front() = '\0';
    limits_ = &limits;
    const FieldList fields = fieldLines(request.headers);
    describe(request, fields, limits);
    cookies_->handIn();
    // A partial body comes with its status, too: only a transfer without any error counts.
    if (const auto trouble = run(limits, abandoned, request.stop)) {
      return {.failure = failureAtPeer(request.url, *trouble), .bytesReceived = bytesReceived()};
    }
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    answer_.statusCode = static_cast<int>(status);
    const char* target = nullptr;
    curl_easy_getinfo(easy_.get(), CURLINFO_REDIRECT_URL, &target);
    if (target != nullptr) {
      answer_.redirectTarget = target;
    }
    return {.answer = std::move(answer_), .bytesReceived = bytesReceived()};
  }

  void wakeUp() { curl_multi_wakeup(multi_.get()); }

 private:
  struct Trouble {
    TransferFailureKind kind;
    std::string words;
  };

  template <typename Value>
  void set(CURLoption option, Value value) {
    if (curl_easy_setopt(easy_.get(), option, value) == CURLE_OUT_OF_MEMORY) {
      throw std::bad_alloc();
    }
  }

  // What stays the same for every request. Set once: a reset in between would forget the cookies.
  void prepare() {
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_PROXY, "");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_ACCEPT_ENCODING, "");
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L);  // A name look-up that hangs would outlive the time limit.
    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_HEADERFUNCTION, &Impl::headerArrived);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &Impl::bodyArrived);
    set(CURLOPT_WRITEDATA, this);
  }

  // What differs. All of it is set each time, or the last request's value would hold.
  void describe(const UrlRequest& request, const FieldList& fields, const TransferLimits& limits) {
    set(CURLOPT_CONNECTTIMEOUT_MS,
        static_cast<long>(std::min<milliseconds::rep>(limits.idle.count(), INT_MAX)));
    set(CURLOPT_URL, request.url.absoluteString().c_str());
    set(CURLOPT_REQUEST_TARGET, requestTarget(request.url).c_str());
    set(CURLOPT_HTTPHEADER, fields.get());
    const bool hasBody = request.body.has_value() || request.method == "POST";
    set(CURLOPT_POSTFIELDS, static_cast<const char*>(nullptr));
    set(CURLOPT_HTTPGET, 1L);  // Takes back NOBODY and POST, which POSTFIELDS implies even here.
    if (request.method == "HEAD") {
      set(CURLOPT_NOBODY, 1L);
    } else if (hasBody) {
      set(CURLOPT_POST, 1L);
      set(CURLOPT_POSTFIELDSIZE_LARGE,
          static_cast<curl_off_t>(request.body ? request.body->size() : 0));
      set(CURLOPT_POSTFIELDS, request.body ? request.body->data() : "");
    }
    set(CURLOPT_CUSTOMREQUEST, request.method.c_str());
    // On a kept connection that the peer drops, libcurl would silently send it a second time.
    set(CURLOPT_FRESH_CONNECT, hasBody || request.sendOnce || request.progress ? 1L : 0L);
    set(CURLOPT_FORBID_REUSE, isLengthMisstated(request) ? 1L : 0L);
    tell_ = request.progress ? &request.progress : nullptr;
    addressTold_ = false;
    set(CURLOPT_OPENSOCKETFUNCTION, tell_ != nullptr ? &Impl::socketWanted : nullptr);
    set(CURLOPT_OPENSOCKETDATA, this);
    set(CURLOPT_PREREQFUNCTION, tell_ != nullptr ? &Impl::connected : nullptr);
    set(CURLOPT_PREREQDATA, this);
  }

  // Nothing when the answer is there.
  std::optional<Trouble> run(const TransferLimits& limits, const std::atomic<bool>& abandoned,
                             const std::stop_token& stop) {
    if (curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK) {
      return troubleOf(CURLE_FAILED_INIT);
    }
    const auto detach = [this](CURL* handle) { curl_multi_remove_handle(multi_.get(), handle); };
    const std::unique_ptr<CURL, decltype(detach)> attached(easy_.get(), detach);
    const Clock::time_point start = Clock::now();
    Clock::time_point lastByte = start;
    for (;;) {
      int running = 0;
      if (curl_multi_perform(multi_.get(), &running) != CURLM_OK) {
        return troubleOf(CURLE_FAILED_INIT);
      }
      // As soon as they are there, for other requests, and also of an answer that is never whole.
      cookies_->takeBack();
      if (running == 0) {
        break;
      }
      const Clock::time_point now = Clock::now();
      const Clock::time_point end = std::min(lastByte + limits.idle, limits.deadline);
      if (abandoned || stop.stop_requested()) {
        return Trouble{TransferFailureKind::GivenUp, "Given up before the answer was complete"};
      }
      if (now >= end) {
        return timeout(std::chrono::floor<milliseconds>(now - start), now >= limits.deadline);
      }
      const auto wait = std::chrono::ceil<milliseconds>(end - now).count();
      int readySockets = 0;
      curl_multi_poll(multi_.get(), nullptr, 0,
                      static_cast<int>(std::min<milliseconds::rep>(wait, INT_MAX)), &readySockets);
      if (readySockets > 0) {
        lastByte = Clock::now();
      }
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
    const CURLcode code = message != nullptr && message->msg == CURLMSG_DONE ? message->data.result
                                                                             : CURLE_FAILED_INIT;
    return code == CURLE_OK ? std::nullopt : std::optional(troubleOf(code));
  }

  Trouble troubleOf(CURLcode code) {
    if (!tooLarge_.empty()) {
      return {TransferFailureKind::TooLarge, tooLarge_};
    }
    long osError = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &osError);
    // What runs out then is libcurl's own room for one line.
    const char* text = errorText_.front() != '\0'    ? errorText_.data()
                       : code == CURLE_OUT_OF_MEMORY ? "A line of the head is too long"
                                                     : curl_easy_strerror(code);
    return {failureKind(code, osError), text};
  }

  Trouble timeout(milliseconds sinceStart, bool isDeadline) {
    long sent = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_REQUEST_SIZE, &sent);
    return {TransferFailureKind::TimedOut,
            sent == 0    ? fmt::format("No connection within {} ms", sinceStart.count())
            : isDeadline ? fmt::format("Not complete within {} ms", sinceStart.count())
                         : fmt::format("No byte for {} ms", limits_->idle.count())};
  }

  // With the address that the name of the host led to, where libcurl got as far as that.
  TransferFailure failureAtPeer(const Url& url, const Trouble& trouble) {
    TransferFailure failure = failureAt(url, trouble.kind, trouble.words);
    const char* ip = nullptr;
    curl_easy_getinfo(easy_.get(), CURLINFO_PRIMARY_IP, &ip);
    if (ip != nullptr && *ip != '\0' && url.host() != ip) {
      failure.address += fmt::format(" ({})", ip);
    }
    return failure;
  }

  [[nodiscard]] std::uint64_t bytesReceived() {
    long head = 0;
    curl_off_t body = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_HEADER_SIZE, &head);
    curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_DOWNLOAD_T, &body);
    return static_cast<std::uint64_t>(head) + static_cast<std::uint64_t>(body);
  }

  // The callbacks return another number than they got to fail the transfer.
  static std::size_t headerArrived(const char* data, std::size_t size, std::size_t count,
                                   void* self) noexcept {
    return static_cast<Impl*>(self)->addHeaderLine({data, size * count}) ? size * count : 0;
  }
  static std::size_t bodyArrived(const char* data, std::size_t size, std::size_t count,
                                 void* self) noexcept {
    return static_cast<Impl*>(self)->addBody({data, size * count}) ? size * count : 0;
  }

  // libcurl asks for a socket once it knows an address, and again for each further one it tries.
  static curl_socket_t socketWanted(void* self, curlsocktype, curl_sockaddr* peer) noexcept {
    static_cast<Impl*>(self)->addressReached(*peer);
    return ::socket(peer->family, peer->socktype | SOCK_CLOEXEC, peer->protocol);
  }
  static int connected(void* self, char* peerAddress, char* localAddress, int, int) noexcept {
    (*static_cast<Impl*>(self)->tell_)(
        {ConnectionStage::Reached::Connection, peerAddress, localAddress});
    return CURL_PREREQFUNC_OK;
  }

  void addressReached(const curl_sockaddr& peer) {
    std::array<char, NI_MAXHOST> text{};
    if (!addressTold_ && getnameinfo(&peer.addr, peer.addrlen, text.data(), text.size(), nullptr, 0,
                                     NI_NUMERICHOST) == 0) {
      addressTold_ = true;
      (*tell_)({ConnectionStage::Reached::Address, text.data()});
    }
  }

  bool addHeaderLine(std::string_view line) {
    // Interim answers and trailers count, too: they can be as endless as the head itself.
    headerSize_ += line.size();
    if (headerSize_ > limits_->maximumHeaderSize) {
      tooLarge_ = fmt::format("The head is larger than {} bytes", limits_->maximumHeaderSize);
      return false;
    }
    const std::size_t colon = line.find(':');
    if (isSameFieldName(line.substr(0, colon), "Set-Cookie")) {
      cookies_->noteSetCookie(line.substr(std::min(colon + 1, line.size())));
    }
    if (line.starts_with("HTTP/")) {
      answer_.headers.clear();
      inHead_ = true;
    } else if (trimmed(line).empty()) {
      inHead_ = false;
    } else if (inHead_ && (line.front() == ' ' || line.front() == '\t')) {
      if (!answer_.headers.empty()) {  // A continued value (RFC 9112 section 5.2).
        answer_.headers.back().second.append(" ").append(trimmed(line));
      }
    } else if (inHead_ && colon != std::string_view::npos) {
      answer_.headers.emplace_back(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
    return true;
  }

  bool addBody(std::string_view piece) {
    std::string& body = answer_.body;
    if (piece.size() > limits_->maximumBodySize - body.size()) {
      tooLarge_ = fmt::format("The body is larger than {} bytes", limits_->maximumBodySize);
      return false;
    }
    if (body.empty()) {
      body.reserve(kUsualBodySize);
    }
    body.append(piece);
    return true;
  }

  const TransferLimits* limits_ = nullptr;
  TransferAnswer answer_;
  std::size_t headerSize_ = 0;
  bool inHead_ = false;
  // Who hears of the stages; null when nobody does. Valid while a transfer runs.
  const std::function<void(const ConnectionStage&)>* tell_ = nullptr;
  bool addressTold_ = false;
  // Says which limit a callback found exceeded.
  std::string tooLarge_;
  // libcurl writes into it for as long as the handle lives.
  std::array<char, CURL_ERROR_SIZE> errorText_{};
  // The multi handle, which owns the connections, is cleaned up last.
  std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_{nullptr, &curl_multi_cleanup};
  std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy_{nullptr, &curl_easy_cleanup};
  std::optional<CookieEngine> cookies_;  // of `easy_`
};

CurlTransfer::CurlTransfer(CookieStorage& cookies) : impl_(std::make_unique<Impl>(cookies)) {}
CurlTransfer::~CurlTransfer() = default;

TransferOutcome CurlTransfer::perform(const UrlRequest& request, const TransferLimits& limits,
                                      const std::atomic<bool>& abandoned) {
  return impl_->perform(request, limits, abandoned);
}

void CurlTransfer::wakeUp() { impl_->wakeUp(); }

}  // namespace veltramoor
