// Where the QML modules of the application are.
#pragma once

#include <QCoreApplication>
#include <QStringList>

namespace veltramoor {

/// The screens are in the program itself; what the web pages need lies beside it, in the build's
/// folder or where the program is installed. Needs the application object.
[[nodiscard]] inline QStringList qmlImportPaths() {
  const QString programs = QCoreApplication::applicationDirPath();
  return {QStringLiteral("qrc:/qt/qml"), programs + QStringLiteral("/../qml"),
          programs + QStringLiteral("/../lib/veltramoor/qml")};
}

}  // namespace veltramoor
