#include "Util/NSDateFormatterDateString.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <cstdint>
#include <memory>

#include "Util/Utf.h"

namespace veltramoor {
namespace {

// To ICU both handles are the same type, so each needs a type of its own to be closed.
struct CloseFormat {
  void operator()(UDateFormat* format) const { udat_close(format); }
};
struct CloseCalendar {
  void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};
using DateFormat = std::unique_ptr<UDateFormat, CloseFormat>;
using CalendarPointer = std::unique_ptr<UCalendar, CloseCalendar>;

std::int32_t length(const std::u16string& text) { return static_cast<std::int32_t>(text.size()); }

DateFormat makeFormat(std::string_view pattern, UErrorCode& status) {
  const std::u16string units = utf16FromUtf8(pattern);
  return DateFormat(udat_open(UDAT_PATTERN, UDAT_PATTERN, nullptr, nullptr, 0, units.data(),
                              length(units), &status));
}

/// What a pattern leaves open is taken from midnight on 1 January 2000, a leap year.
CalendarPointer makeCalendar(UErrorCode& status) {
  CalendarPointer calendar(ucal_open(nullptr, 0, nullptr, UCAL_DEFAULT, &status));
  if (U_SUCCESS(status)) {
    ucal_clear(calendar.get());
    ucal_setDateTime(calendar.get(), 2000, UCAL_JANUARY, 1, 0, 0, 0, &status);
    ucal_setAttribute(calendar.get(), UCAL_LENIENT, 0);
  }
  return calendar;
}

/// The whole of `text` as a date; `status` fails when it is none.
UDate parseDate(std::string_view text, std::string_view pattern, UErrorCode& status) {
  const DateFormat format = makeFormat(pattern, status);
  const CalendarPointer calendar = makeCalendar(status);
  if (U_FAILURE(status)) {
    return 0;
  }
  udat_setLenient(format.get(), 0);
  const std::u16string units = utf16FromUtf8(text);
  std::int32_t end = 0;
  udat_parseCalendar(format.get(), calendar.get(), units.data(), length(units), &end, &status);
  if (U_SUCCESS(status) && end != length(units)) {
    status = U_PARSE_ERROR;
  }
  return ucal_getMillis(calendar.get(), &status);
}

}  // namespace

std::optional<std::string> dateStringFromString(std::string_view text,
                                                std::string_view sourceFormat,
                                                std::string_view destinationFormat) {
  UErrorCode status = U_ZERO_ERROR;
  const UDate date = parseDate(text, sourceFormat, status);
  const DateFormat format = makeFormat(destinationFormat, status);
  if (U_FAILURE(status)) {
    return std::nullopt;
  }
  const std::int32_t size = udat_format(format.get(), date, nullptr, 0, nullptr, &status);
  if (status != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(status)) {
    return std::nullopt;
  }
  status = U_ZERO_ERROR;
  std::u16string result(static_cast<std::size_t>(size), u'\0');
  udat_format(format.get(), date, result.data(), size, nullptr, &status);
  return U_SUCCESS(status) ? std::optional(utf8FromUtf16(result)) : std::nullopt;
}

}  // namespace veltramoor
