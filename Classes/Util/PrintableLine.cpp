#include "Util/PrintableLine.h"

#include "Util/Utf.h"

namespace veltramoor {

std::string printableLine(std::string_view text) {
  const bool isUtf8 = isValidUtf8(text);
  std::string line;
  bool gap = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // U+0080 to U+009F, which some terminals obey as well, are 0xC2 and 0x80 to 0x9F in UTF-8.
    const bool isC1 = isUtf8 && byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (byte < 0x20 || byte == 0x7F || isC1) {
      i += isC1 ? 1 : 0;
      gap = true;
      continue;
    }
    if (gap && !line.empty() && line.back() != ' ' && byte != ' ') {
      line += ' ';
    }
    gap = false;
    if (byte != ' ' || !line.empty()) {
      line += byte < 0x80 || isUtf8 ? text[i] : '?';
    }
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

}  // namespace veltramoor
