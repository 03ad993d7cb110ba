#include "settings/DisplaySettingsParts.h"

namespace veltramoor {

void DisplaySettingsPart::setText(const QString& text) {
  if (text != text_) {
    text_ = text;
    emit changed();
  }
}

void DisplaySettingsPart::moveTo(QPointF position) {
  frame_.moveTopLeft(position);
  emit changed();
}

int DisplaySettingsParts::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(parts_.size());
}

QVariant DisplaySettingsParts::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::UserRole) {
    return {};
  }
  return QVariant::fromValue(at(index.row()));
}

QHash<int, QByteArray> DisplaySettingsParts::roleNames() const { return {{Qt::UserRole, "part"}}; }

DisplaySettingsPart* DisplaySettingsParts::at(int position) const {
  return position >= 0 && position < count() ? parts_[static_cast<std::size_t>(position)].get()
                                             : nullptr;
}

DisplaySettingsPart* DisplaySettingsParts::add(std::unique_ptr<DisplaySettingsPart> part) {
  beginInsertRows({}, count(), count());
  parts_.push_back(std::move(part));
  endInsertRows();
  return parts_.back().get();
}

DisplaySettingsPart* DisplaySettingsParts::addLabel(const QString& name, const QString& text,
                                                    const QRectF& frame) {
  return add(
      std::make_unique<DisplaySettingsPart>(DisplaySettingsPart::Kind::Label, name, text, frame));
}

void DisplaySettingsParts::addSegments(const QString& name, const QString& text,
                                       const QRectF& frame, SegmentedControl* segments) {
  auto part =
      std::make_unique<DisplaySettingsPart>(DisplaySettingsPart::Kind::Segments, name, text, frame);
  part->segments_ = segments;
  add(std::move(part));
}

void DisplaySettingsParts::addPicker(const QString& name, const QString& text,
                                     const QRectF& frame) {
  add(std::make_unique<DisplaySettingsPart>(DisplaySettingsPart::Kind::Picker, name, text, frame));
}

void DisplaySettingsParts::addSlider(const QString& name, const QString& text, const QRectF& frame,
                                     Slider* slider) {
  auto part =
      std::make_unique<DisplaySettingsPart>(DisplaySettingsPart::Kind::Slider, name, text, frame);
  part->slider_ = slider;
  add(std::move(part));
}

void DisplaySettingsParts::remove(int position) {
  if (at(position) == nullptr) {
    return;
  }
  beginRemoveRows({}, position, position);
  parts_.erase(parts_.begin() + position);
  endRemoveRows();
}

}  // namespace veltramoor
