// The web engine's profiles, made when a page first needs them.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "web/WebProfile.h"

namespace veltramoor {

/// They belong to the application's cookies and go with them, which is after every page of theirs
/// (a view that is waiting to be deleted outlives the QML engine that made it) and before the
/// application object.
class WebProfiles : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// The profile of that user agent and key; `jar` and `hosts` as WebProfile says, the same ones in
  /// every call. Pages of one key share what the engine remembers, logins to servers among it;
  /// those of any key but "" reach their own server alone.
  Q_INVOKABLE veltramoor::WebProfile* profile(const QString& userAgent, const QString& key,
                                              QObject* jar, QObject* hosts);
};

}  // namespace veltramoor
