// The table screen that every torrent list is built on; used as it is, the "Recent" list.
#pragma once

#include <QImage>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lists/HeaderView.h"
#include "lists/ImageCache.h"
#include "lists/ListFetching.h"
#include "lists/ListLayout.h"
#include "lists/ListNotice.h"
#include "lists/ListSending.h"
#include "lists/LoadMoreItemView.h"
#include "lists/TorrentItemTableViewCell.h"
#include "lists/TorrentMenu.h"
#include "lists/TorrentTableModel.h"
#include "lists/listings/Listing.h"
#include "platform/OperationQueue.h"
#include "shell/overlay/Wait.h"
#include "shell/pages/OpeningList.h"
#include "toolkit/TableView.h"
#include "toolkit/TextField.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

enum class TableViewStyle { Plain };

/// Shows the pages of a listing, one after another, and sends torrents to the person's client. Page
/// fetches and sends share a queue of one, so they never overlap. Main thread only.
class AllListViewController : public veltramoor::ViewController,
                              public HeaderViewDelegate,
                              public OpeningList {
  Q_OBJECT
  Q_PROPERTY(veltramoor::TorrentTableModel* rows READ rows CONSTANT)
  Q_PROPERTY(veltramoor::TableView* tableView READ tableView CONSTANT)
  Q_PROPERTY(veltramoor::HeaderView* headerView READ headerView CONSTANT)
  Q_PROPERTY(veltramoor::LoadMoreItemView* loadMoreItem READ loadMoreItem CONSTANT)
  Q_PROPERTY(veltramoor::TorrentMenu* menu READ menu CONSTANT)
  Q_PROPERTY(QRectF bannerFrame READ bannerFrame NOTIFY layoutChanged)
  Q_PROPERTY(double tableTopInset READ tableTopInset NOTIFY layoutChanged)
  Q_PROPERTY(QString bannerPattern READ bannerPattern NOTIFY layoutChanged)
  Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
  Q_PROPERTY(QString noticeText READ noticeText NOTIFY noticeChanged)
  Q_PROPERTY(QString noticeAction READ noticeAction NOTIFY noticeChanged)
  Q_PROPERTY(veltramoor::TextField* searchBar READ searchBar CONSTANT)
  Q_PROPERTY(QRectF searchBarFrame READ searchBarFrame NOTIFY layoutChanged)
  Q_PROPERTY(bool drawsLoadMoreItem READ drawsLoadMoreItem CONSTANT)

 public:
  static constexpr double kRowHeight = 37;

  explicit AllListViewController(TableViewStyle style);
  ~AllListViewController() override;

  /// Refreshes, where a tap on the header's button would.
  bool perform(KeyCommand command) override {
    const bool refreshes = command == KeyCommand::Reload && headerView_.refreshBtn()->isEnabled();
    if (refreshes) {
      didRefresh();
    }
    return refreshes;
  }
  void viewWillLayout() override { loadView(); }
  /// Fetches page 0 unless a page has arrived before.
  void viewWillAppear() override;
  [[nodiscard]] bool hasBackgroundWork() const override {
    return operationQueue_.operationCount() + imageOperationQueue_.operationCount() > 0;
  }

  /// Queues the fetch of page `page`, from 0.
  virtual void fetchPage(int page);
  /// The page callback; absent after a failed transfer. `trouble`: why a page gave no rows.
  virtual void loadedTorrents(std::optional<std::vector<Torrent>> page,
                              const std::optional<PageTrouble>& trouble = std::nullopt);
  /// Drops what no filter accepts, and remembers the page's last date.
  virtual void filterData(std::vector<Torrent>& page);

  // HeaderViewDelegate
  void didSelectProfile(const std::optional<QString>& username) override;
  void didRefresh() override;
  void didSettings() override;

  void reloadHeaderView();
  /// The send button of the row `tag`.
  Q_INVOKABLE void didTapDownloadButton(int tag);

  // OpeningList
  void resume() override;
  [[nodiscard]] std::optional<Torrent> torrentAt(int row) const override;
  void send(const Torrent& torrent) override;
  void whenSent(QObject* receiver, std::function<void(const std::string& name)> heard) override;

  Q_INVOKABLE void didSelectRowAtIndexPath(int row);
  /// Fills `cell` with what row `row` shows.
  Q_INVOKABLE virtual void cellForRowAtIndexPath(int row,
                                                 veltramoor::TorrentItemTableViewCell* cell);
  /// A touch has begun somewhere on the view.
  Q_INVOKABLE virtual void touchesBegan() {}
  [[nodiscard]] QImage cachedImageForTorrent(const QString& key) { return images_.image(key); }
  /// Lays the screen out for the device's present size.
  void loadView();

  [[nodiscard]] TorrentTableModel* rows() { return &rows_; }
  [[nodiscard]] TableView* tableView() { return &tableView_; }
  [[nodiscard]] HeaderView* headerView() { return &headerView_; }
  [[nodiscard]] LoadMoreItemView* loadMoreItem() { return &loadMoreItem_; }
  [[nodiscard]] TorrentMenu* menu() { return &menu_; }
  [[nodiscard]] QRectF bannerFrame() const { return layout_.banner; }
  [[nodiscard]] double tableTopInset() const { return layout_.tableTopInset; }
  /// Image URL of the pattern behind the banner.
  [[nodiscard]] QString bannerPattern() const;
  /// One line on why the list is empty, or has ended early, and what to do; else "".
  [[nodiscard]] QString notice() const { return notices_.current().whole(); }
  /// The same in two: what is so, and what a tap does about it.
  [[nodiscard]] QString noticeText() const { return notices_.current().text; }
  [[nodiscard]] QString noticeAction() const { return notices_.current().action; }
  /// A tap on that line.
  Q_INVOKABLE virtual void didTapNotice();
  /// Brings the remote settings to the front; to be set before the list appears.
  std::function<void()> showRemoteSettings;
  /// The query field above the table; null for a list without one.
  [[nodiscard]] TextField* searchBar() { return searchBar_; }
  [[nodiscard]] QRectF searchBarFrame() const { return layout_.searchBar; }
  /// Whether the row after the last torrent is drawn as the "load more" item.
  [[nodiscard]] virtual bool drawsLoadMoreItem() const { return true; }

  [[nodiscard]] Listing& listing() const { return *listing_; }
  [[nodiscard]] const ListSending& sending() const { return sending_; }
  [[nodiscard]] bool noMoreTorrents() const { return rows_.noMoreTorrents(); }
  [[nodiscard]] const std::optional<std::string>& lastDate() const { return lastDate_; }
  [[nodiscard]] OperationQueue& operationQueue() { return operationQueue_; }

 signals:
  void layoutChanged();
  void noticeChanged();
  /// After a page has been shown, whether it came or not.
  void pageLoaded(bool arrived);

 protected:
  /// A list over `listing`, never null.
  AllListViewController(std::unique_ptr<Listing> listing, const QString& interfaceFile);

  /// What the overlay says while a page is fetched.
  [[nodiscard]] virtual QString loadingText() const { return tr("Loading..."); }
  /// One line on why a page without rows has none.
  [[nodiscard]] virtual QString emptyText() const {
    return tr("No torrents here. Tap refresh, or choose another category.");
  }
  /// The settings screen of this list.
  [[nodiscard]] virtual std::shared_ptr<ViewController> displaySettings() const;
  /// What the first appearance and a refresh ask for.
  virtual void fetchFirstPage();
  /// Whether pages are under way.
  [[nodiscard]] virtual bool isBusy() const { return fetching_.underWay() > 0; }
  /// Fetches what the first appearance shows, unless it has come or is under way.
  void fetchWhenNeeded();
  /// On show, has pages that have been asked for hold the overlay, the rows and the tabs until one
  /// has come, or the person goes on. Behind another screen they hold nothing.
  void waitForPages();
  [[nodiscard]] bool isWaiting() const { return isBusy() && waits_; }
  /// Gives back what the pages hold.
  void endWait();
  /// The pages under way are for nobody any more.
  void ignorePages() { fetching_.ignoreUnderWay(); }
  /// Makes room for a search bar; not owned.
  void setSearchBar(TextField* bar);
  [[nodiscard]] ListNotice::Tap noticeTap() const { return notices_.current().tap; }
  /// Of the list's pages.
  void setNotice(const ListNotice& notice) { notices_.setOfPages(notice); }
  /// Asks again for what did not come.
  virtual void retry();
  /// Says so when the rows were asked for with other settings than the present ones.
  void tellOfOtherSettings();
  /// What a fetch of the first page asks for now: the rows on show are of these settings.
  void rememberSettings() { rowsAskedFor_ = listing_->firstPageUrl(); }
  /// The next page to arrive replaces the rows.
  void setRefreshed() { refreshed_ = true; }
  /// Empties the list when that page has come.
  void clearRefreshed();
  [[nodiscard]] virtual bool loadMoreTakesTouches() const;

 private:
  /// Queues the fetch of one page with everything that shows that it is under way.
  void fetch(std::optional<Url> url);
  /// The send callback: the torrent's name, absent after a failed send.
  void downloadedFinished(const std::optional<std::string>& name,
                          const std::optional<DiagnosisStep>& failure);
  /// Disables or enables every tab, "More" included.
  void disableTabs(bool disable);
  void goOn();
  void loadingHidden();
  void releaseBehind();
  void openTorrent(int row);
  void imageReady(const std::string& url, const QImage& image);
  void startImageLoad(const QString& url);

  std::unique_ptr<Listing> listing_;
  TorrentTableModel rows_;
  TableView tableView_;
  HeaderView headerView_;
  LoadMoreItemView loadMoreItem_;
  TorrentMenu menu_{*this};
  TextField* searchBar_ = nullptr;
  ListLayout layout_;
  ImageCache images_;
  // For pages of the list, and for a page that opens over it.
  Wait loading_;
  Wait openingPage_;
  ListNotices notices_;
  std::optional<std::string> lastDate_;
  // The latest page's address, and the first page's by the settings that the rows were asked for
  // with.
  std::optional<Url> askedFor_;
  std::optional<Url> rowsAskedFor_;
  bool refreshed_ = false;
  // Whether the person waits for the pages under way.
  bool waits_ = false;
  // Whether a torrent's page is being waited for.
  bool opening_ = false;
  ListFetching fetching_{operationQueue_};
  ListSending sending_{operationQueue_};
  // Last, so that their threads are joined before anything else goes.
  OperationQueue operationQueue_{1};
  OperationQueue imageOperationQueue_{3};
};

}  // namespace veltramoor
