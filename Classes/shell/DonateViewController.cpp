#include "shell/DonateViewController.h"

#include <QDesktopServices>

#include "platform/Alerts.h"
#include "platform/SiteConfiguration.h"
#include "toolkit/Image.h"

namespace veltramoor {

DonateViewController::DonateViewController(const QRectF& frame)
    : ViewController(QStringLiteral("DonateView.qml")),
      frame_(frame),
      html_(
          QStringLiteral("<a href=\"%1\" target=\"_blank\"><img src=\"%2\"></a>")
              .arg(QString::fromStdString(SiteConfiguration::current().donationUrl).toHtmlEscaped(),
                   imageUrl(QStringLiteral("bitcoin.png")))),
      configured_(SiteConfiguration::current().hasDonationPage()),
      openUrl_([](const QUrl& url) { return QDesktopServices::openUrl(url); }) {}

bool DonateViewController::shouldStartLoadWithRequest(const QUrl& url, int navigationType) {
  if (navigationType != kLinkTapped) {
    return true;
  }
  if (!openUrl_(url)) {
    Alerts::showMessage(
        "Donate", "No web browser could be started. The page is " + url.toString().toStdString());
  }
  return false;
}

void DonateViewController::donate() {
  shouldStartLoadWithRequest(QUrl(QString::fromStdString(SiteConfiguration::current().donationUrl)),
                             kLinkTapped);
}

}  // namespace veltramoor
