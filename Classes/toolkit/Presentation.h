// A form over everything else.
#pragma once

#include <QObject>
#include <memory>

#include "toolkit/ViewController.h"

namespace veltramoor {

/// The one modal screen of the application: it covers the window until it is dismissed. Main thread
/// only.
class Presentation : public QObject {
  Q_OBJECT
  Q_PROPERTY(veltramoor::ViewController* controller READ controller NOTIFY changed)

 public:
  static Presentation& sharedInstance();

  /// The screen on show, null for none.
  [[nodiscard]] ViewController* controller() const { return controller_.get(); }
  /// Shows `controller`, in place of one already there.
  void present(std::shared_ptr<ViewController> controller);
  void dismiss();

 signals:
  void changed();

 private:
  friend class SharedInstances;

  Presentation() = default;
  std::shared_ptr<ViewController> controller_;
};

}  // namespace veltramoor
