#include "lists/TorrentMenu.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <utility>

#include "lists/listings/MagnetAddress.h"
#include "platform/Alerts.h"
#include "platform/SiteConfiguration.h"
#include "shell/pages/OpeningList.h"
#include "toolkit/PopupMenu.h"

namespace veltramoor {
namespace {

void copy(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void openOutside(const Url& url) {
  if (!QDesktopServices::openUrl(QUrl(QString::fromStdString(url.absoluteString())))) {
    Alerts::showMessage("Open in the browser",
                        "No web browser could be started. The page is " + url.absoluteString());
  }
}

}  // namespace

void TorrentMenu::open(int row, const QRectF& beside, bool byKey) {
  const std::optional<Torrent> torrent = list_.torrentAt(row);
  if (!torrent) {
    return;
  }
  std::vector<PopupMenu::Entry> entries{
      {.title = tr("Send"), .chosen = [this, torrent] { list_.send(*torrent); }}};
  if (const auto link = sendAddress(torrent->downloadUrl)) {
    entries.push_back(
        {.title = tr("Copy magnet link"), .chosen = [link] { copy(link->absoluteString()); }});
  }
  entries.push_back({.title = tr("Copy name"), .chosen = [torrent] { copy(torrent->name); }});
  if (const auto page = SiteConfiguration::current().siteUrl(torrent->detailsUrl)) {
    entries.push_back(
        {.title = tr("Open in the browser"), .chosen = [page] { openOutside(*page); }});
  }
  PopupMenu::sharedInstance().open(this, {.beside = beside, .byKey = byKey},
                                   QString::fromStdString(torrent->name), std::move(entries));
}

void TorrentMenu::copyMagnetLink(int row) const {
  const std::optional<Torrent> torrent = list_.torrentAt(row);
  if (const auto link = torrent ? sendAddress(torrent->downloadUrl) : std::nullopt) {
    copy(link->absoluteString());
  }
}

}  // namespace veltramoor
