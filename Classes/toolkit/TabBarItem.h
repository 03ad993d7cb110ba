// What a screen shows of itself in the tab bar.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

class TabBarItem : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString image READ image NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)

 public:
  using QObject::QObject;

  [[nodiscard]] QString title() const { return title_; }
  /// File name of the icon.
  [[nodiscard]] QString image() const { return image_; }
  [[nodiscard]] int tag() const { return tag_; }
  void set(const QString& title, const QString& image, int tag) {
    title_ = title;
    image_ = image;
    tag_ = tag;
    emit changed();
  }

  /// A disabled item cannot be chosen.
  [[nodiscard]] bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled) {
    if (enabled != enabled_) {
      enabled_ = enabled;
      emit changed();
    }
  }

 signals:
  void changed();

 private:
  QString title_;
  QString image_;
  int tag_ = 0;
  bool enabled_ = true;
};

}  // namespace veltramoor
