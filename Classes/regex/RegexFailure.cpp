#include "regex/RegexFailure.h"

#include <unicode/utypes.h>

#include <utility>

#include "regex/RegexException.h"

namespace veltramoor {

void throwUnexpectedRegexError(int status, std::string_view regex) {
  RegexErrorInfo info;
  info.errorCode = status;
  info.errorName = u_errorName(static_cast<UErrorCode>(status));
  info.regex = regex;
  throw RegexException("The ICU library returned an unexpected error code.", std::move(info));
}

}  // namespace veltramoor
