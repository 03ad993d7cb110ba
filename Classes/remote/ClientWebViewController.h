// The BitTorrent client's own web interface inside the application.
#pragma once

#include "shell/WebViewController.h"

namespace veltramoor {

/// As the "Remote UI" tab, and as the page that tests the remote settings.
class ClientWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  enum class OpenedFrom { TabBar, RemoteSettings };

  ClientWebViewController(const std::optional<Url>& url, OpenedFrom openedFrom);

  void viewDidLoad() override;
  void viewWillAppear() override;
  void viewDidAppear() override;
  void initializeWebView(std::optional<std::string> html) override;
  void webViewDidStartLoad() override {}
  void webViewDidFinishLoad() override;
  void didFailLoadWithError(const QString& error) override;

  /// The interface's address, credentials included; none while no client is set up.
  [[nodiscard]] const std::optional<Url>& url() const { return url_; }

 private:
  [[nodiscard]] std::optional<Url> pageUrl() const override { return url_; }

  std::optional<Url> url_;
  OpenedFrom openedFrom_;
};

}  // namespace veltramoor
