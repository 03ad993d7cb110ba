#include "remote/ClientWebViewController.h"

#include <QCryptographicHash>

#include "lists/AllListViewController.h"
#include "remote/FetchPageRemoteUI.h"
#include "remote/ServerInfo.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {

ClientWebViewController::ClientWebViewController(const std::optional<Url>& url,
                                                 OpenedFrom openedFrom)
    : WebViewController(url, nullptr), url_(url), openedFrom_(openedFrom) {
  tabBarItem()->set(tr("Remote UI"), QStringLiteral("tabbar-remote.png"), 0);
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
  const auto operation = std::make_shared<FetchPageRemoteUI>(
      url_, openedFrom_ == OpenedFrom::RemoteSettings,
      [self = sharedController(this)](std::optional<std::string> html) {
        if (!self->isRemoved()) {
          self->initializeWebView(std::move(html));
        }
      });
  addOperation(operation);
  url_ = operation->url();
}

void ClientWebViewController::initializeWebView(std::optional<std::string> html) {
  result_ = std::move(html);
  const ServerInfo& info = ServerInfo::sharedInstance();
  // The engine keeps a login for as long as the profile lives and sends it with whatever any page
  // of that profile asks of the server: a page of the site must not reach the client with it, and a
  // login that was changed must not linger.
  QCryptographicHash key(QCryptographicHash::Sha256);
  for (const auto& part : {info.address(), info.port(), info.username(), info.password()}) {
    key.addData(QByteArray::fromStdString(part.value_or("") + '\n'));
  }
  WebPage& page = makeWebView(false, QString::fromLatin1(key.result().toHex()));
  if (url_) {
    page.setCredentials(QString::fromStdString(url_->host()), url_->port(),
                        QString::fromStdString(info.username().value_or("")),
                        QString::fromStdString(info.password().value_or("")));
  }
  showLoading(-25);
  show(page, result_, url_);
}

void ClientWebViewController::webViewDidFinishLoad() {
  hideLoading();
  emit loadEnded(true);
}

void ClientWebViewController::didFailLoadWithError(const QString& error) {
  if (!error.isEmpty()) {
    hideLoading();
    emit loadEnded(false);
  }
}

}  // namespace veltramoor
