#include "toolkit/AlertView.h"

namespace veltramoor {

void AlertView::show(Alert alert) {
  alerts_.push_back(std::move(alert));
  if (alerts_.size() == 1) {
    emit changed();
  }
}

QString AlertView::title() const {
  return alerts_.empty() ? QString() : QString::fromStdString(alerts_.front().title);
}

QString AlertView::message() const {
  if (alerts_.empty()) {
    return {};
  }
  // A server's text may be of any size; laying out megabytes would hold the window up for seconds.
  QString text = QString::fromStdString(alerts_.front().message.substr(0, 4 * kLongestMessage));
  return text.size() <= kLongestMessage ? text : text.left(kLongestMessage) + QChar(0x2026);
}

QStringList AlertView::buttons() const {
  QStringList titles;
  if (!alerts_.empty()) {
    for (const std::string& button : alerts_.front().buttons) {
      titles.append(QString::fromStdString(button));
    }
  }
  return titles;
}

void AlertView::dismissWithButtonIndex(int index) {
  if (alerts_.empty()) {
    return;
  }
  const Alert closed = std::move(alerts_.front());
  alerts_.pop_front();
  emit changed();
  if (closed.clicked) {
    closed.clicked(index);
  }
}

}  // namespace veltramoor
