#include "site/MagnetName.h"

#include <algorithm>

#include "Util/NSStringEscaping.h"
#include "Util/Utf.h"

namespace veltramoor {

std::string nameOfMagnet(std::string_view magnet) {
  constexpr std::string_view kItem = "dn=";
  std::string_view query = magnet.substr(0, magnet.find('#'));
  query.remove_prefix(std::min(query.find('?'), query.size()));
  while (!query.empty()) {
    query.remove_prefix(1);
    const std::string_view item = query.substr(0, query.find('&'));
    if (item.starts_with(kItem)) {
      std::string name(item.substr(kItem.size()));
      // In a link's query a plus stands for a blank.
      std::ranges::replace(name, '+', ' ');
      name = stringByReplacingPercentEscapes(name);
      return name.empty() || !isValidUtf8(name) ? std::string(magnet) : name;
    }
    query.remove_prefix(item.size());
  }
  return std::string(magnet);
}

}  // namespace veltramoor
