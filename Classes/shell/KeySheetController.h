// The sheet that names the keys.
#pragma once

#include <QStringList>

#include "toolkit/ViewController.h"

namespace veltramoor {

/// Covers everything until it is done with. Main thread only.
class KeySheetController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(QStringList keys READ keys CONSTANT)

 public:
  KeySheetController();

  void cancel() override;
  /// What to press and what it does, in turn.
  [[nodiscard]] static QStringList keys();
};

}  // namespace veltramoor
