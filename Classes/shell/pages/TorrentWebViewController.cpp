#include "shell/pages/TorrentWebViewController.h"

#include <QRegularExpression>
#include <chrono>

#include "shell/overlay/SynchronousRequest.h"
#include "shell/pages/OpeningList.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/MagnetName.h"

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

// Whatever it is that may not stand in an address; a page may write a link as it likes.
std::string escaped(const QString& link) {
  const QByteArray text = QUrl::toPercentEncoding(link, "!#$&'()*+,/:;=?@");
  // What was an escape before stays one.
  const QRegularExpression escapedTwice(QStringLiteral("%25(?=[0-9A-Fa-f]{2})"));
  return QString::fromLatin1(text).replace(escapedTwice, QStringLiteral("%")).toStdString();
}

}  // namespace

struct TorrentWebViewController::Fetched {
  std::optional<std::string> html;
  std::optional<std::string> imdb;
  std::optional<TransferFailure> failure;
};

// Absent when the program is ending.
auto TorrentWebViewController::fetchDetails(const std::optional<Url>& url)
    -> std::optional<Fetched> {
  const auto request = std::make_shared<HttpRequestRegExDetails>(url);
  switch (requestSynchronously(request, kLongestWait, GivingUp::Allowed)) {
    case WaitEnd::Finished:
      return Fetched{request->result(), request->imdb(), request->failure()};
    case WaitEnd::GivenUp: {
      // The request is its worker's still.
      TransferFailure failure;
      failure.kind = TransferFailureKind::GivenUp;
      return Fetched{std::nullopt, std::nullopt, std::move(failure)};
    }
    case WaitEnd::Closing:
      break;
  }
  return std::nullopt;
}

std::shared_ptr<TorrentWebViewController> TorrentWebViewController::open(
    const std::optional<Url>& url, int tag, std::shared_ptr<OpeningList> target) {
  // What the row holds now: a page that arrives meanwhile may replace the rows.
  std::optional<Torrent> torrent = target != nullptr ? target->torrentAt(tag) : std::nullopt;
  std::optional<Fetched> fetched = fetchDetails(url);
  if (!fetched) {
    return nullptr;
  }
  std::shared_ptr<TorrentWebViewController> screen(
      new TorrentWebViewController(url, tag, std::move(target), std::move(torrent)));
  screen->take(*std::move(fetched));
  return screen;
}

TorrentWebViewController::TorrentWebViewController(const std::optional<Url>& url, int tag,
                                                   std::shared_ptr<OpeningList> target,
                                                   std::optional<Torrent> torrent)
    : WebViewController(url, std::move(target)), tag_(tag), torrent_(std::move(torrent)) {}

void TorrentWebViewController::take(Fetched fetched) {
  result_ = std::move(fetched.html);
  imdb_ = std::move(fetched.imdb);
  failure_ = std::move(fetched.failure);
  makeWebView();
  initializeWebView(result_);
}

void TorrentWebViewController::openAgain() {
  const auto self = shared_from_this();
  std::optional<Fetched> fetched = fetchDetails(url());
  if (!fetched || isRemoved()) {
    return;
  }
  take(*std::move(fetched));
  stackCounter_ = 0;
  hasPrevious_ = false;
  // The page may have a movie now.
  viewDidLoad();
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
    target()->whenSent(send, [this, send](const std::string& name) {
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

void TorrentWebViewController::didTapMagnetLink(const QString& link) {
  if (torrent_) {
    Torrent tapped = *torrent_;
    tapped.downloadUrl = escaped(link);
    // On a page that this one led to, it is another torrent's.
    if (!myWebView()->isShowingText()) {
      tapped.name = nameOfMagnet(tapped.downloadUrl);
    }
    target()->send(tapped);
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
