// Keeps the pages of one profile from servers that are none of their business.
#pragma once

#include <QString>
#include <QWebEngineUrlRequestInterceptor>
#include <functional>
#include <utility>

#include "web/PageReach.h"

namespace veltramoor {

/// Asked by the engine, on the main thread, before it sends what a page, its frames, workers and
/// WebSockets ask for.
///
/// Where a server redirects a request, the engine asks again, but has already set out for the new
/// address: its answer is kept from the page, the request itself may arrive. Pages and frames are
/// therefore judged before that, when they are led elsewhere; a redirected call of a script is not.
/// Nor are connections that are opened ahead of a request and carry nothing. WebRTC and
/// WebTransport do not pass here either: WebView.qml takes them from the pages.
class ReachGuard : public QWebEngineUrlRequestInterceptor {
  Q_OBJECT

 public:
  /// `reach`: what holds at that moment.
  explicit ReachGuard(std::function<PageReach()> reach) : reach_(std::move(reach)) {}

  void interceptRequest(QWebEngineUrlRequestInfo& info) override {
    if (!mayReach(info.requestUrl(), reach_())) {
      info.block(true);
    }
  }

 private:
  std::function<PageReach()> reach_;
};

}  // namespace veltramoor
