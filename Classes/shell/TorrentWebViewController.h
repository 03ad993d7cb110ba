// A torrent's details page.
#pragma once

#include "shell/WebViewController.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Its back button leads through the web view's history, and past that once more to the page it was
/// opened for. Made on the main thread, which waits in the constructor until the page is there; the
/// window goes on painting meanwhile.
class TorrentWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  /// `url`: the details page; `tag`: the torrent's row in `target`.
  TorrentWebViewController(const std::optional<Url>& url, int tag,
                           std::shared_ptr<AllListViewController> target);

  /// Loads `html` into the present web view.
  void initializeWebView(std::optional<std::string> html) override;
  void viewDidLoad() override;
  /// From a load that failed, back to the page it began at.
  void goBack() override;
  void webViewDidFinishLoad() override;
  void didFailLoadWithError(const QString& error) override;
  void didTapImdbButton();

  /// The torrent's page in the movie database.
  [[nodiscard]] const std::optional<std::string>& imdb() const { return imdb_; }
  [[nodiscard]] int tag() const { return tag_; }
  [[nodiscard]] int stackCounter() const { return stackCounter_; }

 private:
  [[nodiscard]] std::optional<Url> pageUrl() const override { return url_; }
  void updateButtons();
  void sendTorrent();

  std::optional<Url> url_;
  std::optional<std::string> imdb_;
  int tag_;
  // Whether the page that finished last has one before it.
  bool hasPrevious_ = false;
  // What the row held when it was opened: a page that arrives meanwhile may replace the rows.
  std::optional<Torrent> torrent_;
};

}  // namespace veltramoor
