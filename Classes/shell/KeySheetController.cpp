#include "shell/KeySheetController.h"

#include "toolkit/Presentation.h"

namespace veltramoor {

KeySheetController::KeySheetController() : ViewController(QStringLiteral("KeySheet.qml")) {
  setTitle(tr("Keys"));
}

void KeySheetController::cancel() { Presentation::sharedInstance().dismiss(); }

QStringList KeySheetController::keys() {
  return {tr("Ctrl+F"),
          tr("Search"),
          tr("Ctrl+1 to Ctrl+8"),
          tr("A tab of the bar; Ctrl+9 the last"),
          tr("F5, Ctrl+R"),
          tr("Refresh"),
          tr("Up, Down"),
          tr("Move through a list"),
          tr("Return"),
          tr("Open"),
          tr("Space"),
          tr("Send to your computer"),
          tr("Ctrl+C"),
          tr("Copy the magnet link"),
          tr("Menu, Shift+F10"),
          tr("What else can be done with a row"),
          tr("Delete"),
          tr("Delete an entry of the history, or a filter"),
          tr("Ctrl+Z"),
          tr("Put back what was just deleted"),
          tr("Alt+Left, Right"),
          tr("Back and forward in a page"),
          tr("Escape"),
          tr("Back, close, or stop waiting"),
          tr("?"),
          tr("This sheet")};
}

}  // namespace veltramoor
