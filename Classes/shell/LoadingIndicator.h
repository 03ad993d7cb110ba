// The shared "Loading..." overlay.
#pragma once

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <chrono>
#include <functional>

#include "toolkit/View.h"

namespace veltramoor {

/// Shorter waits cannot be tapped away: the second tap of an impatient finger means what lies
/// below.
inline constexpr std::chrono::seconds kPatience{3};

/// A rounded box with a spinning wheel and a text, centred on a view. There is one for the whole
/// application; nobody owns it. Main thread only, but for `sharedInstance`.
class LoadingIndicator : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QString text READ shownText NOTIFY changed)
  Q_PROPERTY(QString hint READ hint NOTIFY changed)
  Q_PROPERTY(bool endable READ isEndable NOTIFY changed)
  Q_PROPERTY(QRectF boxFrame READ boxFrame NOTIFY changed)
  Q_PROPERTY(QRectF wheelFrame READ wheelFrame NOTIFY changed)
  Q_PROPERTY(QRectF labelFrame READ labelFrame NOTIFY changed)

 public:
  /// Created on first use. Every call resets parent view, offset and string, and leaves what is on
  /// show alone: a caller sets all three and then shows, or just hides.
  static LoadingIndicator& sharedInstance();

  [[nodiscard]] View* parentView() const { return parentView_; }
  void setParentView(View* view) { parentView_ = view; }
  /// Vertical shift from the parent's centre in points, positive downwards.
  [[nodiscard]] int offset() const { return offset_; }
  void setOffset(int points) { offset_ = points; }
  [[nodiscard]] QString string() const { return string_; }
  void setString(const QString& text) { string_ = text; }

  /// Shows the box on `parentView`; already shown, it takes the new text and offset and stays on
  /// the view it was shown on.
  void showLoadingIndicators();
  void hideLoadingIndicators();

  /// A line below the box, for as long as the box is shown.
  [[nodiscard]] QString hint() const { return hint_; }
  void setHint(const QString& text);

  /// Lets the person end the wait that the box stands for: once it has lasted for `kPatience` the
  /// hint says so, and a tap on the box, or the Escape key, calls `end`, once. The offer goes with
  /// the box, when the box is shown for something else, and with an empty `end`.
  void offerEnd(std::function<void()> end);
  [[nodiscard]] bool isEndable() const { return endable_; }
  /// The person's tap; nothing while the wait cannot be ended.
  Q_INVOKABLE void endWait();

  [[nodiscard]] bool isShown() const { return shown_; }
  /// What the label reads; changes only when shown.
  [[nodiscard]] QString shownText() const { return shownText_; }
  /// The box in its parent's coordinates; wheel and label in the box's. In points.
  [[nodiscard]] QRectF boxFrame() const { return boxFrame_; }
  [[nodiscard]] QRectF wheelFrame() const { return wheelFrame_; }
  [[nodiscard]] QRectF labelFrame() const { return labelFrame_; }

 signals:
  void changed();

 protected:
  LoadingIndicator() = default;
  void reset();

 private:
  void sizeFrame();
  void withdrawOffer();

  QPointer<View> parentView_;
  int offset_ = 0;
  QString string_;
  bool shown_ = false;
  QPointer<View> shownOn_;
  QString shownText_;
  int shownOffset_ = 0;
  QString hint_;
  std::function<void()> end_;
  // Counts the offers, so that the time of an old one is not taken for the latest one's.
  int offer_ = 0;
  bool endable_ = false;
  QRectF boxFrame_;
  QRectF wheelFrame_;
  QRectF labelFrame_;
};

}  // namespace veltramoor
