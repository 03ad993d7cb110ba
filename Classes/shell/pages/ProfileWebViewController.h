// The account page of whoever is signed in, its links inert.
#pragma once

#include "shell/pages/WebViewController.h"

namespace veltramoor {

/// Opened by a list that waits for it. Its page is asked for when the screen is loaded.
class ProfileWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  ProfileWebViewController(std::optional<Url> url, std::shared_ptr<OpeningList> target);

  void viewDidLoad() override;

 private:
  void openAgain() override;
};

}  // namespace veltramoor
