// What a person hears who does not see the screen.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

/// Tells a screen reader what has happened, and where the focus is when the item that has it is not
/// the one to be read. Main thread only.
class Announcements : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString text READ text NOTIFY textChanged)

 public:
  static Announcements& sharedInstance();

  /// The latest; a view shows it to screen readers alone, as an alert.
  [[nodiscard]] QString text() const { return text_; }
  /// Says `text` once more even when it is the latest already; "" says nothing.
  void say(const QString& text);
  void clear();
  /// Has the reader take `item` for what has the focus.
  Q_INVOKABLE void tellFocus(QObject* item);

 signals:
  void textChanged();

 private:
  friend class SharedInstances;

  Announcements() = default;
  QString text_;
};

}  // namespace veltramoor
