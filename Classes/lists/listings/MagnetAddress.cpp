#include "lists/listings/MagnetAddress.h"

#include <string_view>

#include "platform/SiteConfiguration.h"

namespace veltramoor {
namespace {

constexpr std::string_view kEntity = "&amp;";

/// Each once: what a decoded one makes with the letters after it stays.
std::string decoded(std::string link) {
  for (std::size_t at = link.find(kEntity); at != std::string::npos;
       at = link.find(kEntity, at + 1)) {
    link.replace(at, kEntity.size(), "&");
  }
  return link;
}

}  // namespace

std::optional<Url> sendAddress(const std::string& downloadUrl) {
  return Url::parse(SiteConfiguration::current().magnetEntities == "decode" ? decoded(downloadUrl)
                                                                            : downloadUrl);
}

}  // namespace veltramoor
