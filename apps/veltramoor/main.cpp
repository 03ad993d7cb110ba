// Veltramoor with its screens.
#include <QtQml/qqmlextensionplugin.h>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <cstdio>

#include "platform/Bundle.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateFile.h"
#include "shell/QmlImportPaths.h"
#include "shell/VeltramoorAppDelegate.h"

Q_IMPORT_QML_PLUGIN(VeltramoorPlugin)

namespace {

using veltramoor::SiteConfiguration;

// The file's values, and over them the command line's.
SiteConfiguration configurationFrom(const QCommandLineParser& parser) {
  std::optional<std::string> problem;
  SiteConfiguration configuration =
      SiteConfiguration::load(SiteConfiguration::defaultFile(), &problem);
  if (problem) {
    std::fprintf(stderr, "veltramoor: %s\n", problem->c_str());
  }
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    if (parser.isSet(QString::fromStdString(name))) {
      configuration.*field = parser.value(QString::fromStdString(name)).toStdString();
    }
  }
  return configuration;
}

// "320x568", or an invalid size.
QSize sizeFrom(const QString& text) {
  const QStringList sides = text.split(QLatin1Char('x'));
  return sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
}

// Says once, on standard output, that the window has been painted: for whoever measures the start.
void reportFirstFrame(QQuickWindow* window) {
  QObject::connect(
      window, &QQuickWindow::frameSwapped, window,
      [] {
        std::puts("first frame");
        std::fflush(stdout);
      },
      static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

}  // namespace

int main(int argc, char** argv) {
  // The web engine, which comes with the first web page, draws with contexts of its own.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("veltramoor"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Veltramoor"));
  QGuiApplication::setApplicationVersion(QString::fromStdString(veltramoor::Bundle::version()));

  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Browse a torrent index and push torrents to your computer."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOption({QStringLiteral("window-size"),
                    QStringLiteral("Size of the window in points, for example 360x720."),
                    QStringLiteral("WxH")});
  parser.addOption({QStringLiteral("report-first-frame"),
                    QStringLiteral("Print \"first frame\" when the window has been painted.")});
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    parser.addOption({QString::fromStdString(name),
                      QStringLiteral("Overrides %1 of the configuration file.")
                          .arg(QString::fromStdString(name)),
                      QStringLiteral("value")});
  }
  parser.process(application);
  SiteConfiguration::setCurrent(configurationFrom(parser));

  try {
    veltramoor::VeltramoorAppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    int status = 1;
    {
      QQmlApplicationEngine engine;
      for (const QString& path : veltramoor::qmlImportPaths()) {
        engine.addImportPath(path);
      }
      if (const QSize size = sizeFrom(parser.value(QStringLiteral("window-size")));
          size.isValid()) {
        engine.setInitialProperties(
            {{QStringLiteral("width"), size.width()}, {QStringLiteral("height"), size.height()}});
      }
      engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Veltramoor/Main.qml")));
      auto* window = engine.rootObjects().isEmpty()
                         ? nullptr
                         : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
      if (window != nullptr) {
        if (parser.isSet(QStringLiteral("report-first-frame"))) {
          reportFirstFrame(window);
        }
        status = QGuiApplication::exec();
      }
    }
    delegate.applicationWillTerminate();
    return status;
  } catch (const veltramoor::StateFileError& error) {
    std::fprintf(stderr, "veltramoor: %s\n", error.what());
    return 1;
  }
}
