#include "lists/ListSending.h"

#include <utility>

#include "lists/listings/MagnetAddress.h"
#include "remote/FetchPageDownload.h"
#include "shell/overlay/ApplicationWindow.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "toolkit/Announcements.h"

namespace veltramoor {
namespace {

constexpr int kOffset = 50;

}  // namespace

ListSending::ListSending(OperationQueue& queue)
    : queue_(queue), wait_(SendingTorrentIndicator::current()) {
  connect(&wait_, &Wait::wentOn, this, [this] {
    waits_ = false;
    wait_.end();
    emit wentOn();
  });
}

void ListSending::send(const Torrent& torrent, Completion completion) {
  ++count_;
  waits_ = true;
  show(count_ != 1);
  queue_.addOperation(std::make_shared<FetchPageDownload>(sendAddress(torrent.downloadUrl),
                                                          torrent.name, std::move(completion)));
}

void ListSending::ended(const std::optional<std::string>& name) {
  --count_;
  if (count_ < 1) {
    wait_.end();
  } else if (waits_ && wait_.isShown()) {
    show(count_ >= 2);
  }
  if (name) {
    Announcements::sharedInstance().say(tr("Sent %1").arg(QString::fromStdString(*name)));
    emit sent(*name);
  }
  emit finished(name.has_value());
}

void ListSending::show(bool plural) {
  wait_.begin(applicationWindow(),
              QStringLiteral("Sending %1 torrent%2 to server")
                  .arg(plural ? QString::number(count_) : QString(),
                       plural ? QStringLiteral("s") : QString()),
              kOffset);
  wait_.offerGoingOn();
}

}  // namespace veltramoor
