// A torrent's details page without the rest of the site around it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "site/HttpRequest.h"
#include "site/PageCleaning.h"

namespace veltramoor {

/// The expression that a details page matches; its captures are the head and the details block.
extern const std::string_view kDetailsRegex;

/// After `request()`, `result` is the page's head and its details block without advertising; the
/// page as fetched when its layout is not recognised (in time); absent when the transfer failed.
class HttpRequestRegExDetails final : public HttpRequest {
 public:
  using HttpRequest::HttpRequest;

  void request() override;

  /// The first link to the movie database in the details block; never empty.
  [[nodiscard]] const std::optional<std::string>& imdb() const { return imdb_; }

  struct Cleaned {
    std::string page;
    std::optional<std::string> imdb;
  };
  /// What `request()` makes of a page; absent for one that it leaves as it is: of another layout,
  /// or one that takes too long.
  [[nodiscard]] static std::optional<Cleaned> cleaned(std::string_view page,
                                                      PageCleaning cleaning = PageCleaning());

 private:
  std::optional<std::string> imdb_;
};

}  // namespace veltramoor
