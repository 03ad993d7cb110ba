#include "shell/overlay/LoadingIndicator.h"

#include <QFont>
#include <QFontMetricsF>
#include <cassert>
#include <cmath>
#include <mutex>
#include <utility>

#include "platform/MainThread.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

constexpr double kWheelSide = 20;
constexpr double kGap = 8;
constexpr double kBoxHeight = 40;
constexpr double kMargin = 30;

QSizeF sizeToFit(const QString& text) {
  QFont font(QStringLiteral("Liberation Sans"));
  font.setPixelSize(20);
  const QFontMetricsF metrics(font);
  return {std::ceil(metrics.horizontalAdvance(text)), std::ceil(metrics.height())};
}

}  // namespace

LoadingIndicator::LoadingIndicator() {
  offerTimer_.setSingleShot(true);
  connect(&offerTimer_, &QTimer::timeout, this, &LoadingIndicator::makeOffer);
}

LoadingIndicator& LoadingIndicator::current() { return SharedInstances::of<LoadingIndicator>(); }

LoadingIndicator& LoadingIndicator::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  LoadingIndicator& instance = current();
  instance.reset();
  return instance;
}

void LoadingIndicator::reset() {
  parentView_ = nullptr;
  offset_ = 0;
  string_.clear();
}

void LoadingIndicator::showLoadingIndicators() {
  assert(MainThread::isCurrent());
  if (!shown_) {
    shown_ = true;
    shownFor_.start();
    shownOn_ = parentView_;
    if (shownOn_ != nullptr) {
      connect(shownOn_, &View::frameChanged, this, &LoadingIndicator::sizeFrame);
    }
  }
  wait_ = nullptr;
  withdrawOffer();
  shownText_ = string_;
  // Kept, for any call for the instance resets the one to be set, and the parent may be resized.
  shownOffset_ = offset_;
  sizeFrame();
}

void LoadingIndicator::setHint(const QString& text) {
  if (shown_ && !canGoOn_ && text != hint_) {
    hint_ = text;
    emit changed();
  }
}

void LoadingIndicator::hideLoadingIndicators() {
  assert(MainThread::isCurrent());
  if (!shown_) {
    return;
  }
  shown_ = false;
  if (shownOn_ != nullptr) {
    disconnect(shownOn_, nullptr, this, nullptr);
  }
  shownOn_ = nullptr;
  wait_ = nullptr;
  withdrawOffer();
  hint_.clear();
  emit changed();
  emit hidden();
}

void LoadingIndicator::offerGoingOn(std::function<void()> goOn) {
  withdrawOffer();
  if (!shown_) {
    return;
  }
  goOn_ = std::move(goOn);
  const std::chrono::milliseconds left = patience_ - std::chrono::milliseconds(shownFor_.elapsed());
  if (left <= std::chrono::milliseconds::zero()) {
    makeOffer();
    return;
  }
  offerTimer_.start(left);
}

void LoadingIndicator::makeOffer() {
  hint_ = tr("Tap here to go on meanwhile");
  canGoOn_ = true;
  emit changed();
}

void LoadingIndicator::goOn() {
  if (canGoOn_) {
    const std::function<void()> goOn = std::move(goOn_);
    withdrawOffer();
    goOn();
  }
}

void LoadingIndicator::withdrawOffer() {
  goOn_ = nullptr;
  offerTimer_.stop();
  if (std::exchange(canGoOn_, false)) {
    hint_.clear();
    emit changed();
  }
}

void LoadingIndicator::sizeFrame() {
  const QSizeF label = sizeToFit(shownText_);
  const double content = kWheelSide + kGap + label.width();
  const QSizeF box(content + kMargin, kBoxHeight);
  const double left = (box.width() - content) / 2;
  wheelFrame_ = {left, (box.height() - kWheelSide) / 2, kWheelSide, kWheelSide};
  labelFrame_ = {QPointF(kWheelSide + left + kGap, (box.height() - label.height()) / 2), label};
  const QSizeF parent = shownOn_ != nullptr ? shownOn_->frame().size() : box;
  boxFrame_ = {QPointF((parent.width() - box.width()) / 2,
                       (parent.height() - box.height()) / 2 + shownOffset_),
               box};
  emit changed();
}

}  // namespace veltramoor
