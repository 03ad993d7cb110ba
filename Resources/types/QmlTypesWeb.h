// What QML knows of web pages; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QQmlEngine>

#include "shell/pages/WebViewController.h"
#include "toolkit/WebCookies.h"
#include "toolkit/WebHosts.h"
#include "toolkit/WebPage.h"

namespace veltramoor::qml {

struct WebPageUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::WebPage)
  QML_NAMED_ELEMENT(WebPage)
  QML_UNCREATABLE("made by the application")
};

struct WebViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::WebViewController)
  QML_NAMED_ELEMENT(WebViewController)
  QML_UNCREATABLE("made by the application")
};

struct WebCookiesSingleton {
  Q_GADGET
  QML_FOREIGN(veltramoor::WebCookies)
  QML_NAMED_ELEMENT(WebCookies)
  QML_SINGLETON

 public:
  static WebCookies* create(QQmlEngine*, QJSEngine*) {
    WebCookies* cookies = &WebCookies::sharedInstance();
    QJSEngine::setObjectOwnership(cookies, QJSEngine::CppOwnership);
    return cookies;
  }
};

struct WebHostsSingleton {
  Q_GADGET
  QML_FOREIGN(veltramoor::WebHosts)
  QML_NAMED_ELEMENT(WebHosts)
  QML_SINGLETON

 public:
  static WebHosts* create(QQmlEngine*, QJSEngine*) {
    WebHosts* hosts = &WebHosts::sharedInstance();
    QJSEngine::setObjectOwnership(hosts, QJSEngine::CppOwnership);
    return hosts;
  }
};

}  // namespace veltramoor::qml
