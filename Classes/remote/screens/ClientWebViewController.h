// The BitTorrent client's own web interface inside the application.
#pragma once

#include "shell/pages/WebViewController.h"

namespace veltramoor {

/// As the "Remote UI" tab, and as the page that tests the remote settings.
class ClientWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  enum class OpenedFrom { TabBar, RemoteSettings };

  /// `url`: the interface's address, credentials included; none while no client is set up.
  ClientWebViewController(const std::optional<Url>& url, OpenedFrom openedFrom);

  void viewDidLoad() override;
  void viewWillAppear() override;
  void viewDidAppear() override;
  void initializeWebView(std::optional<std::string> html) override;
  /// The interface stays at its own server.
  bool shouldStartLoadWithRequest(const QUrl& url, int navigationType) override;
  void webViewDidStartLoad() override {}
  void webViewDidFinishLoad() override { endLoad(true); }
  void didFailLoadWithError(const QString&) override { endLoad(false); }
  void webViewWasStopped() override {}

 signals:
  /// The test of the settings has failed, the person knows, and this screen has gone.
  void testFailed();

 private:
  void leaveAfterFailure();
  void openAgain() override { viewDidAppear(); }

  // Stands for the settings that the page was asked for with; no page of other ones is shown.
  QString settings_;
  OpenedFrom openedFrom_;
};

}  // namespace veltramoor
