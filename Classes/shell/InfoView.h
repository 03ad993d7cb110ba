// The information panel of the login screen.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

class InfoView : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString versionLbl READ versionLbl NOTIFY changed)

 public:
  using QObject::QObject;

  [[nodiscard]] QString versionLbl() const { return versionLbl_; }
  /// Shows the bundle's version, and nothing but it.
  void updateVersion();

 signals:
  void changed();

 private:
  QString versionLbl_;
};

}  // namespace veltramoor
