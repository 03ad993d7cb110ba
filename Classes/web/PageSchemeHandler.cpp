#include "web/PageSchemeHandler.h"

#include <QBuffer>
#include <QWebEngineUrlRequestJob>

namespace veltramoor {
namespace {

// A script that writes `html` where it stands.
QByteArray writingScript(const QString& html) {
  QString literal;
  literal.reserve(html.size() + html.size() / 8);
  for (const QChar c : html) {
    switch (c.unicode()) {
      case u'"':
      case u'\\':
        literal += QLatin1Char('\\');
        literal += c;
        break;
      case u'\n':
        literal += QLatin1String("\\n");
        break;
      case u'\r':
        literal += QLatin1String("\\r");
        break;
      case 0x2028:
        literal += QLatin1String("\\u2028");
        break;
      case 0x2029:
        literal += QLatin1String("\\u2029");
        break;
      default:
        literal += c;
    }
  }
  return "document.currentScript.remove();document.write(\"" + literal.toUtf8() + "\");";
}

bool sameOrigin(const QUrl& a, const QUrl& b) {
  const auto port = [](const QUrl& url) {
    return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
  };
  return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

}  // namespace

QString PageSchemeHandler::shortPageFor(const QString& id, const QString& html, const QUrl& base) {
  pages_.insert(id, {html, base});
  return doctype_.match(html.left(4096)).captured(1) +
         QStringLiteral("<script src=\"%1:%2\"></script>").arg(QLatin1String(kScheme), id);
}

void PageSchemeHandler::requestStarted(QWebEngineUrlRequestJob* job) {
  const auto page = pages_.constFind(job->requestUrl().path());
  // A page of another origin could read what a script of this one defines.
  if (page == pages_.constEnd() || !sameOrigin(job->initiator(), page->base)) {
    job->fail(QWebEngineUrlRequestJob::RequestDenied);
    return;
  }
  auto* script = new QBuffer(job);
  script->setData(writingScript(page->html));
  job->reply("application/javascript;charset=utf-8", script);
}

}  // namespace veltramoor
