#include "toolkit/Announcements.h"

#include <QAccessible>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

Announcements& Announcements::sharedInstance() { return SharedInstances::of<Announcements>(); }

void Announcements::say(const QString& text) {
  if (text.isEmpty()) {
    return;
  }
  // An alert is read as it comes up: the one before goes first.
  clear();
  text_ = text;
  emit textChanged();
}

void Announcements::clear() {
  text_.clear();
  emit textChanged();
}

void Announcements::tellFocus(QObject* item) {
  QAccessibleEvent event(item, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace veltramoor
