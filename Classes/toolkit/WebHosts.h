// The hosts that matter to what the site's pages may reach.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace veltramoor {

/// Each is read anew, for the person may change it while pages are on show. Main thread only.
class WebHosts : public QObject {
  Q_OBJECT

 public:
  static WebHosts& sharedInstance();

  /// The hosts that the application itself shows pages of, as configured: the site, its forum and
  /// the movie database.
  Q_INVOKABLE [[nodiscard]] QStringList own() const;
  /// The person's remote client, as typed; "" while none is set up.
  Q_INVOKABLE [[nodiscard]] QString remote() const;

 private:
  friend class SharedInstances;

  WebHosts() = default;

  mutable QString lastRemote_;
};

}  // namespace veltramoor
