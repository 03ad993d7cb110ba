#include "regex/CompiledRegexCache.h"

#include <fmt/format.h>
#include <unicode/uregex.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "Util/Utf.h"
#include "regex/RegexException.h"
#include "regex/RegexFailure.h"

namespace veltramoor {
namespace {

std::string contextText(const UChar* context) {
  return utf8FromUtf16(std::u16string_view(context));
}

[[noreturn]] void throwUncompilable(std::string_view regex, UErrorCode status,
                                    const UParseError& where) {
  RegexErrorInfo info;
  info.errorCode = status;
  info.errorName = u_errorName(status);
  if (where.line > 0) {
    info.line = where.line;
    info.offset = where.offset;
    info.preContext = contextText(where.preContext);
    info.postContext = contextText(where.postContext);
  }
  info.regex = regex;
  const std::string reason =
      fmt::format("ICU regular expression error #{}, {}.", info.errorCode, info.errorName);
  throw RegexException(reason, std::move(info));
}

UregexHandle compiled(std::string_view regex, std::u16string_view utf16) {
  UErrorCode status = U_ZERO_ERROR;
  UParseError where{};
  UregexHandle master;
  if (utf16.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    status = U_REGEX_PATTERN_TOO_BIG;
  } else {
    master.reset(
        uregex_open(utf16.data(), static_cast<std::int32_t>(utf16.size()), 0, &where, &status));
  }
  if (U_FAILURE(status)) {
    throwUncompilable(regex, status, where);
  }
  return master;
}

}  // namespace

void UregexCloser::operator()(URegularExpression* expression) const noexcept {
  uregex_close(expression);
}

CompiledRegexCache& CompiledRegexCache::sharedInstance() {
  static CompiledRegexCache cache;
  return cache;
}

CompiledRegex CompiledRegexCache::get(std::string_view regex) {
  {
    const std::lock_guard lock(mutex_);
    if (const auto kept = entries_.find(regex); kept != entries_.end()) {
      return use(kept->second, regex);
    }
  }
  const std::u16string utf16 = utf16FromUtf8(regex);
  Entry entry{compiled(regex, utf16),
              std::make_shared<const RequiredLiterals>(requiredLiterals(utf16))};

  const std::lock_guard lock(mutex_);
  makeRoom();
  // Another thread may have been quicker; then its master stays.
  return use(entries_.try_emplace(std::string(regex), std::move(entry)).first->second, regex);
}

CompiledRegex CompiledRegexCache::use(Entry& entry, std::string_view regex) {
  entry.lastUse = ++uses_;
  UErrorCode status = U_ZERO_ERROR;
  UregexHandle clone(uregex_clone(entry.master.get(), &status));
  if (U_FAILURE(status)) {
    throwUnexpectedRegexError(status, regex);
  }
  return {std::move(clone), entry.required};
}

void CompiledRegexCache::makeRoom() {
  if (entries_.size() < capacity_) {
    return;
  }
  const auto oldest = std::min_element(
      entries_.begin(), entries_.end(),
      [](const auto& a, const auto& b) { return a.second.lastUse < b.second.lastUse; });
  if (oldest != entries_.end()) {
    entries_.erase(oldest);
  }
}

void CompiledRegexCache::clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
}

std::size_t CompiledRegexCache::size() const {
  const std::lock_guard lock(mutex_);
  return entries_.size();
}

}  // namespace veltramoor
