// One object's wait, as the overlay that all screens share shows it.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include "shell/overlay/LoadingIndicator.h"
#include "toolkit/View.h"

namespace veltramoor {

/// Shows the overlay while something is waited for, and hides it when that has come, or with its
/// own end. All screens share the overlay: one that another wait has taken meanwhile is left alone,
/// so that what comes late takes nothing from the screen that waits now. Main thread only.
class Wait final : public QObject {
  Q_OBJECT

 public:
  /// By the loading overlay, or by another one.
  Wait();
  explicit Wait(LoadingIndicator& overlay);
  ~Wait() override;

  /// Shows the overlay over `view`, `offset` points below its centre.
  void begin(View* view, const QString& text, int offset = 0);
  /// Makes the overlay on show this wait's, whoever has shown it.
  void takeOver();
  /// Lets the person go on, once the wait has lasted for the overlay's patience.
  void offerGoingOn();
  /// Hides the overlay if it is still this wait's.
  void end();
  /// Whether the overlay on show is this wait's.
  [[nodiscard]] bool isShown() const;

 signals:
  /// The person's choice. The wait goes on until somebody ends it.
  void wentOn();
  /// The overlay has gone, whosever it was: whoever still waits may want it back.
  void overlayHidden();

 private:
  // Null once the overlay has gone: what still waits at the program's end may go after it.
  QPointer<LoadingIndicator> overlay_;
};

}  // namespace veltramoor
