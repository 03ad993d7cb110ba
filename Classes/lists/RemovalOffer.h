// The offer to undo a removal, for as long as it stands.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>

#include "platform/ArrayPlace.h"

namespace veltramoor {

/// After an entry of a stored list has been removed: says so, and offers to put it back. Only the
/// newest removal can be undone. Main thread only.
class RemovalOffer : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool open READ isOpen NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY textChanged)

 public:
  /// How long it stands.
  static constexpr std::chrono::milliseconds kDuration{5000};
  /// Stores `entry` again; false when the store could not be written.
  using PutBack = std::function<bool(const ArrayPlace& place, const std::string& entry)>;

  explicit RemovalOffer(PutBack putBack);

  /// Offers to put back `entry`, which was removed from `place`, in place of any earlier one.
  /// `name`: what the person knows it by.
  void make(ArrayPlace place, std::string entry, const QString& name);
  void end();
  /// Puts the entry back. Refused, it can be tried again for as long once more.
  Q_INVOKABLE void undo();

  [[nodiscard]] bool isOpen() const { return timer_.isActive(); }
  /// "Removed NAME", also for a moment after the end.
  [[nodiscard]] QString text() const { return text_; }

 signals:
  void changed();
  void textChanged();
  /// After the entry has been stored again.
  void undone();

 private:
  PutBack putBack_;
  ArrayPlace place_;
  std::string entry_;
  QString text_;
  QTimer timer_;
};

}  // namespace veltramoor
