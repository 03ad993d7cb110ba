#include "platform/UrlLoading.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <mutex>

#include "platform/CookieStorage.h"
#include "platform/CurlTransfer.h"
#include "platform/ExchangeLog.h"
#include "platform/RedirectRules.h"

namespace veltramoor {
namespace {

// Keeps sums of intervals far from the clock's own range.
constexpr std::chrono::milliseconds kLongestInterval = std::chrono::hours(24);

bool canBeSent(const UrlRequest& request) {
  constexpr std::string_view kLineBreakers("\r\n\0", 3);
  const bool hasMethod =
      !request.method.empty() && std::all_of(request.method.begin(), request.method.end(),
                                             [](char c) { return c > ' ' && c < '\x7f'; });
  return request.url.isHttp() && hasMethod &&
         std::all_of(request.headers.begin(), request.headers.end(), [=](const auto& field) {
           const auto& [name, value] = field;
           return !name.empty() && name.find_first_of(kLineBreakers) == std::string::npos &&
                  name.find_first_of(":;") == std::string::npos &&
                  value.find_first_of(kLineBreakers) == std::string::npos;
         });
}

}  // namespace

std::optional<std::string> UrlResponse::header(std::string_view name) const {
  const auto found = std::find_if(headers.begin(), headers.end(), [name](const auto& field) {
    return isSameFieldName(field.first, name);
  });
  return found == headers.end() ? std::nullopt : std::optional(found->second);
}

class UrlLoading::Impl {
 public:
  Impl(CookieStorage& cookies, const UrlLoadingLimits& limits)
      : cookies_(cookies), limits_(limits) {}

  UrlResult exchange(UrlRequest request) {
    std::chrono::milliseconds interval = request.timeoutInterval.value_or(limits_.timeoutInterval);
    if (interval.count() <= 0) {
      interval = limits_.timeoutInterval;
    }
    interval = std::min(interval, kLongestInterval);
    const TransferLimits limits{interval, deadlineOf(request, interval), limits_.maximumBodySize,
                                limits_.maximumHeaderSize};
    const Lease transfer(*this);
    const std::stop_callback wakeUp(request.stop, [&transfer] { transfer->wakeUp(); });
    for (int redirects = 0; redirects <= limits_.maximumRedirects; ++redirects) {
      TransferOutcome outcome = loggedHop(transfer, request, limits);
      std::optional<TransferAnswer>& answer = outcome.answer;
      if (!answer) {
        return {.failure = std::move(outcome.failure)};
      }
      std::optional<UrlRequest> next;
      if (answer->redirectTarget && request.followsRedirects) {
        next = redirectedRequest(request, answer->statusCode, *answer->redirectTarget);
      }
      if (!next) {
        return {.response = UrlResponse{answer->statusCode, std::move(answer->headers), request.url,
                                        request.method},
                .data = std::move(answer->body)};
      }
      request = std::move(*next);
    }
    return {.failure = failureAt(request.url, TransferFailureKind::TooManyRedirects,
                                 fmt::format("More than {} redirects", limits_.maximumRedirects))};
  }

  void saveCookies() { cookies_.saveIfChanged(); }

  void resume() { abandoned_ = false; }

  void setExchangeLog(ExchangeLog log) {
    auto shared = log ? std::make_shared<const ExchangeLog>(std::move(log)) : nullptr;
    const std::scoped_lock lock(logMutex_);
    log_ = std::move(shared);
  }

  void abandonAll() {
    abandoned_ = true;
    const std::scoped_lock lock(mutex_);
    for (const auto& transfer : transfers_) {
      transfer->wakeUp();
    }
  }

 private:
  // A transfer for as long as one exchange lasts. The last one given back goes out first, so that
  // its connections are the freshest.
  class Lease {
   public:
    explicit Lease(Impl& owner) : owner_(owner) {
      const std::scoped_lock lock(owner_.mutex_);
      if (owner_.idle_.empty()) {
        owner_.transfers_.push_back(std::make_unique<CurlTransfer>(owner_.cookies_));
        owner_.idle_.push_back(owner_.transfers_.back().get());
      }
      transfer_ = owner_.idle_.back();
      owner_.idle_.pop_back();
    }
    ~Lease() {
      const std::scoped_lock lock(owner_.mutex_);
      owner_.idle_.push_back(transfer_);
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    CurlTransfer* operator->() const { return transfer_; }

   private:
    Impl& owner_;
    CurlTransfer* transfer_;
  };

  [[nodiscard]] std::chrono::steady_clock::time_point deadlineOf(
      const UrlRequest& request, std::chrono::milliseconds interval) const {
    const auto cap = std::chrono::steady_clock::now() + interval * limits_.hardCapFactor;
    return request.deadline ? std::min(cap, *request.deadline) : cap;
  }

  TransferOutcome hop(const Lease& transfer, const UrlRequest& request,
                      const TransferLimits& limits) {
    if (abandoned_ || request.stop.stop_requested()) {
      return {.failure = failureAt(request.url, TransferFailureKind::GivenUp,
                                   "Given up before it was sent")};
    }
    if (request.deadline && std::chrono::steady_clock::now() >= *request.deadline) {
      return {.failure = failureAt(request.url, TransferFailureKind::TimedOut,
                                   "The time was up before it was sent")};
    }
    if (!canBeSent(request)) {
      return {.failure = failureAt(request.url, TransferFailureKind::Other,
                                   "Not a request that HTTP can carry")};
    }
    return transfer->perform(request, limits, abandoned_);
  }

  TransferOutcome loggedHop(const Lease& transfer, const UrlRequest& request,
                            const TransferLimits& limits) {
    const auto start = std::chrono::steady_clock::now();
    TransferOutcome outcome = hop(transfer, request, limits);
    if (const auto log = exchangeLog()) {
      ExchangeRecord record{.method = request.method, .address = addressForLog(request.url)};
      if (outcome.answer) {
        record.statusCode = outcome.answer->statusCode;
      }
      record.failure = outcome.failure;
      record.bytesReceived = outcome.bytesReceived;
      record.duration =
          std::chrono::round<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
      (*log)(record);
    }
    return outcome;
  }

  std::shared_ptr<const ExchangeLog> exchangeLog() {
    const std::scoped_lock lock(logMutex_);
    return log_;
  }

  CookieStorage& cookies_;
  const UrlLoadingLimits limits_;
  std::mutex logMutex_;
  std::shared_ptr<const ExchangeLog> log_;
  std::atomic<bool> abandoned_{false};
  std::mutex mutex_;
  std::vector<std::unique_ptr<CurlTransfer>> transfers_;
  std::vector<CurlTransfer*> idle_;
};

UrlLoading::UrlLoading(CookieStorage& cookies, UrlLoadingLimits limits)
    : impl_(std::make_unique<Impl>(cookies, limits)) {}

UrlLoading::~UrlLoading() = default;

UrlLoading& UrlLoading::sharedInstance() {
  static UrlLoading instance(CookieStorage::sharedInstance());
  return instance;
}

UrlResult UrlLoading::send(const UrlRequest& request) {
  UrlResult result = impl_->exchange(request);
  impl_->saveCookies();
  return result;
}

void UrlLoading::abandonAll() { impl_->abandonAll(); }

void UrlLoading::resume() { impl_->resume(); }

void UrlLoading::setExchangeLog(ExchangeLog log) { impl_->setExchangeLog(std::move(log)); }

}  // namespace veltramoor
