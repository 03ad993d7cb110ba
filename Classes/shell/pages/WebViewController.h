// A page of the site in a web view: the base of the web page screens.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>

#include "platform/OperationQueue.h"
#include "platform/TransferFailure.h"
#include "platform/Url.h"
#include "shell/overlay/Wait.h"
#include "site/FetchPageGeneric.h"
#include "toolkit/ViewController.h"
#include "toolkit/WebPage.h"

namespace veltramoor {

class OpeningList;

/// Shows HTML that was fetched and cleaned in the background. As it is, it makes every link of a
/// page inert. Main thread only.
class WebViewController : public veltramoor::ViewController, public WebPageDelegate {
  Q_OBJECT
  Q_PROPERTY(veltramoor::WebPage* webPage READ myWebView NOTIFY webViewChanged)
  Q_PROPERTY(double topInset READ topInset NOTIFY layoutChanged)

 public:
  /// Height of the bar over a screen in points.
  static constexpr double kBarHeight = 44;

  /// `url`: the page that the screen is for; `target`: the list that opened it, or null.
  WebViewController(std::optional<Url> url, std::shared_ptr<OpeningList> target);
  ~WebViewController() override;

  /// The fetch's completion: shows the page in a new web view; absent after a failed transfer.
  virtual void initializeWebView(std::optional<std::string> html);

  void viewDidLoad() override;
  void viewWillAppear() override;
  void viewWillDisappear() override;
  void cancel() override;
  /// Stops a load.
  bool escape() override;
  bool perform(KeyCommand command) override;
  [[nodiscard]] bool hasBackgroundWork() const override;

  /// Back in the web view; at its beginning, the page that this screen was opened for.
  virtual void goBack();
  void goForward();
  /// The page on show once more: fetched anew when it is the one that this screen is for.
  void reload();
  /// Shows the page at `url` in place of the present one.
  virtual void loadRequest(const QUrl& url);
  /// Once a load has failed: asks for that address again or, when it was the page that this screen
  /// is for, for that one as the screen's opening did.
  Q_INVOKABLE void tryAgain();

  // WebPageDelegate
  bool shouldStartLoadWithRequest(const QUrl& url, int navigationType) override;
  void webViewDidStartLoad() override;
  void webViewDidFinishLoad() override;
  void didFailLoadWithError(const QString& error) override;
  void webViewWasStopped() override { didFailLoadWithError({}); }

  /// Null until there is something to show.
  [[nodiscard]] WebPage* myWebView() const { return myWebView_.get(); }
  /// The page that this screen was opened for.
  [[nodiscard]] const std::optional<std::string>& result() const { return result_; }
  /// Null on screens without such a button.
  [[nodiscard]] BarButton* backButton() const { return backButton_; }
  [[nodiscard]] BarButton* forwardButton() const { return forwardButton_; }
  /// Where the page begins, in points from the screen's top.
  [[nodiscard]] double topInset() const;
  [[nodiscard]] OpeningList* target() const { return target_.get(); }
  /// What a page that did not come is named by; none when there is no address.
  [[nodiscard]] const std::optional<Url>& url() const { return url_; }

 signals:
  void webViewChanged();
  void layoutChanged();
  /// After a load has ended, well or not.
  void loadEnded(bool good);

 protected:
  /// Asks anew for the page that this screen is for. By itself, a screen has only what it was
  /// given.
  virtual void openAgain() { initializeWebView(result_); }
  /// The web view with no page in it yet, in place of an earlier one.
  WebPage& makeWebView(bool handset = false, const QString& profileKey = {});
  /// Loads `html` into `page`; says what failed in the page's place when there is none, and why as
  /// far as `failure_` knows.
  void show(WebPage& page, const std::optional<std::string>& html, const std::optional<Url>& base);
  /// The shared overlay is left alone while another screen is on show.
  void showLoading(int offset);
  void hideLoading();
  /// For screens whose own fetch counts as loading: the overlay goes unless one is under way, whose
  /// page replaces the one that has ended.
  void endLoad(bool good);
  /// For tabs, which outlive a logout: it drops their page, and the next visit fetches it afresh.
  void dropAtLogout();
  /// To be called whenever the screen is about to be shown.
  void appearWithNavigationBarHidden(bool hidden);
  /// Queues a fetch whose page goes to `initializeWebView`.
  void fetch(const std::optional<Url>& url, HttpRequestClass classType);
  /// What a fetch hands its page to: `initializeWebView`, unless nobody waits for it any more. To
  /// be called once a fetch.
  [[nodiscard]] FetchPageGeneric::Completion delivery();
  /// Has the pages of all fetches so far ignored when they come.
  void ignoreEarlierFetches() { ++generation_; }
  void addOperation(std::shared_ptr<Operation> operation);
  /// The list that opened this screen waits for its page, and has shown the overlay for this screen
  /// to hide.
  void haveTargetWait();
  /// Lets the list that opened this screen go on, and the way back be taken.
  void releaseTarget();
  void setUrl(std::optional<Url> url) { url_ = std::move(url); }
  void endKeepAlive();

  /// Whether the screen was shown on a stack that it has left since.
  [[nodiscard]] bool isRemoved() const;
  [[nodiscard]] static std::optional<Url> siteHomeUrl();

  std::optional<std::string> result_;
  // Why there is no `result_`.
  std::optional<TransferFailure> failure_;
  // Whether the list that opened this screen takes no taps until its page is there.
  bool targetWaits_ = false;
  // Whether the page is to be fetched again: leaving cut its load short, or a logout dropped it.
  bool stoppedEarly_ = false;
  BarButton* backButton_ = nullptr;
  BarButton* forwardButton_ = nullptr;
  int stackCounter_ = 0;

 private:
  void drop();

  std::optional<Url> url_;
  std::shared_ptr<OpeningList> target_;
  std::unique_ptr<WebPage> myWebView_;
  std::shared_ptr<ViewController> keptAlive_;
  Wait loading_;
  bool onShow_ = true;
  bool wasInNavigation_ = false;
  // Of what the fetches under way bring, only the present generation's is shown.
  int generation_ = 0;
  int fetches_ = 0;
  // Last, so that its thread is joined before anything else goes.
  OperationQueue operationQueue_{1};
};

}  // namespace veltramoor
