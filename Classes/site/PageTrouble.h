// Why a page of a listing gave no rows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/TransferFailure.h"

namespace veltramoor {

class HttpRequest;

struct PageTrouble {
  enum class Kind {
    /// There was no answer; `failure` says why.
    NotReached,
    /// The answer's status is none of success: `statusCode`.
    ErrorStatus,
    /// Another host answered, of another site by its name: `host`.
    Moved,
    /// The page has a login form.
    SignedOut,
    /// Nothing was found, or the page has a layout of its own: `bytes` and `title` tell which.
    NoRows,
  };

  Kind kind = Kind::NoRows;
  std::optional<TransferFailure> failure = std::nullopt;
  int statusCode = 0;
  std::string host = {};
  std::size_t bytes = 0;
  /// The page's own, as one printable line of at most 60 characters; "" when it has none.
  std::string title = {};
  /// Whether the answer came from another address than the one asked for.
  bool redirected = false;

  /// Whether the page may be one that lists torrents and has none to list. A login form alone does
  /// not tell: there are sites that have one on each page.
  [[nodiscard]] bool mayBeEmptyList() const {
    return kind == Kind::NoRows || (kind == Kind::SignedOut && !redirected);
  }
};

/// What `request` says of itself after a `request()` that gave no rows.
[[nodiscard]] PageTrouble troubleOf(const HttpRequest& request);

/// One or two sentences, printable: "The site answered with an error (503)." Of a page without
/// rows, what was there instead: "The page has 5 KB and the title \"Search results\"."
[[nodiscard]] std::string sentenceOf(const PageTrouble& trouble);

}  // namespace veltramoor
