// The site's own home page, as a tab.
#pragma once

#include "shell/pages/WebViewController.h"

namespace veltramoor {

/// Fetched afresh on every visit, and shown as it is.
class SiteWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  SiteWebViewController(std::optional<Url> url, std::shared_ptr<OpeningList> target);

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
  void openAgain() override { viewWillAppear(); }
};

}  // namespace veltramoor
