#include "demo/DemoSite.h"

#include <fmt/format.h>
#include <strings.h>

#include <charconv>
#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>

#include "demo/HttpFront.h"
#include "demo/SitePages.h"
#include "demo/SpoiltAnswer.h"

namespace veltramoor {
namespace {

constexpr std::size_t kLogLength = 10'000;

std::string firstOf(const std::vector<std::pair<std::string, std::string>>& pairs,
                    std::string_view name, bool withCase) {
  for (const auto& [key, value] : pairs) {
    if (key.size() == name.size() &&
        (withCase ? key == name : ::strncasecmp(key.data(), name.data(), name.size()) == 0)) {
      return value;
    }
  }
  return {};
}

int numberIn(const std::string& text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

SiteAnswer plain(std::string text, int status = 200) {
  SiteAnswer answer;
  answer.status = status;
  answer.contentType = "text/plain; charset=utf-8";
  answer.body = std::move(text);
  return answer;
}

nlohmann::json asJson(const DemoRequest& request) {
  auto entry = nlohmann::json{{"method", request.method},
                              {"target", request.target},
                              {"body", request.body},
                              {"headers", nlohmann::json::array()},
                              {"cookies", nlohmann::json::array()}};
  for (const auto& [name, value] : request.headers) {
    entry["headers"].push_back({name, value});
  }
  for (const auto& [name, value] : request.cookies) {
    entry["cookies"].push_back({name, value});
  }
  return entry;
}

}  // namespace

std::string DemoRequest::header(std::string_view name) const {
  return firstOf(headers, name, false);
}
std::string DemoRequest::cookie(std::string_view name) const {
  return firstOf(cookies, name, true);
}

class DemoSite::Impl {
 public:
  explicit Impl(const DemoSiteOptions& options)
      : pages(options),
        front(options.port, [this](const SiteRequest& request) { return answer(request); }) {}

  SiteAnswer answer(const SiteRequest& request) {
    if (request.path.starts_with("/_demo/")) {
      return control(request);
    }
    {
      const std::lock_guard lock(logMutex);
      log.push_back(request.seen);
      if (log.size() > kLogLength) {
        log.pop_front();
      }
    }
    return spoiltAnswer(pages, request, faults.strike(request.path));
  }

  SiteAnswer control(const SiteRequest& request) {
    const std::string what = request.seen.method + " " + request.path;
    if (what == "GET /_demo/log") return logAsJson();
    if (what == "POST /_demo/faults") return setFault(request);
    if (what == "POST /_demo/faults/clear") {
      faults.clear();
    } else if (what == "POST /_demo/log/clear") {
      const std::lock_guard lock(logMutex);
      log.clear();
    } else if (what == "POST /_demo/notice") {
      pages.setNotice(request.param("text"));
    } else if (what == "POST /_demo/login") {
      pages.setLoginAnswer(request.param("answer") == "page" ? LoginAnswer::SettingsPage
                                                             : LoginAnswer::RedirectToSettings);
    } else if (what == "POST /_demo/sessions/expire") {
      pages.expireSessions();
    } else {
      return plain("no such control\n", 404);
    }
    return plain("done\n");
  }

  SiteAnswer setFault(const SiteRequest& request) {
    const auto kind = faultKindNamed(request.param("fault"));
    if (!kind || !request.param("path").starts_with('/')) {
      return plain("needs path=/... and a known fault\n", 400);
    }
    faults.set(request.param("path"),
               {.kind = *kind,
                .delay = std::chrono::milliseconds{numberIn(request.param("delay"))},
                .times = numberIn(request.param("times"))});
    return plain("done\n");
  }

  SiteAnswer logAsJson() {
    auto entries = nlohmann::json::array();
    {
      const std::lock_guard lock(logMutex);
      for (const DemoRequest& request : log) {
        entries.push_back(asJson(request));
      }
    }
    // What clients send need not be UTF-8.
    SiteAnswer answer =
        plain(entries.dump(1, ' ', false, nlohmann::json::error_handler_t::replace));
    answer.contentType = "application/json";
    return answer;
  }

  SitePages pages;
  Faults faults;
  std::mutex logMutex;
  std::deque<DemoRequest> log;
  HttpFront front;  // last: its threads use all of the above
};

DemoSite::DemoSite(const DemoSiteOptions& options) : impl_(std::make_unique<Impl>(options)) {}
DemoSite::~DemoSite() = default;

int DemoSite::port() const { return impl_->front.port(); }
std::string DemoSite::host() const { return fmt::format("127.0.0.1:{}", port()); }
std::string DemoSite::url(std::string_view path) const {
  return fmt::format("http://{}{}", host(), path);
}
const Catalogue& DemoSite::catalogue() const { return impl_->pages.catalogue(); }

void DemoSite::setFault(const std::string& path, const Fault& fault) {
  impl_->faults.set(path, fault);
}
void DemoSite::clearFaults() { impl_->faults.clear(); }

std::vector<DemoRequest> DemoSite::log() const {
  const std::lock_guard lock(impl_->logMutex);
  return {impl_->log.begin(), impl_->log.end()};
}
void DemoSite::clearLog() {
  const std::lock_guard lock(impl_->logMutex);
  impl_->log.clear();
}

void DemoSite::setNotice(const std::string& text) { impl_->pages.setNotice(text); }
void DemoSite::setLoginAnswer(LoginAnswer answer) { impl_->pages.setLoginAnswer(answer); }
void DemoSite::expireSessions() { impl_->pages.expireSessions(); }

}  // namespace veltramoor
