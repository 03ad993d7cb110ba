#include "remote/screens/ClientWebViewController.h"

#include <QCryptographicHash>

#include "remote/FetchPageRemoteUI.h"
#include "remote/ServerInfo.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

// Tells one set of settings from another without showing the password.
QString settingsKey(const ServerInfo& info) {
  QCryptographicHash key(QCryptographicHash::Sha256);
  for (const auto& part :
       {info.client(), info.address(), info.port(), info.username(), info.password()}) {
    key.addData(QByteArray::fromStdString(part.value_or("") + '\n'));
  }
  return QString::fromLatin1(key.result().toHex());
}

}  // namespace

ClientWebViewController::ClientWebViewController(const std::optional<Url>& url,
                                                 OpenedFrom openedFrom)
    : WebViewController(url, nullptr), openedFrom_(openedFrom) {
  tabBarItem()->set(tr("Remote UI"), QStringLiteral("tabbar-remote.png"), 0);
  dropAtLogout();
  if (openedFrom == OpenedFrom::RemoteSettings) {
    setTitle(tr("Test remote settings"));
    std::vector<std::unique_ptr<BarButton>> buttons;
    buttons.push_back(std::make_unique<BarButton>(QStringLiteral("webBackButton"), tr("Back"),
                                                  QStringLiteral("back.png")));
    connect(buttons.back().get(), &BarButton::clicked, this, [this] { cancel(); });
    leftBarItem()->set(BarButton::kWidth, std::move(buttons));
  }
}

void ClientWebViewController::viewDidLoad() {}

void ClientWebViewController::viewWillAppear() {
  appearWithNavigationBarHidden(openedFrom_ != OpenedFrom::RemoteSettings);
}

void ClientWebViewController::viewDidAppear() {
  showLoading(-4);
  // A slow client's page may come when the settings name another one.
  ignoreEarlierFetches();
  settings_ = settingsKey(ServerInfo::sharedInstance());
  const bool isTest = openedFrom_ == OpenedFrom::RemoteSettings;
  std::function<void()> failureClosed;
  if (isTest) {
    failureClosed = [self = sharedController(this)] { self->leaveAfterFailure(); };
  }
  const auto operation =
      std::make_shared<FetchPageRemoteUI>(url(), isTest, delivery(), std::move(failureClosed));
  addOperation(operation);
  setUrl(operation->url());
}

void ClientWebViewController::leaveAfterFailure() {
  // The person may have left already.
  if (!isRemoved()) {
    cancel();
    emit testFailed();
  }
}

void ClientWebViewController::initializeWebView(std::optional<std::string> html) {
  const ServerInfo& info = ServerInfo::sharedInstance();
  if (settingsKey(info) != settings_) {
    endLoad(false);
    return;
  }
  result_ = std::move(html);
  // The engine keeps a login for as long as the profile lives and sends it with whatever any page
  // of that profile asks of the server: a page of the site must not reach the client with it, and a
  // login that was changed must not linger.
  WebPage& page = makeWebView(false, settings_);
  if (url()) {
    page.setCredentials(QString::fromStdString(url()->host()), url()->port(),
                        QString::fromStdString(info.username().value_or("")),
                        QString::fromStdString(info.password().value_or("")));
  }
  showLoading(-25);
  show(page, result_, url());
}

bool ClientWebViewController::shouldStartLoadWithRequest(const QUrl& target, int) {
  const std::optional<Url> to = Url::parse(target.toEncoded().toStdString());
  return to && url() && to->scheme() == url()->scheme() && to->host() == url()->host() &&
         to->port() == url()->port();
}

}  // namespace veltramoor
