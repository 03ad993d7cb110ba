// The strip at the top of every list.
#pragma once

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>

#include "toolkit/Button.h"

namespace veltramoor {

/// What a list does for its header's buttons. A list answers only those that it shows.
class HeaderViewDelegate {
 public:
  virtual ~HeaderViewDelegate() = default;
  /// A user's name; absent for the signed-in user.
  virtual void didSelectProfile(const std::optional<QString>& username) = 0;
  virtual void didRefresh() = 0;
  virtual void didSettings() {}
  virtual void didSearch() {}
  virtual void didFilters() {}
};

/// From `top` to `bottom`, behind the header's texts and buttons.
struct Gradient {
  Q_GADGET
  Q_PROPERTY(QColor top MEMBER top)
  Q_PROPERTY(QColor bottom MEMBER bottom)

 public:
  QColor top{0x44, 0x44, 0x44};
  QColor bottom{0x2b, 0x2b, 0x2b};
  friend bool operator==(const Gradient&, const Gradient&) = default;
};

/// User name, status and buttons. 70 points high, of which the lower part is a shadow that lets
/// touches through to the table.
class HeaderView : public QObject {
  Q_OBJECT
  Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
  Q_PROPERTY(QString ratioLbl READ ratioLbl NOTIFY changed)
  Q_PROPERTY(veltramoor::Button* usernameLbl READ usernameLbl CONSTANT)
  Q_PROPERTY(veltramoor::Button* refreshBtn READ refreshBtn CONSTANT)
  Q_PROPERTY(veltramoor::Button* searchBtn READ searchBtn CONSTANT)
  Q_PROPERTY(veltramoor::Button* settingsBtn READ settingsBtn CONSTANT)
  Q_PROPERTY(veltramoor::Button* filtersBtn READ filtersBtn CONSTANT)
  Q_PROPERTY(veltramoor::Gradient gradient READ gradient CONSTANT)
  Q_PROPERTY(double touchHeight READ touchHeight CONSTANT)

 public:
  static constexpr double kHeight = 70;
  static constexpr double kTouchHeight = 45;

  /// All buttons but user name and refresh start hidden.
  HeaderView();

  [[nodiscard]] QRectF frame() const { return frame_; }
  void setFrame(const QRectF& frame);
  [[nodiscard]] QString ratioLbl() const { return ratioLbl_; }
  void setRatioLbl(const QString& text);
  [[nodiscard]] Button* usernameLbl() { return &usernameLbl_; }
  [[nodiscard]] Button* refreshBtn() { return &refreshBtn_; }
  [[nodiscard]] Button* searchBtn() { return &searchBtn_; }
  [[nodiscard]] Button* settingsBtn() { return &settingsBtn_; }
  [[nodiscard]] Button* filtersBtn() { return &filtersBtn_; }
  [[nodiscard]] Gradient gradient() const { return gradient_; }
  [[nodiscard]] static double touchHeight() { return kTouchHeight; }

  /// Not owned; null for none.
  void setParentDelegate(HeaderViewDelegate* delegate) { parentDelegate_ = delegate; }

  /// Whether a touch at that point of the header is the header's.
  [[nodiscard]] Q_INVOKABLE static bool pointInside(const QPointF& point);

  Q_INVOKABLE void viewProfile();
  Q_INVOKABLE void refresh();
  Q_INVOKABLE void filters();
  Q_INVOKABLE void settings();
  Q_INVOKABLE void search();

 signals:
  void changed();

 private:
  QRectF frame_;
  QString ratioLbl_;
  Button usernameLbl_;
  Button refreshBtn_;
  Button searchBtn_;
  Button settingsBtn_;
  Button filtersBtn_;
  Gradient gradient_;
  HeaderViewDelegate* parentDelegate_ = nullptr;
};

}  // namespace veltramoor
