#include "Util/WithoutCredentials.h"

namespace veltramoor {

std::string withoutCredentials(std::string_view url) {
  constexpr std::string_view kMark = "://";
  const std::size_t mark = url.find(kMark);
  const std::size_t begin = mark == std::string_view::npos ? 0 : mark + kMark.size();
  const std::size_t at = url.rfind('@');
  if (at == std::string_view::npos) {
    return std::string(url);
  }
  // A password that holds "://" itself, in a text without a scheme.
  const std::size_t kept = begin <= at ? begin : 0;
  return std::string(url.substr(0, kept)).append(url.substr(at + 1));
}

}  // namespace veltramoor
