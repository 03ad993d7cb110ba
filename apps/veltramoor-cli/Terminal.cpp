#include "Terminal.h"

#include <fmt/format.h>

#include <cstdio>
#include <nlohmann/json.hpp>

namespace veltramoor::cli {

Terminal::Terminal() { Alerts::setPresenter(this); }

Terminal::~Terminal() { Alerts::setPresenter(nullptr); }

void Terminal::show(Alert alert) { alertText_ = alert.title + " " + alert.message; }

bool Terminal::wait(const std::function<void(const std::function<void(bool)>&)>& begin) {
  std::optional<bool> outcome;
  begin([&](bool done) { outcome = done; });
  loop_.runUntil([&] { return outcome.has_value(); });
  return *outcome;
}

int fail(int status, std::string_view line) {
  fmt::print(stderr, "veltramoor-cli: {}\n", printable(line));
  return status;
}

std::string printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // U+0080 to U+009F, which some terminals obey as well, are 0xC2 and 0x80 to 0x9F in UTF-8.
    const bool c1 =
        byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (byte < 0x20 || byte == 0x7F || c1) {
      result += '?';
      i += c1 ? 1 : 0;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string jsonText(const nlohmann::json& value, int indent) {
  return value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace veltramoor::cli
