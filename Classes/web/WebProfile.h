// How pages are fetched and kept: the web engine's profile of one user agent.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QQuickWebEngineProfile>
#include <QUrl>
#include <QVariantList>

#include "web/CookieMirror.h"
#include "web/PageSchemeHandler.h"

namespace veltramoor {

/// Keeps nothing on disk, takes no downloads; its cookies follow those of the application.
class WebProfile : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by WebProfiles")
  Q_PROPERTY(QQuickWebEngineProfile* engine READ engine CONSTANT)

 public:
  /// `jar`: has `cookies()`, a list of maps as CookieMirror has them, takes changes with
  /// `take(cookie)` and `drop(cookie)`, and may signal `pushRequested()`. It becomes the parent.
  WebProfile(const QString& userAgent, QObject* jar);

  [[nodiscard]] QQuickWebEngineProfile* engine() { return &engine_; }

  /// Hands the application's cookies to the engine; `cookiesReady` follows, perhaps at once.
  Q_SLOT void pushCookies();
  Q_INVOKABLE QString shortPageFor(const QString& id, const QString& html, const QUrl& base) {
    return pages_.shortPageFor(id, html, base);
  }
  Q_INVOKABLE void forgetPage(const QString& id) { pages_.forget(id); }

 signals:
  void cookiesReady();

 private:
  PageSchemeHandler pages_;
  QQuickWebEngineProfile engine_;
  CookieMirror cookies_;
};

}  // namespace veltramoor
