// A window with nothing in it, shown as the application shows its own: what a start costs at least.
#include <QtQml/qqmlextensionplugin.h>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(EmptyWindowPlugin)

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QQmlApplicationEngine engine;
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/EmptyWindow/Main.qml")));
  auto* window = engine.rootObjects().isEmpty()
                     ? nullptr
                     : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
  if (window == nullptr) {
    return 1;
  }
  QObject::connect(
      window, &QQuickWindow::frameSwapped, window,
      [] {
        std::puts("first frame");
        std::fflush(stdout);
      },
      static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
  return QGuiApplication::exec();
}
