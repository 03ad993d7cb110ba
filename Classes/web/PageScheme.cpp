// Makes the application's own scheme known to the engine, which must hear of it before it starts.
#include <QCoreApplication>
#include <QWebEngineUrlScheme>

#include "web/PageSchemeHandler.h"

namespace veltramoor {
namespace {

// The engine takes schemes only before its first use, which is the first view: this runs when the
// plugin is loaded.
void registerScheme() {
  QWebEngineUrlScheme scheme(PageSchemeHandler::kScheme);
  scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
  scheme.setFlags(QWebEngineUrlScheme::SecureScheme |
                  QWebEngineUrlScheme::ContentSecurityPolicyIgnored);
  QWebEngineUrlScheme::registerScheme(scheme);
}
Q_COREAPP_STARTUP_FUNCTION(registerScheme)

}  // namespace
}  // namespace veltramoor
