// One of a few segments.
#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

namespace veltramoor {

/// Titles side by side of which one, or none, is selected.
class SegmentedControl : public QObject {
  Q_OBJECT
  Q_PROPERTY(QStringList titles READ titles CONSTANT)
  Q_PROPERTY(int selectedSegment READ selectedSegment NOTIFY changed)
  Q_PROPERTY(QList<bool> enabledSegments READ enabledSegments NOTIFY changed)

 public:
  static constexpr int kNoSegment = -1;

  explicit SegmentedControl(const QStringList& titles)
      : titles_(titles), enabled_(titles.size(), true) {}

  [[nodiscard]] QStringList titles() const { return titles_; }
  [[nodiscard]] int selectedSegment() const { return selected_; }
  /// Changes what is shown without telling anybody that the person chose it.
  void setSelectedSegment(int segment);
  [[nodiscard]] QList<bool> enabledSegments() const { return enabled_; }
  void setEnabled(int segment, bool enabled);

  /// The choice of the person, of the segment already shown as well: what is shown need not be what
  /// is stored. A disabled segment cannot be chosen.
  Q_INVOKABLE void choose(int segment);

 signals:
  void changed();
  void valueChanged();

 private:
  QStringList titles_;
  QList<bool> enabled_;
  int selected_ = kNoSegment;
};

}  // namespace veltramoor
