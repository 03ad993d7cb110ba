#include "regex/RegexMatcher.h"

#include <unicode/uregex.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

#include "Util/Utf.h"
#include "regex/RegexFailure.h"
#include "regex/Utf16Scan.h"

namespace veltramoor {
namespace {

/// A thread's buffer is given back to it unless a page was larger than any real one (units).
constexpr std::size_t kLargestKeptBuffer = std::size_t{1024} * 1024;
constexpr std::chrono::milliseconds kNoTime{0};
constexpr std::chrono::milliseconds kLongestTimeLimit = std::chrono::hours(24);

thread_local std::u16string spareBuffer;

std::u16string converted(std::string_view text) {
  std::u16string buffer = std::exchange(spareBuffer, {});
  assignUtf16(buffer, text);
  return buffer;
}

std::int32_t icuIndex(std::size_t index) { return static_cast<std::int32_t>(index); }

}  // namespace

RegexMatcher::RegexMatcher(std::string_view text, std::string_view regex,
                           std::chrono::milliseconds timeLimit)
    : text_(text),
      regex_(regex),
      deadline_(Clock::now() + std::clamp(timeLimit, kNoTime, kLongestTimeLimit)),
      compiled_(CompiledRegexCache::sharedInstance().get(regex)),
      utf16_(converted(text)),
      textIsAscii_(utf16_.size() == text.size() && isAscii(text)),
      chain_(*compiled_.required, utf16_) {
  static_assert(std::is_same_v<UBool, std::int8_t>);
  UErrorCode status = U_ZERO_ERROR;
  if (utf16_.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    status = U_BUFFER_OVERFLOW_ERROR;
  }
  URegularExpression* expression = compiled_.expression.get();
  uregex_setText(expression, utf16_.data(), icuIndex(utf16_.size()), &status);
  uregex_setMatchCallback(expression, &RegexMatcher::goOn, &deadline_, &status);
  if (hasOneAttempt()) {
    // Not uregex_lookingAt: that leaves out what ICU checks before it attempts a place.
    uregex_setFindProgressCallback(expression, &RegexMatcher::mayBeginAt, &onlyStart_, &status);
  }
  groupCount_ = static_cast<std::size_t>(uregex_groupCount(expression, &status));
  if (U_FAILURE(status)) {
    throwUnexpectedRegexError(status, regex_);
  }
}

RegexMatcher::~RegexMatcher() {
  if (utf16_.capacity() <= kLargestKeptBuffer) {
    spareBuffer = std::move(utf16_);
  }
}

/// ICU calls this every 10,000 steps, about 0.1 ms.
std::int8_t RegexMatcher::goOn(const void* deadline, std::int32_t /*steps*/) {
  return Clock::now() < *static_cast<const Clock::time_point*>(deadline) ? 1 : 0;
}

/// ICU calls this each time it moves on to begin a match at a later place.
std::int8_t RegexMatcher::mayBeginAt(const void* onlyStart, std::int64_t place) {
  return place <= *static_cast<const std::int64_t*>(onlyStart) ? 1 : 0;
}

bool RegexMatcher::next() {
  // ICU forgets that it was stopped and would answer a further question with "no match".
  if (finished_) {
    return false;
  }
  // Each search begins a new count of steps, so that short ones never come to the callback.
  if (expired() || !find()) {
    finished_ = true;
    match_.reset();
    return false;
  }
  match_ = range(0);
  return true;
}

bool RegexMatcher::find() {
  if (!compiled_.required->known) {
    UErrorCode status = U_ZERO_ERROR;
    const UBool found = match_ ? uregex_findNext(compiled_.expression.get(), &status)
                               : uregex_find(compiled_.expression.get(), 0, &status);
    return settle(found, status);
  }
  if (!match_) {
    return findFrom(0);
  }
  std::size_t from = match_->end;
  if (match_->start == match_->end) {
    if (from >= utf16_.size()) {
      return false;
    }
    from += U16_IS_LEAD(utf16_[from]) ? 2U : 1U;  // the text has no lone surrogates
  }
  return findFrom(from);
}

bool RegexMatcher::findFrom(std::size_t from) {
  std::optional<std::size_t> start = chain_.searchStart(from);
  while (start && !search(*start)) {
    if (compiled_.required->lead != RegexLead::DotStar || timedOut_) {
      return false;
    }
    const std::size_t lineEnd = findLineEnd(utf16_, *start, utf16_.size());
    if (lineEnd == kNotFound || expired()) {
      return false;
    }
    start = chain_.searchStart(lineEnd + 1);
  }
  return start.has_value();
}

/// The region is the whole text for every search, so that anchors, word boundaries and look-behind
/// see what stands before `start`.
bool RegexMatcher::search(std::size_t start) {
  onlyStart_ = static_cast<std::int64_t>(start);
  UErrorCode status = U_ZERO_ERROR;
  const UBool found = uregex_find(compiled_.expression.get(), icuIndex(start), &status);
  if (status == U_REGEX_STOPPED_BY_CALLER && hasOneAttempt() && !expired()) {
    return false;
  }
  return settle(found, status);
}

bool RegexMatcher::hasOneAttempt() const {
  return compiled_.required->lead == RegexLead::DotStar ||
         compiled_.required->lead == RegexLead::AnythingStar;
}

bool RegexMatcher::settle(std::int8_t found, int status) {
  if (status == U_REGEX_STOPPED_BY_CALLER) {
    timedOut_ = true;
    return false;
  }
  if (U_FAILURE(static_cast<UErrorCode>(status))) {
    throwUnexpectedRegexError(status, regex_);
  }
  return found != 0;
}

bool RegexMatcher::expired() {
  timedOut_ = timedOut_ || Clock::now() >= deadline_;
  return timedOut_;
}

std::optional<RegexMatcher::Range> RegexMatcher::range(std::size_t group) const {
  UErrorCode status = U_ZERO_ERROR;
  URegularExpression* expression = compiled_.expression.get();
  const std::int32_t start = uregex_start(expression, icuIndex(group), &status);
  const std::int32_t end = uregex_end(expression, icuIndex(group), &status);
  if (U_FAILURE(status)) {
    throwUnexpectedRegexError(status, regex_);
  }
  if (start < 0) {
    return std::nullopt;
  }
  return Range{static_cast<std::size_t>(start), static_cast<std::size_t>(end)};
}

std::string RegexMatcher::capture(std::size_t group) const {
  std::string result;
  if (const std::optional<Range> part = range(group)) {
    appendText(result, *part);
  }
  return result;
}

void RegexMatcher::appendText(std::string& out, Range part) const {
  const std::size_t length = part.end - part.start;
  if (textIsAscii_) {
    out.append(text_.substr(part.start, length));
  } else {
    out += utf8FromUtf16(std::u16string_view(utf16_).substr(part.start, length));
  }
}

}  // namespace veltramoor
