// The row that asks for the next page.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

class LoadMoreItemView : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString pageLbl READ pageLbl WRITE setPageLbl NOTIFY changed)
  Q_PROPERTY(bool userInteractionEnabled READ isUserInteractionEnabled NOTIFY changed)

 public:
  using QObject::QObject;

  /// Date of the last torrent of the latest page; shrinks to fit its row.
  [[nodiscard]] QString pageLbl() const { return pageLbl_; }
  void setPageLbl(const QString& text) {
    if (text != pageLbl_) {
      pageLbl_ = text;
      emit changed();
    }
  }
  /// Whether the row takes touches.
  [[nodiscard]] bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
  void setUserInteractionEnabled(bool enabled) {
    if (enabled != userInteractionEnabled_) {
      userInteractionEnabled_ = enabled;
      emit changed();
    }
  }

 signals:
  void changed();

 private:
  QString pageLbl_;
  bool userInteractionEnabled_ = true;
};

}  // namespace veltramoor
