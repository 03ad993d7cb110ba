// The shared "Loading..." overlay.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>

#include "toolkit/View.h"

namespace veltramoor {

class Wait;

/// A rounded box with a spinning wheel and a text, centred on a view. There is one for the whole
/// application; nobody owns it. Main thread only, but for `sharedInstance`.
class LoadingIndicator : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QString text READ shownText NOTIFY changed)
  Q_PROPERTY(QString hint READ hint NOTIFY changed)
  Q_PROPERTY(bool canGoOn READ canGoOn NOTIFY changed)
  Q_PROPERTY(QRectF boxFrame READ boxFrame NOTIFY changed)
  Q_PROPERTY(QRectF wheelFrame READ wheelFrame NOTIFY changed)
  Q_PROPERTY(QRectF labelFrame READ labelFrame NOTIFY changed)

 public:
  /// For who is about to show it: every call resets parent view, offset and string, and leaves what
  /// is on show alone; a caller sets all three and then shows. Screens do so through a `Wait`.
  static LoadingIndicator& sharedInstance();
  /// The same object as it is, to be looked at.
  static LoadingIndicator& current();

  /// Nothing is offered for a wait that has not lasted for this long: the second tap of an
  /// impatient finger means what lies below. Three seconds, unless set otherwise.
  [[nodiscard]] std::chrono::milliseconds patience() const { return patience_; }
  void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }

  [[nodiscard]] View* parentView() const { return parentView_; }
  void setParentView(View* view) { parentView_ = view; }
  /// Vertical shift from the parent's centre in points, positive downwards.
  [[nodiscard]] int offset() const { return offset_; }
  void setOffset(int points) { offset_ = points; }
  [[nodiscard]] QString string() const { return string_; }
  void setString(const QString& text) { string_ = text; }

  /// Shows the box on `parentView`; already shown, it takes the new text and offset and stays on
  /// the view it was shown on. From then on it stands for nobody's wait.
  void showLoadingIndicators();
  void hideLoadingIndicators();
  /// Whose wait the box on show stands for; null when nobody took it on. Not owned.
  [[nodiscard]] const Wait* wait() const { return wait_; }
  void setWait(const Wait* wait) { wait_ = wait; }

  /// A line below the box, for as long as the box is shown.
  [[nodiscard]] QString hint() const { return hint_; }
  void setHint(const QString& text);

  /// Lets the person go on while what the box stands for is still under way: once the box has been
  /// up for `patience()` the hint says so, and a tap on it, or the Escape key, calls `goOn`, once.
  /// The offer goes with the box, and when the box is shown again.
  void offerGoingOn(std::function<void()> goOn);
  [[nodiscard]] bool canGoOn() const { return canGoOn_; }
  /// The person's tap; nothing while nothing is offered.
  Q_INVOKABLE void goOn();

  [[nodiscard]] bool isShown() const { return shown_; }
  /// What the label reads; changes only when shown.
  [[nodiscard]] QString shownText() const { return shownText_; }
  /// The box in its parent's coordinates; wheel and label in the box's. In points.
  [[nodiscard]] QRectF boxFrame() const { return boxFrame_; }
  [[nodiscard]] QRectF wheelFrame() const { return wheelFrame_; }
  [[nodiscard]] QRectF labelFrame() const { return labelFrame_; }

 signals:
  void changed();
  /// The box has gone: whoever still waits may want it back.
  void hidden();

 protected:
  LoadingIndicator();
  void reset();

 private:
  friend class SharedInstances;

  void sizeFrame();
  void withdrawOffer();
  void makeOffer();

  QPointer<View> parentView_;
  int offset_ = 0;
  QString string_;
  bool shown_ = false;
  QPointer<View> shownOn_;
  QString shownText_;
  int shownOffset_ = 0;
  const Wait* wait_ = nullptr;
  QElapsedTimer shownFor_;
  std::chrono::milliseconds patience_{3000};
  QTimer offerTimer_;
  QString hint_;
  std::function<void()> goOn_;
  bool canGoOn_ = false;
  QRectF boxFrame_;
  QRectF wheelFrame_;
  QRectF labelFrame_;
};

}  // namespace veltramoor
