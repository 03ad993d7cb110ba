// The "Loading..." overlay as one list uses it.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

/// All screens share the overlay: a page that comes late, perhaps after a login to another site,
/// must not take it from the screen that waits now. Main thread only.
class ListOverlay : public QObject {
  Q_OBJECT

 public:
  ListOverlay();

  /// Shows the overlay over the window.
  void show(const QString& text);
  /// Lets the person go on while it is shown.
  void offerGoingOn();
  /// Hides it, unless another screen has shown it since.
  void hide();

 signals:
  /// The person's choice.
  void wentOn();
  /// Nobody shows it any more.
  void hidden();

 private:
  int showing_ = 0;
};

}  // namespace veltramoor
