// Keeping passwords out of what is shown.
#pragma once

#include <string>
#include <string_view>

namespace veltramoor {

/// The address of a remote client without the "user:password@" before its host, for titles, error
/// texts and logs. The text need not be a valid URL, for credentials are put into addresses as
/// typed: everything from "://" to the last "@" goes, so that a password with "@", "/", "?" or "#"
/// in it leaves nothing behind. An address with an "@" in its path loses more than credentials;
/// for those, which come from the network, `Url::withoutCredentials` is exact.
[[nodiscard]] std::string withoutCredentials(std::string_view url);

}  // namespace veltramoor
