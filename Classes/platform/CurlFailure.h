// What libcurl's outcomes mean.
#pragma once

#include "platform/TransferFailure.h"

namespace veltramoor {

/// The kind of a transfer that ended with `code`, a CURLcode other than CURLE_OK. `osError` is the
/// handle's CURLINFO_OS_ERRNO, which counts for a failed connection only: libcurl keeps the last
/// one. CURLE_WRITE_ERROR is not known here: it comes from the writing callbacks, which know why.
[[nodiscard]] TransferFailureKind failureKind(int code, long osError);

}  // namespace veltramoor
