#include "toolkit/WebPage.h"

#include <unistd.h>

#include <QTimer>
#include <QUuid>
#include <cassert>
#include <chrono>
#include <utility>

#include "platform/MainThread.h"

namespace veltramoor {
namespace {

class Nobody final : public WebPageDelegate {
 public:
  bool shouldStartLoadWithRequest(const QUrl&, int) override { return false; }
  void webViewDidStartLoad() override {}
  void webViewDidFinishLoad() override {}
  void didFailLoadWithError(const QString&) override {}
  void webViewWasStopped() override {}
};

WebPageDelegate& nobody() {
  static Nobody instance;
  return instance;
}

// An engine that has more to say of a load that was stopped is waited for, not for ever.
constexpr std::chrono::seconds kBusyEngine{1};

int portOf(const QUrl& url) { return url.port(url.scheme() == QLatin1String("https") ? 443 : 80); }

}  // namespace

WebPage::WebPage(QString userAgent, QString profileKey, WebPageDelegate* delegate)
    : userAgent_(std::move(userAgent)),
      profileKey_(std::move(profileKey)),
      delegate_(delegate),
      messageKey_(QUuid::createUuid().toString()) {
  assert(MainThread::isCurrent() && delegate != nullptr);
  static int pages = 0;
  id_ = QString::number(++pages);
}

WebPage::~WebPage() = default;

QString WebPage::obstacle() const {
  return geteuid() == 0 && qgetenv("QTWEBENGINE_DISABLE_SANDBOX").isEmpty()
             ? tr("the web engine does not run as root")
             : QString();
}

void WebPage::ask(std::function<void()> request) {
  if (attached_) {
    request();
  } else {
    waiting_ = std::move(request);
  }
}

void WebPage::attach() {
  attached_ = true;
  if (waiting_) {
    std::exchange(waiting_, nullptr)();
  }
}

void WebPage::begin() {
  setError({});
  loading_ = true;
  announced_ = false;
  emit changed();
  // As with every web view, the start is told of once the caller is done.
  QTimer::singleShot(0, this, [this] {
    if (!loading_) {
      return;
    }
    reportStarted();
    if (!unusable_.isEmpty()) {
      reportFailed({}, unusable_);
    }
  });
}

void WebPage::reportUnusable(const QString& reason) {
  unusable_ = reason;
  reportFailed({}, reason);
}

void WebPage::loadHtml(const QString& html, const std::optional<Url>& base) {
  html_ = html;
  base_ = base;
  QUrl origin;
  if (base) {
    origin = QUrl(QString::fromStdString(base->absoluteString()));
    if (credentialsFor(origin).isEmpty()) {
      setCredentials(origin.host(), portOf(origin), origin.userName(), origin.password());
    }
    origin.setUserInfo({});
  }
  loadingText_ = true;
  begin();
  ask([this, origin] { emit htmlRequested(html_, origin); });
}

void WebPage::loadUrl(const QUrl& url) {
  loadingText_ = false;
  begin();
  ask([this, url] { emit urlRequested(url); });
}

void WebPage::stop() {
  waiting_ = nullptr;
  if (loading_) {
    emit stopRequested();
    const auto tell = [this, stop = ++stops_](void (WebPage::*told)()) {
      if (stop == stops_) {
        emit(this->*told)();
      }
    };
    // Behind what stands in the queue of events.
    QMetaObject::invokeMethod(
        this, [tell] { tell(&WebPage::stopHandled); }, Qt::QueuedConnection);
    QTimer::singleShot(kBusyEngine, this, [tell] { tell(&WebPage::stopOverdue); });
    loading_ = false;
    announced_ = false;
    emit changed();
    delegate_->webViewWasStopped();
  }
}

void WebPage::abandon() {
  stop();
  delegate_ = &nobody();
}

void WebPage::goBack() { emit backRequested(); }

bool WebPage::leaveError() {
  if (error_.isEmpty() || !shown_) {
    return false;
  }
  setError({});
  return true;
}

void WebPage::goForward() { emit forwardRequested(); }

void WebPage::runScript(const QString& source, std::function<void(const QVariant&)> callback) {
  const int number = ++scripts_;
  if (callback) {
    callbacks_.emplace(number, std::move(callback));
  }
  emit scriptRequested(number, source);
}

void WebPage::showError(const QString& text) {
  loading_ = false;
  error_ = text;
  failedUrl_.clear();
  emit changed();
}

void WebPage::setError(const QString& text) {
  if (text != error_) {
    error_ = text;
    emit changed();
  }
}

void WebPage::setCredentials(const QString& host, int port, const QString& user,
                             const QString& password) {
  if (!host.isEmpty() && !user.isEmpty()) {
    logins_.push_back({host.toLower(), port, user, password});
  }
}

void WebPage::reportStarted() {
  if (loading_ && announced_) {
    return;
  }
  loading_ = true;
  announced_ = true;
  setError({});
  emit changed();
  delegate_->webViewDidStartLoad();
}

void WebPage::reportFinished() {
  if (!loading_) {
    return;
  }
  shown_ = true;
  showingText_ = loadingText_;
  loading_ = false;
  announced_ = false;
  emit changed();
  delegate_->webViewDidFinishLoad();
}

void WebPage::reportFailed(const QUrl& url, const QString& reason) {
  if (!loading_) {
    return;
  }
  loading_ = false;
  announced_ = false;
  if (!reason.isEmpty()) {
    const QString where =
        url.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
    error_ = tr("%1 could not be loaded: %2.").arg(url.isEmpty() ? tr("The page") : where, reason);
    failedUrl_ = loadingText_ ? QUrl() : url;
  }
  emit changed();
  delegate_->didFailLoadWithError(error_);
}

void WebPage::reportReplaced() {
  shown_ = false;
  showingText_ = loadingText_;
}

void WebPage::reportGone(const QUrl& url, const QString& reason) {
  loadingText_ = showingText_;
  reportReplaced();
  reportStarted();
  reportFailed(url, reason);
}

void WebPage::reportTappedMagnetLink(const QString& link) { delegate_->didTapMagnetLink(link); }

void WebPage::reportHistory(bool canGoBack, bool canGoForward) {
  canGoBack_ = canGoBack;
  canGoForward_ = canGoForward;
}

void WebPage::reportScriptResult(int number, const QVariant& value) {
  const auto callback = callbacks_.extract(number);
  if (!callback.empty()) {
    callback.mapped()(value);
  }
}

bool WebPage::shouldStartLoad(const QUrl& url, int navigationType, bool mainFrame) {
  const QString scheme = url.scheme();
  // Text that the application loads arrives as such an address; no page can lead the view to one.
  if (scheme == QLatin1String("data") || url == QUrl(QStringLiteral("about:blank"))) {
    loadingText_ = loadingText_ || mainFrame;
    return true;
  }
  if (scheme != QLatin1String("http") && scheme != QLatin1String("https")) {
    return !mainFrame && (scheme == QLatin1String("about") || scheme == QLatin1String("blob"));
  }
  if (!mainFrame) {
    return true;
  }
  const bool may = delegate_->shouldStartLoadWithRequest(url, navigationType);
  loadingText_ = loadingText_ && !may;
  return may;
}

QStringList WebPage::answerChallenge(const QUrl& url) {
  // A server that does not like the answer asks again.
  return ++challenges_ > kChallenges ? QStringList() : credentialsFor(url);
}

QStringList WebPage::credentialsFor(const QUrl& url) const {
  for (const Login& login : logins_) {
    if (url.host().toLower() == login.host && portOf(url) == login.port) {
      return {login.user, login.password};
    }
  }
  return {};
}

}  // namespace veltramoor
