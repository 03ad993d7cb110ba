// Posts a form.
#pragma once

#include <optional>
#include <string>

#include "site/FetchPage.h"

namespace veltramoor {

/// Always delivers true: whether the form arrived is not looked at, only handed on as the reason.
class FetchPagePost final : public FetchPage<bool> {
 public:
  FetchPagePost(std::optional<Url> url, std::string post, Completion completion);

 private:
  void fetch() override;

  std::string post_;
};

}  // namespace veltramoor
