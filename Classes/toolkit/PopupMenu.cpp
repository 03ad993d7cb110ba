#include "toolkit/PopupMenu.h"

#include <utility>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

PopupMenu& PopupMenu::sharedInstance() { return SharedInstances::of<PopupMenu>(); }

void PopupMenu::open(QObject* owner, const Request& request, const QString& title,
                     std::vector<Entry> entries) {
  close();
  if (entries.empty()) {
    return;
  }
  title_ = title;
  request_ = request;
  entries_ = std::move(entries);
  ownerGone_ = connect(owner, &QObject::destroyed, this, &PopupMenu::close);
  emit changed();
}

void PopupMenu::choose(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= entries_.size()) {
    return;
  }
  // First, so that the focus is back where it was.
  const std::function<void()> chosen = std::move(entries_[static_cast<std::size_t>(index)].chosen);
  close();
  chosen();
}

void PopupMenu::close() {
  if (isOpen()) {
    disconnect(ownerGone_);
    entries_.clear();
    emit changed();
  }
}

QStringList PopupMenu::entries() const {
  QStringList titles;
  for (const Entry& entry : entries_) {
    titles.append(entry.title);
  }
  return titles;
}

}  // namespace veltramoor
