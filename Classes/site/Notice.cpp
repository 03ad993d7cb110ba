#include "site/Notice.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "platform/Bundle.h"
#include "platform/SiteConfiguration.h"

namespace veltramoor {

std::optional<Url> noticeUrl() {
  std::string model = Bundle::deviceModel();
  std::erase(model, ' ');
  return Url::parse(fmt::format("http://{}/veltramoor.php?v={}&m={}&p={}",
                                SiteConfiguration::current().noticeHost, Bundle::version(), model,
                                Bundle::systemVersion()));
}

Notice noticeFrom(const HttpRequest& answer) {
  if (!answer.isResponseValid() || !answer.result()) {
    return {};
  }
  const std::string_view text = *answer.result();
  const std::size_t colon = text.find(':');
  const std::string_view word = text.substr(0, colon);
  const Notice::Kind kind = word == "STOP" ? Notice::Kind::Stop
                            : word == "GO" ? Notice::Kind::Go
                                           : Notice::Kind::None;
  if (kind == Notice::Kind::None || colon == std::string_view::npos) {
    // Without a colon there is nothing to read before going on.
    return {kind == Notice::Kind::Stop ? kind : Notice::Kind::None, ""};
  }
  const std::string_view rest = text.substr(colon + 1);
  return {kind, std::string(rest.substr(0, rest.find(':')))};
}

}  // namespace veltramoor
