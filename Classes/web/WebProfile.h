// How pages are fetched and kept: the web engine's profile of one user agent.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QPointer>
#include <QQuickWebEngineProfile>
#include <QUrl>
#include <QVariantList>

#include "web/CookieMirror.h"
#include "web/PageSchemeHandler.h"
#include "web/ReachGuard.h"

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
  /// `hosts`: has `own()`, hosts that the pages may reach, and `remote()`, one that they may not;
  /// null for pages that reach no server but their own.
  WebProfile(const QString& userAgent, QObject* jar, QObject* hosts);

  [[nodiscard]] QQuickWebEngineProfile* engine() { return &engine_; }

  /// Hands the application's cookies to the engine; `cookiesReady` follows, perhaps at once.
  Q_SLOT void pushCookies();
  Q_INVOKABLE QString shortPageFor(const QString& id, const QString& html, const QUrl& base);
  /// Whether pages may go to `url`, or be led there by a server, as a whole or in a frame.
  /// Everything else that they ask for is judged by the profile itself.
  Q_INVOKABLE [[nodiscard]] bool mayReach(const QUrl& url) const {
    return veltramoor::mayReach(url, reach());
  }
  Q_INVOKABLE void forgetPage(const QString& id) { pages_.forget(id); }

 signals:
  void cookiesReady();

 private:
  [[nodiscard]] PageReach reach() const;

  const bool ownServerOnly_;
  const QPointer<QObject> hosts_;
  // The server of the page that was shown last.
  QString ownServer_;
  PageSchemeHandler pages_;
  ReachGuard guard_{[this] { return reach(); }};
  QQuickWebEngineProfile engine_;
  CookieMirror cookies_;
};

}  // namespace veltramoor
