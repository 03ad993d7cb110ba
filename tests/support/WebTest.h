// Web pages in the real window, with the real engine.
#pragma once

#include <QFile>
#include <map>
#include <mutex>

#include "platform/CookieStorage.h"
#include "shell/overlay/LoadingIndicator.h"
#include "shell/pages/WebViewController.h"
#include "support/Application.h"
#include "support/RawServer.h"

namespace veltramoor::test {

/// A server of pages by path; everything else is not found.
class PageServer {
 public:
  using Pages = std::map<std::string, std::string>;
  explicit PageServer(Pages pages = {}) : pages_(std::move(pages)) {}

  void set(const std::string& path, std::string page) {
    const std::scoped_lock lock(mutex_);
    pages_[path] = std::move(page);
  }
  [[nodiscard]] std::string host() const { return server_.hostAndPort(); }
  [[nodiscard]] std::string url(std::string_view path = "/") const { return server_.url(path); }
  [[nodiscard]] std::size_t hits(std::string_view path) const { return server_.hits(path); }
  [[nodiscard]] std::size_t hits() const { return server_.hits(); }
  /// The newest request for `path`.
  [[nodiscard]] RecordedRequest last(std::string_view path) const {
    RecordedRequest found;
    for (const RecordedRequest& request : server_.requests()) {
      found = request.target == path ? request : found;
    }
    return found;
  }
  [[nodiscard]] int port() const { return server_.port(); }

 private:
  std::mutex mutex_;
  Pages pages_;
  RawServer server_{[this](const RecordedRequest& request) -> RawReply {
    const std::scoped_lock lock(mutex_);
    const auto page = pages_.find(request.target);
    if (page == pages_.end()) {
      return RawServer::response(404, "<p>nothing here</p>", {"Content-Type: text/html"});
    }
    return page->second.starts_with("HTTP/")
               ? page->second
               : RawServer::response(200, page->second, {"Content-Type: text/html; charset=utf-8"});
  }};
};

class WebTest : public ScreenTest {
 protected:
  WebTest() {
    configuration_ = SiteConfiguration::current();
    configuration_.siteHost = pages_.host();
    SiteConfiguration::setCurrent(configuration_);
  }

  /// Waits until `screen` has ended `count` loads since it was watched.
  void watch(WebViewController& screen) {
    loads_ = 0;
    QObject::connect(&screen, &WebViewController::loadEnded, [this](bool good) {
      ++loads_;
      lastGood_ = good;
    });
  }
  [[nodiscard]] bool waitForLoads(int count) {
    const bool there = waitFor([&] { return loads_ >= count; });
    EXPECT_TRUE(there) << loads_ << " loads ended";
    QCoreApplication::processEvents();
    return there;
  }

  /// The value of `source` in the page on show.
  static std::string valueOf(const WebViewController& screen, const std::string& source) {
    auto value = std::make_shared<std::optional<std::string>>();
    screen.myWebView()->runScript(QString::fromStdString(source), [value](const QVariant& result) {
      *value = result.toString().toStdString();
    });
    EXPECT_TRUE(waitFor([&] { return value->has_value(); })) << source;
    return value->value_or("");
  }
  static bool waitForValue(const WebViewController& screen, const std::string& source,
                           const std::string& expected) {
    std::string value;
    const bool there = waitFor([&] { return (value = valueOf(screen, source)) == expected; });
    EXPECT_TRUE(there) << source << " is " << value;
    return there;
  }
  /// Taps the middle of the page's element `id`, once the page has been painted: the engine drops
  /// what comes before.
  static void tap(const Application& app, const WebViewController& screen, const std::string& id) {
    ASSERT_TRUE(waitForValue(screen, "performance.getEntriesByType('paint').length > 0", "true"));
    const QString place = QString::fromStdString(
        valueOf(screen, "var r = document.getElementById('" + id +
                            "').getBoundingClientRect(); (r.left + r.width / 2) + ',' + (r.top + "
                            "r.height / 2)"));
    QQuickItem* view = app.item("webView");
    ASSERT_NE(view, nullptr);
    const double zoom = view->property("zoomFactor").toDouble();
    app.click(view, QPointF(place.section(QLatin1Char(','), 0, 0).toDouble(),
                            place.section(QLatin1Char(','), 1, 1).toDouble()) *
                        zoom);
  }
  /// Taps it until the page, whose script keeps the id of what was tapped in `tapped`, has heard:
  /// the engine drops what comes before it has drawn the page.
  [[nodiscard]] static bool tapUntilHeard(const Application& app, const WebViewController& screen,
                                          const std::string& id) {
    for (int tries = 0; tries < 10; ++tries) {
      tap(app, screen, id);
      for (const QDeadlineTimer second(1000); !second.hasExpired();) {
        if (valueOf(screen, "tapped") == id) {
          return true;
        }
      }
    }
    return false;
  }
  [[nodiscard]] static bool isOverlayShown() { return LoadingIndicator::current().isShown(); }

  PageServer pages_;
  SiteConfiguration configuration_;
  int loads_ = 0;
  bool lastGood_ = false;
};

}  // namespace veltramoor::test
