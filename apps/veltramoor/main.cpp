// Veltramoor with its screens.
#include <QtQml/qqmlextensionplugin.h>
#include <malloc.h>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QScreen>
#include <QStyleHints>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "SelfTest.h"
#include "platform/Alerts.h"
#include "platform/Bundle.h"
#include "platform/ExchangeLog.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateFile.h"
#include "platform/UrlLoading.h"
#include "shell/QmlImportPaths.h"
#include "shell/VeltramoorAppDelegate.h"
#include "shell/WindowSize.h"
#include "toolkit/DesktopWishes.h"
#include "toolkit/EngineMessages.h"
#include "toolkit/SharedInstances.h"

Q_IMPORT_QML_PLUGIN(VeltramoorPlugin)

namespace {

using veltramoor::SiteConfiguration;

// The file's values, and over them the command line's.
SiteConfiguration configurationFrom(const QCommandLineParser& parser) {
  std::vector<std::string> problems;
  SiteConfiguration configuration =
      SiteConfiguration::load(SiteConfiguration::defaultFile(), &problems);
  for (const std::string& problem : problems) {
    std::fprintf(stderr, "veltramoor: %s\n", problem.c_str());
  }
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    if (parser.isSet(QString::fromStdString(name))) {
      configuration.*field = parser.value(QString::fromStdString(name)).toStdString();
    }
  }
  return configuration;
}

// What is wrong with an option of the command line, the value itself left out.
std::optional<std::string> validationErrorIn(const QCommandLineParser& parser) {
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    const QString option = QString::fromStdString(name);
    const auto wrong = SiteConfiguration::validationError(name, parser.value(option).toStdString());
    if (parser.isSet(option) && !wrong.empty()) {
      return "--" + name + " " + std::string(wrong);
    }
  }
  return std::nullopt;
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

// The window in its engine; null when it could not be made.
QQuickWindow* loadWindow(QQmlApplicationEngine& engine, const QCommandLineParser& parser) {
  for (const QString& path : veltramoor::qmlImportPaths()) {
    engine.addImportPath(path);
  }
  const QSize asked = sizeFrom(parser.value(QStringLiteral("window-size")));
  if (const auto size = asked.isValid() ? asked : veltramoor::storedWindowSize()) {
    // The screen may be a smaller one by now.
    const QSize seen = size->boundedTo(QGuiApplication::primaryScreen()->availableSize());
    engine.setInitialProperties(
        {{QStringLiteral("width"), seen.width()}, {QStringLiteral("height"), seen.height()}});
  }
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Veltramoor/Main.qml")));
  return engine.rootObjects().isEmpty()
             ? nullptr
             : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
}

// Views that were dropped and wait to be deleted: without their engine they must not meet what
// still comes for them.
void endDroppedViews() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

// Ends the program. Work that a server or a lock still holds up must not meet what is torn down at
// the end; everything that matters is on the disk by then.
int terminate(veltramoor::VeltramoorAppDelegate& delegate, int status) {
  if (!delegate.applicationWillTerminate()) {
    std::fflush(nullptr);
    std::_Exit(status);
  }
  return status;
}

int run(const QCommandLineParser& parser) {
  if (parser.isSet(QStringLiteral("verbose"))) {
    veltramoor::UrlLoading::sharedInstance().setExchangeLog(&veltramoor::writeToStandardError);
  }
  veltramoor::VeltramoorAppDelegate delegate;
  delegate.applicationDidFinishLaunching();
  int status = 1;
  {
    QQmlApplicationEngine engine;
    QQuickWindow* window = loadWindow(engine, parser);
    if (window != nullptr && parser.isSet(QStringLiteral("self-test"))) {
      status = veltramoor::runSelfTest(delegate, engine, *window) == 0 ? 0 : 1;
    } else if (window != nullptr) {
      if (parser.isSet(QStringLiteral("report-first-frame"))) {
        reportFirstFrame(window);
      }
      status = QGuiApplication::exec();
      if (!parser.isSet(QStringLiteral("window-size")) &&
          window->windowStates() == Qt::WindowNoState) {
        veltramoor::storeWindowSize(window->size());
      }
    }
    endDroppedViews();
  }
  return terminate(delegate, status);
}

// A window that says why the application cannot open, and nothing else.
int showWhyNot(const QCommandLineParser& parser, const std::string& reason) {
  veltramoor::Preferences nothing(std::nullopt);
  veltramoor::Preferences::setSharedInstance(&nothing);
  veltramoor::VeltramoorAppDelegate delegate;
  delegate.applicationDidFinishLaunching(
      std::make_shared<veltramoor::ViewController>(QStringLiteral("Blank.qml")));
  veltramoor::Alert alert;
  alert.title = "Veltramoor cannot open";
  alert.message = reason;
  alert.buttons = {"Ok"};
  alert.clicked = [](int) { QCoreApplication::exit(1); };
  veltramoor::Alerts::show(std::move(alert));
  {
    QQmlApplicationEngine engine;
    if (loadWindow(engine, parser) != nullptr) {
      QGuiApplication::exec();
    }
    endDroppedViews();
  }
  return terminate(delegate, 1);
}

QtMessageHandler handlerOfQt = nullptr;

void dropEngineMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  // What the engine tells of the graphics it has found.
  const bool ofContext =
      context.category != nullptr && std::string_view(context.category) == "qt.webenginecontext";
  if (!ofContext && !veltramoor::isEngineMessage(message)) {
    handlerOfQt(type, context, message);
  }
}

bool isSelfTest(int argc, char** argv) {
  return std::any_of(argv, argv + argc, [](const char* argument) {
    return std::string_view(argument) == "--self-test";
  });
}

}  // namespace

int main(int argc, char** argv) {
  // The workers take turns more than they compete: one heap for all keeps less memory unused.
  ::mallopt(M_ARENA_MAX, 1);
  std::optional<veltramoor::SelfTestSurroundings> selfTest;
  if (isSelfTest(argc, argv)) {
    selfTest.emplace();
  } else {
    handlerOfQt = qInstallMessageHandler(dropEngineMessages);
  }
  // What the web engine says of its own inside (a transfer to the graphics process that failed and
  // is tried again, say) is nothing that a person can act on.
  if (qEnvironmentVariableIsEmpty("QTWEBENGINE_CHROMIUM_FLAGS")) {
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--log-level=3");
  }
  // The web engine, which comes with the first web page, draws with contexts of its own.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QGuiApplication application(argc, argv);
  const veltramoor::SharedInstances sharedInstances;
  // Sharper at one pixel a point, and without the large glyph textures of the other kind.
  QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
  // What names no font of its own would have the system's opened as well, half a megabyte of it.
  QGuiApplication::setFont(QFont(QStringLiteral("Liberation Sans")));
  // A caret that blinks would have a battery draw frames while nothing changes.
  QGuiApplication::styleHints()->setCursorFlashTime(0);
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
  parser.addOption({QStringLiteral("verbose"),
                    QStringLiteral("Print a line on each exchange to standard error.")});
  parser.addOption({QStringLiteral("self-test"),
                    QStringLiteral("Show every screen once and say what is wrong with them.")});
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    parser.addOption({QString::fromStdString(name),
                      QStringLiteral("Overrides %1 of the configuration file.")
                          .arg(QString::fromStdString(name)),
                      QStringLiteral("value")});
  }
  parser.process(application);
  if (const auto wrong = validationErrorIn(parser)) {
    std::fprintf(stderr, "veltramoor: %s\n", wrong->c_str());
    return 2;
  }
  SiteConfiguration::setCurrent(configurationFrom(parser));
  const veltramoor::DesktopWishes desktopWishes(QDBusConnection::sessionBus());

  try {
    return run(parser);
  } catch (const veltramoor::StateFileError& error) {
    std::fprintf(stderr, "veltramoor: %s\n", error.what());
    return showWhyNot(parser, error.what());
  }
}
