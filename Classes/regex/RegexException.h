// What a regular-expression operation throws.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace veltramoor {

inline constexpr char RKLICURegexException[] = "RKLICURegexException";
inline constexpr char RKLICURegexErrorDomain[] = "RKLICURegexErrorDomain";

/// The exception's user information; the member for key "RKLICURegexErrorCode" is `errorCode`, etc.
struct RegexErrorInfo {
  /// ICU's status code and its name ("U_REGEX_MISMATCHED_PAREN").
  int errorCode = 0;
  std::string errorName;
  /// Where in the expression: line from 1, offset in UTF-16 units; -1 when ICU does not say.
  int line = -1;
  int offset = -1;
  /// The expression's text just before and after that place (UTF-8).
  std::string preContext;
  std::string postContext;
  std::string regex;
  std::uint32_t regexOptions = 0;
};

/// `what()` is the reason: "ICU regular expression error #%d, %s." for an expression that does not
/// compile, "The ICU library returned an unexpected error code." for a failure during matching.
class RegexException : public std::runtime_error {
 public:
  RegexException(const std::string& reason, RegexErrorInfo info)
      : std::runtime_error(reason), info_(std::move(info)) {}

  /// Always RKLICURegexException.
  [[nodiscard]] const char* name() const { return RKLICURegexException; }
  [[nodiscard]] const RegexErrorInfo& userInfo() const { return info_; }

 private:
  RegexErrorInfo info_;
};

}  // namespace veltramoor
