#include "Terminal.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "Util/PrintableLine.h"
#include "platform/Preferences.h"

namespace veltramoor::cli {

Terminal::Terminal() { Alerts::setPresenter(this); }

Terminal::~Terminal() { Alerts::setPresenter(nullptr); }

void Terminal::show(Alert alert) { alertText_ = alert.title + " " + alert.message; }

bool Terminal::wait(const std::function<void(const std::function<void(bool)>&)>& begin,
                    std::string_view peer) {
  std::optional<bool> outcome;
  begin([&](bool done) { outcome = done; });
  const auto isOver = [&] { return outcome.has_value(); };
  if (!peer.empty() && !loop_.runUntil(isOver, kPatience)) {
    fail(kDone, fmt::format("Waiting for {} ...", peer));
  }
  loop_.runUntil(isOver);
  return *outcome;
}

int fail(int status, std::string_view line) {
  fmt::print(stderr, "veltramoor-cli: {}\n", printableLine(line));
  return status;
}

int failToKeep(std::string_view what) {
  const Preferences& preferences = Preferences::sharedInstance();
  return fail(kRefused, std::string(what) + (preferences.isPersistent()
                                                 ? preferences.lastProblem().value_or("")
                                                 : "The settings file cannot be used."));
}

void noteLines(std::string_view lines) {
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    fail(kDone, lines.substr(0, end));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
}

std::string printable(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t end = text.find_last_not_of(' ') + 1;
  return begin >= end ? std::string(text)
                      : std::string(text.substr(0, begin))
                            .append(printableLine(text.substr(begin, end - begin)))
                            .append(text.substr(end));
}

std::string jsonText(const nlohmann::json& value, int indent) {
  return value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace veltramoor::cli
