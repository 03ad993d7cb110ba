#include "shell/SiteWebViewController.h"

#include "lists/AllListViewController.h"
#include "platform/SiteConfiguration.h"
#include "site/HttpRequest.h"

namespace veltramoor {

SiteWebViewController::SiteWebViewController(const std::optional<Url>& url,
                                             std::shared_ptr<AllListViewController> target)
    : WebViewController(url, std::move(target)), url_(url) {
  const QString host = QString::fromStdString(SiteConfiguration::current().siteHost);
  setTitle(host);
  tabBarItem()->set(host, QStringLiteral("tabbar-web.png"), 0);
  dropAtLogout();
}

void SiteWebViewController::viewWillAppear() {
  appearWithNavigationBarHidden(true);
  showLoading(0);
  url_ = siteHomeUrl();
  fetch(url_, httpRequestClass<HttpRequest>());
}

void SiteWebViewController::initializeWebView(std::optional<std::string> html) {
  result_ = std::move(html);
  WebPage& page = makeWebView();
  hideLoading();
  showLoading(-22);
  show(page, result_, url_);
}

}  // namespace veltramoor
