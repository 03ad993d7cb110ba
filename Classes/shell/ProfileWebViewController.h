// The account page of whoever is signed in, its links inert.
#pragma once

#include "shell/WebViewController.h"

namespace veltramoor {

/// Opened by a list that waits for it. Its page is asked for when the screen is loaded.
class ProfileWebViewController final : public veltramoor::WebViewController {
  Q_OBJECT

 public:
  ProfileWebViewController(const std::optional<Url>& url,
                           std::shared_ptr<AllListViewController> target);

  void viewDidLoad() override;

 private:
  [[nodiscard]] std::optional<Url> pageUrl() const override { return url_; }

  std::optional<Url> url_;
};

}  // namespace veltramoor
