// A torrent's details page.
#pragma once

#include "shell/pages/WebViewController.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Its back button leads through the web view's history, and past that once more to the page it was
/// opened for.
class TorrentWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  /// Fetches the details page at `url` of the torrent in row `tag` of `target`, and returns its
  /// screen when the page is there, has failed, or was given up on. The main thread waits for it;
  /// the window goes on painting meanwhile. Null when the program is ending.
  [[nodiscard]] static std::shared_ptr<TorrentWebViewController> open(
      const std::optional<Url>& url, int tag, std::shared_ptr<OpeningList> target);

  /// Loads `html` into the present web view.
  void initializeWebView(std::optional<std::string> html) override;
  void viewDidLoad() override;
  /// From a load that failed, back to the page it began at.
  void goBack() override;
  void webViewDidFinishLoad() override;
  void didFailLoadWithError(const QString& error) override;
  /// Sends what the link leads to, as the toolbar sends the torrent: under this torrent's name or,
  /// on a page that this torrent's led to, under the link's own.
  void didTapMagnetLink(const QString& link) override;
  void didTapImdbButton();

  /// The torrent's page in the movie database.
  [[nodiscard]] const std::optional<std::string>& imdb() const { return imdb_; }
  [[nodiscard]] int tag() const { return tag_; }
  [[nodiscard]] int stackCounter() const { return stackCounter_; }

 private:
  TorrentWebViewController(const std::optional<Url>& url, int tag,
                           std::shared_ptr<OpeningList> target, std::optional<Torrent> torrent);

  /// The page that has come, or why none has.
  struct Fetched;
  [[nodiscard]] static std::optional<Fetched> fetchDetails(const std::optional<Url>& url);
  void take(Fetched fetched);
  void openAgain() override;
  void updateButtons();
  void sendTorrent();

  std::optional<std::string> imdb_;
  int tag_;
  // Whether the page that finished last has one before it.
  bool hasPrevious_ = false;
  // What the row held when the page was asked for.
  std::optional<Torrent> torrent_;
};

}  // namespace veltramoor
