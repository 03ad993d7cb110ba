#include "shell/pages/WebViewController.h"

#include <QTimer>
#include <utility>

#include "platform/FailureWords.h"
#include "platform/SiteConfiguration.h"
#include "shell/pages/OpeningList.h"
#include "site/HttpRequest.h"
#include "toolkit/NavigationController.h"
#include "toolkit/WebCookies.h"

namespace veltramoor {
namespace {

// Removes every link's address, so that nothing on the page can be followed.
constexpr char kInertLinks[] =
    "\tvar d = document.getElementsByTagName('a');\tfor (var i = 0; i < d.length; i++) "
    "{\td[i].removeAttribute('href');\t}\t";

}  // namespace

WebViewController::WebViewController(std::optional<Url> url, std::shared_ptr<OpeningList> target)
    : ViewController(QStringLiteral("WebScreen.qml")),
      url_(std::move(url)),
      target_(std::move(target)) {
  setTitle({});
}

WebViewController::~WebViewController() = default;

std::optional<Url> WebViewController::siteHomeUrl() {
  return Url::parse(SiteConfiguration::current().siteHomeUrl());
}

WebPage& WebViewController::makeWebView(bool handset, const QString& profileKey) {
  const std::string_view agent =
      handset ? HttpRequest::kHandsetUserAgent : HttpRequest::kDesktopUserAgent;
  auto page = std::make_unique<WebPage>(
      QString::fromUtf8(agent.data(), static_cast<qsizetype>(agent.size())), profileKey, this);
  page->setScalesPageToFit(true);
  // What draws the old one may be the caller.
  if (WebPage* old = std::exchange(myWebView_, std::move(page)).release()) {
    old->abandon();
    old->deleteLater();
  }
  emit webViewChanged();
  return *myWebView_;
}

void WebViewController::show(WebPage& page, const std::optional<std::string>& html,
                             const std::optional<Url>& base) {
  if (html) {
    page.loadHtml(QString::fromStdString(*html), base);
    return;
  }
  const QString where = url_ ? QString::fromStdString(url_->withoutCredentials()) : tr("The page");
  TransferFailure failure = failure_.value_or(TransferFailure());
  if (!failure_ && !url_) {
    // Nothing was asked, as while no client is set up.
    failure.kind = TransferFailureKind::NoAddress;
  }
  const QString why =
      failure_ || !url_ ? QString::fromStdString(sentenceOf(failure)) : tr("Check the connection.");
  // Not by one template: an address may hold what looks like a place in it.
  page.showError(tr("%1 could not be loaded.").arg(where) + QLatin1Char(' ') + why);
  didFailLoadWithError(page.error());
}

void WebViewController::initializeWebView(std::optional<std::string> html) {
  result_ = std::move(html);
  show(makeWebView(), result_, siteHomeUrl());
}

void WebViewController::viewDidLoad() {
  std::vector<std::unique_ptr<BarButton>> buttons;
  buttons.push_back(std::make_unique<BarButton>(QStringLiteral("webBackButton"), tr("Back"),
                                                QStringLiteral("back.png")));
  buttons.back()->setEnabled(false);
  connect(buttons.back().get(), &BarButton::clicked, this, [this] { cancel(); });
  leftBarItem()->set(160, std::move(buttons));
}

void WebViewController::viewWillAppear() { appearWithNavigationBarHidden(false); }

void WebViewController::viewWillDisappear() {
  if (myWebView_ != nullptr && myWebView_->isLoading()) {
    stoppedEarly_ = true;
    myWebView_->stop();
  }
  hideLoading();
  if (targetWaits_) {
    releaseTarget();
  }
  onShow_ = false;
}

void WebViewController::cancel() {
  if (myWebView_ != nullptr) {
    myWebView_->stop();
  }
  hideLoading();
  ViewController::cancel();
}

void WebViewController::haveTargetWait() {
  targetWaits_ = true;
  loading_.takeOver();
}

bool WebViewController::escape() {
  const bool stops = myWebView_ != nullptr && myWebView_->isLoading();
  if (stops) {
    myWebView_->stop();
    hideLoading();
  }
  return stops;
}

bool WebViewController::perform(KeyCommand command) {
  if (myWebView_ == nullptr) {
    return false;
  }
  switch (command) {
    case KeyCommand::Search:
      return false;
    case KeyCommand::Reload:
      reload();
      return true;
    case KeyCommand::Back:
      // Where the screen has a button for it, the key is as good as that; elsewhere it leads to the
      // page that the screen is for, which has no place in the engine's history.
      if (backButton_ != nullptr
              ? backButton_->isEnabled()
              : myWebView_->canGoBack() || (result_ && !myWebView_->isShowingText())) {
        goBack();
      }
      return true;
    case KeyCommand::Forward:
      goForward();
      return true;
  }
  return false;
}

void WebViewController::reload() {
  if (myWebView_->isLoading() || fetches_ > 0) {
    return;
  }
  if (!myWebView_->error().isEmpty()) {
    tryAgain();
  } else if (myWebView_->isShowingText() || !myWebView_->hasPage()) {
    showLoading(0);
    openAgain();
  } else {
    myWebView_->reload();
  }
}

bool WebViewController::isRemoved() const {
  return wasInNavigation_ && navigationController() == nullptr;
}

bool WebViewController::hasBackgroundWork() const { return operationQueue_.operationCount() > 0; }

void WebViewController::goBack() {
  if (myWebView_ == nullptr) {
    return;
  }
  if (myWebView_->canGoBack()) {
    myWebView_->goBack();
    return;
  }
  initializeWebView(result_);
  if (backButton_ != nullptr) {
    backButton_->setEnabled(false);
  }
  stackCounter_ = 0;
}

void WebViewController::goForward() {
  if (myWebView_ != nullptr) {
    myWebView_->goForward();
  }
}

void WebViewController::loadRequest(const QUrl& url) {
  if (myWebView_ != nullptr) {
    myWebView_->stop();
    myWebView_->loadUrl(url);
  }
}

void WebViewController::tryAgain() {
  if (myWebView_ == nullptr || myWebView_->error().isEmpty()) {
    return;
  }
  showLoading(0);
  if (const QUrl failed = myWebView_->failedUrl(); !failed.isEmpty()) {
    myWebView_->loadUrl(failed);
    return;
  }
  // One tap is enough: what it asks for may take its time.
  myWebView_->showError({});
  openAgain();
}

bool WebViewController::shouldStartLoadWithRequest(const QUrl&, int) { return true; }

void WebViewController::webViewDidStartLoad() {
  keptAlive_ = shared_from_this();
  for (BarButton* button : {forwardButton_, backButton_}) {
    if (button != nullptr) {
      button->setEnabled(false);
    }
  }
  showLoading(0);
}

void WebViewController::webViewDidFinishLoad() {
  myWebView_->runScript(QLatin1String(kInertLinks));
  hideLoading();
  releaseTarget();
  endKeepAlive();
  emit loadEnded(true);
}

void WebViewController::didFailLoadWithError(const QString&) {
  hideLoading();
  releaseTarget();
  endKeepAlive();
  emit loadEnded(false);
}

void WebViewController::releaseTarget() {
  for (int row = 0; row < leftBarItem()->rowCount(); ++row) {
    leftBarItem()->button(row)->setEnabled(true);
  }
  targetWaits_ = false;
  if (target_ != nullptr) {
    target_->resume();
  }
}

void WebViewController::endKeepAlive() {
  // This may be the last reference, and the caller is not done with the screen.
  if (keptAlive_ != nullptr) {
    QTimer::singleShot(0, [self = std::exchange(keptAlive_, nullptr)] {});
  }
}

void WebViewController::showLoading(int offset) {
  if (onShow_) {
    loading_.begin(view(), tr("Loading..."), offset);
  }
}

void WebViewController::hideLoading() {
  if (onShow_) {
    loading_.end();
  }
}

void WebViewController::appearWithNavigationBarHidden(bool hidden) {
  onShow_ = true;
  if (navigationController() != nullptr) {
    wasInNavigation_ = true;
    navigationController()->setNavigationBarHidden(hidden);
    emit layoutChanged();
  }
}

double WebViewController::topInset() const {
  return navigationController() != nullptr && !navigationController()->isNavigationBarHidden()
             ? kBarHeight
             : 0;
}

void WebViewController::fetch(const std::optional<Url>& url, HttpRequestClass classType) {
  addOperation(std::make_shared<FetchPageGeneric>(url, delivery(), std::move(classType)));
}

FetchPageGeneric::Completion WebViewController::delivery() {
  ++fetches_;
  return [self = sharedController(this), of = generation_](std::optional<std::string> html,
                                                           std::optional<TransferFailure> failure) {
    --self->fetches_;
    if (!self->isRemoved() && of == self->generation_) {
      self->failure_ = std::move(failure);
      self->initializeWebView(std::move(html));
    }
  };
}

void WebViewController::endLoad(bool good) {
  if (fetches_ == 0) {
    hideLoading();
    emit loadEnded(good);
  }
}

void WebViewController::dropAtLogout() {
  connect(&WebCookies::sharedInstance(), &WebCookies::pushRequested, this,
          &WebViewController::drop);
}

void WebViewController::drop() {
  ignoreEarlierFetches();
  stoppedEarly_ = stoppedEarly_ || myWebView_ != nullptr || fetches_ > 0;
  result_.reset();
  if (WebPage* page = std::exchange(myWebView_, nullptr).release()) {
    page->abandon();
    page->deleteLater();
    emit webViewChanged();
  }
}

void WebViewController::addOperation(std::shared_ptr<Operation> operation) {
  operationQueue_.addOperation(std::move(operation));
}

}  // namespace veltramoor
