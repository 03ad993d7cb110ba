// Pages that the application made itself, whatever their size.
#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

namespace veltramoor {

/// The engine's own way to show HTML passes it through a URL of at most 2 MB. Here the engine is
/// given a short page instead, with the right base address, whose one script writes the real page
/// while the short one is parsed: scripts, styles and events of the page work as in any other.
class PageSchemeHandler : public QWebEngineUrlSchemeHandler {
  Q_OBJECT

 public:
  using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;

  static constexpr const char* kScheme = "veltramoor-page";

  /// Keeps `html` as page `id`, in place of an earlier one, for pages of `base`'s origin; returns
  /// the short page to load with that base.
  [[nodiscard]] QString shortPageFor(const QString& id, const QString& html, const QUrl& base);
  void forget(const QString& id) { pages_.remove(id); }

  void requestStarted(QWebEngineUrlRequestJob* job) override;

 private:
  struct Page {
    QString html;
    QUrl base;
  };
  QHash<QString, Page> pages_;
  // What decides how a page is laid out must stand in the short one: a written one comes too late.
  QRegularExpression doctype_{
      QStringLiteral("\\A(?:\\s|\\x{FEFF}|<!--.*?-->|<\\?[^>]*>)*(<!doctype[^>]*>)"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption};
};

}  // namespace veltramoor
