// The site's forum, as a tab that does not leave it.
#pragma once

#include <chrono>
#include <vector>

#include "shell/pages/WebViewController.h"

namespace veltramoor {

class ForumWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  ForumWebViewController(std::optional<Url> url, std::shared_ptr<OpeningList> target);

  /// Fetches the front page.
  void viewDidLoad() override;
  void viewWillAppear() override;
  void initializeWebView(std::optional<std::string> html) override;
  /// A link that leads away from the forum leads to its front page instead.
  bool shouldStartLoadWithRequest(const QUrl& url, int navigationType) override;
  void loadRequest(const QUrl&) override {}
  void webViewDidStartLoad() override {}
  void webViewDidFinishLoad() override { endLoad(true); }
  void didFailLoadWithError(const QString&) override { endLoad(false); }
  void webViewWasStopped() override {}

 private:
  void openAgain() override { viewDidLoad(); }
  [[nodiscard]] bool mayStartAgain();

  // Fetches of the front page that a refused load led to, since the last touch.
  std::vector<std::chrono::steady_clock::time_point> restarts_;
};

}  // namespace veltramoor
