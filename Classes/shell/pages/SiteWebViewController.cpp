#include "shell/pages/SiteWebViewController.h"

#include "platform/SiteConfiguration.h"
#include "shell/pages/OpeningList.h"
#include "site/HttpRequest.h"

namespace veltramoor {

SiteWebViewController::SiteWebViewController(std::optional<Url> url,
                                             std::shared_ptr<OpeningList> target)
    : WebViewController(std::move(url), std::move(target)) {
  const QString host = QString::fromStdString(SiteConfiguration::current().siteHost);
  setTitle(host);
  tabBarItem()->set(host, QStringLiteral("tabbar-web.png"), 0);
  dropAtLogout();
}

void SiteWebViewController::viewWillAppear() {
  appearWithNavigationBarHidden(true);
  showLoading(0);
  setUrl(siteHomeUrl());
  fetch(url(), httpRequestClass<HttpRequest>());
}

void SiteWebViewController::initializeWebView(std::optional<std::string> html) {
  result_ = std::move(html);
  WebPage& page = makeWebView();
  hideLoading();
  showLoading(-22);
  show(page, result_, url());
}

}  // namespace veltramoor
