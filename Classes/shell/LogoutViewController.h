// The last tab: showing it logs out.
#pragma once

#include <functional>

#include "toolkit/ViewController.h"

namespace veltramoor {

class LogoutViewController : public veltramoor::ViewController {
  Q_OBJECT

 public:
  /// `logout`: the root controller's.
  explicit LogoutViewController(std::function<void()> logout);

  void viewWillAppear() override;

 private:
  std::function<void()> logout_;
};

}  // namespace veltramoor
