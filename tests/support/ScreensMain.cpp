// The screens' tests run in an application without a display, with state of their own, and fail on
// any warning that Qt or QML has to say.
#include <gtest/gtest.h>

#include <QtQml/qqmlextensionplugin.h>
#include <QGuiApplication>

#include "support/TemporaryFolder.h"
#include "toolkit/EngineMessages.h"
#include "toolkit/SharedInstances.h"

Q_IMPORT_QML_PLUGIN(VeltramoorPlugin)

// The web engine frees some of its own objects with another size than it asked for; nothing of ours
// is on those stacks. Asked by AddressSanitizer before main; without it nobody does.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() { return "new_delete_type_mismatch=0"; }

namespace {

void failOnWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg || veltramoor::isEngineMessage(message)) {
    return;
  }
  ADD_FAILURE() << "on the log: " << message.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const veltramoor::test::TemporaryFolder folder;
  for (const char* name :
       {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(name, folder.path().c_str());
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  // Read once, at the engine's first use in the process: invented hosts lead here.
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS",
          "--log-level=3 --host-resolver-rules=\"MAP *.example 127.0.0.1\"");
  qInstallMessageHandler(failOnWarnings);
  // What the program does.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QGuiApplication application(argc, argv);
  const veltramoor::SharedInstances sharedInstances;
  return RUN_ALL_TESTS();
}
