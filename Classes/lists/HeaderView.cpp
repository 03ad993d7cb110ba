#include "lists/HeaderView.h"

namespace veltramoor {

HeaderView::HeaderView() {
  searchBtn_.setHidden(true);
  settingsBtn_.setHidden(true);
  filtersBtn_.setHidden(true);
}

void HeaderView::setFrame(const QRectF& frame) {
  if (frame != frame_) {
    frame_ = frame;
    emit changed();
  }
}

void HeaderView::setRatioLbl(const QString& text) {
  if (text != ratioLbl_) {
    ratioLbl_ = text;
    emit changed();
  }
}

bool HeaderView::pointInside(const QPointF& point) {
  return point.y() > 0 && point.y() < kTouchHeight;
}

void HeaderView::viewProfile() {
  if (parentDelegate_ != nullptr) {
    parentDelegate_->didSelectProfile(std::nullopt);
  }
}

void HeaderView::refresh() {
  if (parentDelegate_ != nullptr) {
    parentDelegate_->didRefresh();
  }
}

void HeaderView::filters() {
  if (parentDelegate_ != nullptr) {
    parentDelegate_->didFilters();
  }
}

void HeaderView::settings() {
  if (parentDelegate_ != nullptr) {
    parentDelegate_->didSettings();
  }
}

void HeaderView::search() {
  if (parentDelegate_ != nullptr) {
    parentDelegate_->didSearch();
  }
}

}  // namespace veltramoor
