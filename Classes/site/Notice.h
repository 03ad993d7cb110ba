// The maker's notice, asked for after each successful login.
#pragma once

#include <optional>
#include <string>

#include "platform/Url.h"
#include "site/HttpRequest.h"

namespace veltramoor {

/// The request for it may take this long, in seconds.
inline constexpr int kNoticeTimeout = 3;

/// What the application does about the notice.
struct Notice {
  enum class Kind {
    None,  ///< goes on, showing nothing
    Go,    ///< shows the message, then goes on
    Stop,  ///< shows the message and stays at the login screen
  };
  Kind kind = Kind::None;
  std::string message;
};

/// Version, device model without blanks and system version as they stand; none when that is no URL.
[[nodiscard]] std::optional<Url> noticeUrl();

/// Splits the answer at its colons: the word before the first decides, and the text up to the next
/// is the message. A failed or empty answer, or another word, is no notice.
[[nodiscard]] Notice noticeFrom(const HttpRequest& answer);

}  // namespace veltramoor
