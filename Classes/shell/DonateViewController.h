// The donation picture of the login screen.
#pragma once

#include <QRectF>
#include <QUrl>
#include <functional>

#include "toolkit/ViewController.h"

namespace veltramoor {

/// One picture that links to the donation page, as a line of HTML for a rich-text label: a whole
/// web engine would be too much for it.
class DonateViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(QRectF frame READ frame CONSTANT)
  Q_PROPERTY(QString html READ html CONSTANT)
  Q_PROPERTY(bool configured READ isConfigured CONSTANT)

 public:
  /// Opens an address outside the application, the system's way unless set; false when it could
  /// not.
  using OpenUrl = std::function<bool(const QUrl&)>;
  static constexpr int kLinkTapped = 0;

  explicit DonateViewController(const QRectF& frame);

  /// In points of a screen 320 wide; wider ones centre it.
  [[nodiscard]] QRectF frame() const { return frame_; }
  [[nodiscard]] QString html() const { return html_; }
  /// Whether there is a page for the picture to lead to; without one nobody is to see it.
  [[nodiscard]] bool isConfigured() const { return configured_; }
  void setOpenUrl(OpenUrl openUrl) { openUrl_ = std::move(openUrl); }

  /// Whether the label itself may load `url`; a tapped link goes to the system instead.
  Q_INVOKABLE bool shouldStartLoadWithRequest(const QUrl& url, int navigationType);
  /// The picture was tapped.
  Q_INVOKABLE void donate();

 private:
  QRectF frame_;
  QString html_;
  bool configured_;
  OpenUrl openUrl_;
};

}  // namespace veltramoor
