#include "shell/TorrentWebViewController.h"

#include <chrono>

#include "lists/AllListViewController.h"
#include "shell/SynchronousRequest.h"
#include "site/HttpRequestRegExDetails.h"

namespace veltramoor {
namespace {

// Opens every link in the same view, and makes links to torrent files inert. It ends at the first
// anchor without an address, as it always has.
constexpr char kSameView[] =
    "\tvar d = document.getElementsByTagName('a');\tfor (var i = 0; i < d.length; i++) {\tif "
    "(d[i].getAttribute('target') == '_blank') {\td[i].removeAttribute('target');\t}\tif "
    "(d[i].getAttribute('href').match(/torrent$/)) {\td[i].removeAttribute('href');\t}\t}\t";

// Whatever the server does, the window is back by then.
constexpr std::chrono::seconds kLongestWait{60};

}  // namespace

TorrentWebViewController::TorrentWebViewController(const std::optional<Url>& url, int tag,
                                                   std::shared_ptr<AllListViewController> target)
    : WebViewController(url, std::move(target)), url_(url), tag_(tag) {
  if (AllListViewController* list = this->target();
      list != nullptr && tag >= 0 && tag < list->rows()->torrentCount()) {
    torrent_ = (*list->rows()->torrents())[static_cast<std::size_t>(tag)];
  }
  const auto request = std::make_shared<HttpRequestRegExDetails>(url);
  switch (requestSynchronously(request, kLongestWait, GivingUp::Allowed)) {
    case WaitEnd::Finished:
      result_ = request->result();
      imdb_ = request->imdb();
      break;
    case WaitEnd::GivenUp:
      break;
    case WaitEnd::Closing:
      return;
  }
  makeWebView();
  initializeWebView(result_);
}

void TorrentWebViewController::initializeWebView(std::optional<std::string> html) {
  show(*myWebView(), html, siteHomeUrl());
}

void TorrentWebViewController::viewDidLoad() {
  const auto add = [this](std::vector<std::unique_ptr<BarButton>>& buttons, const char* name,
                          const QString& label, const char* image, double x, auto action) {
    buttons.push_back(
        std::make_unique<BarButton>(QLatin1String(name), label, QLatin1String(image), x));
    connect(buttons.back().get(), &BarButton::clicked, this, action);
    return buttons.back().get();
  };
  std::vector<std::unique_ptr<BarButton>> left;
  add(left, "webBackButton", tr("Back"), "back.png", 0, [this] { cancel(); });
  backButton_ = add(left, "webPreviousButton", tr("Previous page"), "previous-toolbar.png", 65,
                    [this] { goBack(); });
  std::vector<std::unique_ptr<BarButton>> right;
  if (imdb_) {
    add(right, "webImdbButton", tr("Movie database"), "imdb-toolbar.png", 0,
        [this] { didTapImdbButton(); });
  }
  forwardButton_ = add(right, "webForwardButton", tr("Next page"), "forward-toolbar.png", 65,
                       [this] { goForward(); });
  BarButton* send = add(right, "webDownloadButton", tr("Send to your computer"),
                        "download-toolbar.png", 130, [this] { sendTorrent(); });
  if (torrent_) {
    send->setMarked(torrent_->isDownloaded);
    connect(target(), &AllListViewController::torrentSent, send,
            [this, send](const std::string& name) {
              if (name == torrent_->name) {
                send->setMarked(true);
              }
            });
  }
  leftBarItem()->set(160, std::move(left));
  rightBarItem()->set(180, std::move(right));
  updateButtons();
}

void TorrentWebViewController::sendTorrent() {
  if (torrent_) {
    target()->send(*torrent_);
  }
}

void TorrentWebViewController::updateButtons() {
  if (forwardButton_ != nullptr && myWebView() != nullptr) {
    forwardButton_->setEnabled(myWebView()->canGoForward());
    backButton_->setEnabled(myWebView()->canGoBack() || stackCounter_ == 1);
  }
}

void TorrentWebViewController::goBack() {
  if (myWebView() != nullptr && myWebView()->leaveError()) {
    backButton_->setEnabled(hasPrevious_);
    return;
  }
  WebViewController::goBack();
}

void TorrentWebViewController::webViewDidFinishLoad() {
  myWebView()->runScript(QLatin1String(kSameView));
  hideLoading();
  updateButtons();
  hasPrevious_ = backButton_ != nullptr && backButton_->isEnabled();
  stackCounter_ = 1;
  endKeepAlive();
  emit loadEnded(true);
}

void TorrentWebViewController::didFailLoadWithError(const QString&) {
  hideLoading();
  updateButtons();
  endKeepAlive();
  emit loadEnded(false);
}

void TorrentWebViewController::didTapImdbButton() {
  if (imdb_) {
    loadRequest(QUrl(QString::fromStdString(*imdb_)));
  }
}

}  // namespace veltramoor
