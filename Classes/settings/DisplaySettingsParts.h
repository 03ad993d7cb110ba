// What stands on a settings screen.
#pragma once

#include <QAbstractListModel>
#include <QRectF>
#include <QString>
#include <memory>
#include <vector>

#include "toolkit/SegmentedControl.h"
#include "toolkit/Slider.h"

namespace veltramoor {

/// A label or control and its place on a screen 320 points wide. The controls belong to the screen.
class DisplaySettingsPart : public QObject {
  Q_OBJECT
  Q_PROPERTY(Kind kind READ kind CONSTANT)
  Q_PROPERTY(QString name READ name CONSTANT)
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
  Q_PROPERTY(veltramoor::SegmentedControl* segments READ segments CONSTANT)
  Q_PROPERTY(veltramoor::Slider* slider READ slider CONSTANT)

 public:
  enum class Kind { Label, Segments, Picker, Slider };
  Q_ENUM(Kind)

  /// `name` identifies the part; `text` is what a label shows and what a control is for.
  DisplaySettingsPart(Kind kind, QString name, QString text, const QRectF& frame)
      : kind_(kind), name_(std::move(name)), text_(std::move(text)), frame_(frame) {}

  [[nodiscard]] Kind kind() const { return kind_; }
  [[nodiscard]] QString name() const { return name_; }
  [[nodiscard]] QString text() const { return text_; }
  void setText(const QString& text);
  [[nodiscard]] QRectF frame() const { return frame_; }
  void moveTo(QPointF position);

  /// The state of the one control that a part of that kind draws; null for the others.
  [[nodiscard]] SegmentedControl* segments() const { return segments_; }
  [[nodiscard]] Slider* slider() const { return slider_; }

 signals:
  void changed();

 private:
  friend class DisplaySettingsParts;

  Kind kind_;
  QString name_;
  QString text_;
  QRectF frame_;
  SegmentedControl* segments_ = nullptr;
  Slider* slider_ = nullptr;
};

/// The parts of a screen in the order in which they were added, which is the order of Tab too; rows
/// with the one role "part".
class DisplaySettingsParts : public QAbstractListModel {
  Q_OBJECT

 public:
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  [[nodiscard]] int count() const { return rowCount(); }
  /// The part at `position`, from 0; null where there is none.
  [[nodiscard]] DisplaySettingsPart* at(int position) const;
  DisplaySettingsPart* addLabel(const QString& name, const QString& text, const QRectF& frame);
  void addSegments(const QString& name, const QString& text, const QRectF& frame,
                   SegmentedControl* segments);
  void addPicker(const QString& name, const QString& text, const QRectF& frame);
  void addSlider(const QString& name, const QString& text, const QRectF& frame, Slider* slider);
  /// Those behind it move up by one; nothing happens where there is none.
  void remove(int position);

 private:
  DisplaySettingsPart* add(std::unique_ptr<DisplaySettingsPart> part);

  std::vector<std::unique_ptr<DisplaySettingsPart>> parts_;
};

}  // namespace veltramoor
