// The site's own home page, as a tab.
#pragma once

#include "shell/WebViewController.h"

namespace veltramoor {

/// Fetched afresh on every visit, and shown as it is.
class SiteWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  SiteWebViewController(const std::optional<Url>& url,
                        std::shared_ptr<AllListViewController> target);

  void viewDidLoad() override {}
  void viewWillAppear() override;
  void initializeWebView(std::optional<std::string> html) override;
  bool shouldStartLoadWithRequest(const QUrl&, int) override { return true; }
  void loadRequest(const QUrl&) override {}
  void webViewDidStartLoad() override {}
  void webViewDidFinishLoad() override { endLoad(true); }
  void didFailLoadWithError(const QString&) override { endLoad(false); }
  void webViewWasStopped() override {}

 private:
  [[nodiscard]] std::optional<Url> pageUrl() const override { return url_; }
  std::optional<Url> url_;
};

}  // namespace veltramoor
