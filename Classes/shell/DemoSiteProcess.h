// The demo site, run for as long as the application runs.
#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <functional>
#include <vector>

namespace veltramoor {

/// Starts the `veltramoor-demo-site` that was built or installed beside the application. Main
/// thread only; the process ends with the application, however that ends.
class DemoSiteProcess : public QObject {
 public:
  /// Host and port once it listens; "" when it could not be started.
  using Started = std::function<void(const QString& host)>;

  /// One for the whole run: the site stays when the screen that started it has gone.
  static DemoSiteProcess& sharedInstance();

  [[nodiscard]] static bool isInstalled();
  /// A site that already listens is used again.
  void start(Started started);
  /// To be called before the application object goes.
  void stop();

 private:
  friend class SharedInstances;

  DemoSiteProcess();
  void readLine();
  void finish(const QString& host);

  QProcess process_;
  std::vector<Started> waiting_;
  QString host_;
};

}  // namespace veltramoor
