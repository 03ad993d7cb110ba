#include "platform/ExchangeLog.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "Util/PrintableLine.h"
#include "platform/RedirectRules.h"

namespace veltramoor {

std::string addressForLog(const Url& url) {
  std::string text = url.withoutCredentials();
  text.erase(std::min(text.find('#'), text.size()));
  // A "?" begins items as well: an address inside another one has some of its own.
  constexpr std::string_view kSeparators = "?&;";
  std::size_t begin = text.find('?');
  while (begin != std::string::npos) {
    ++begin;
    const std::size_t end = std::min(text.find_first_of(kSeparators, begin), text.size());
    const std::size_t equals = text.find('=', begin);
    if (equals < end &&
        isSameFieldName(std::string_view(text).substr(begin, equals - begin), "token")) {
      text.replace(equals + 1, end - equals - 1, "...");
    }
    begin = text.find_first_of(kSeparators, begin);
  }
  return text;
}

std::string lineOf(const ExchangeRecord& record) {
  const std::string outcome =
      record.failure ? fmt::format("{} ({})", nameOf(record.failure->kind), record.failure->words)
                     : fmt::format("{}", record.statusCode.value_or(0));
  return printableLine(fmt::format("{} {} {}, {} bytes, {} ms", record.method, record.address,
                                   outcome, record.bytesReceived, record.duration.count()));
}

void writeToStandardError(const ExchangeRecord& record) {
  // Longer writes to a pipe may be parted (POSIX, PIPE_BUF): a magnet link with its trackers is
  // long.
  constexpr std::size_t kLongest = 2000;
  std::string line = lineOf(record);
  if (line.size() > kLongest) {
    line = line.substr(0, kLongest / 2) + "..." + line.substr(line.size() - kLongest / 2);
  }
  line += "\n";
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
}

}  // namespace veltramoor
