#include "demo/Faults.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veltramoor {
namespace {

constexpr std::array<std::pair<std::string_view, FaultKind>, 16> kNames{
    {{"none", FaultKind::None},
     {"hang", FaultKind::Hang},
     {"close", FaultKind::Close},
     {"reset", FaultKind::Reset},
     {"endless", FaultKind::Endless},
     {"bomb", FaultKind::Bomb},
     {"redirect-loop", FaultKind::RedirectLoop},
     {"headers", FaultKind::Headers},
     {"invalid-utf8", FaultKind::InvalidUtf8},
     {"tr-flood", FaultKind::TrFlood},
     {"big", FaultKind::Big},
     {"error500", FaultKind::Error500},
     {"drip", FaultKind::Drip},
     {"quote-magnet", FaultKind::QuoteMagnet},
     {"other-layout", FaultKind::OtherLayout},
     {"no-uploaded", FaultKind::NoUploaded}}};

}  // namespace

std::optional<FaultKind> faultKindNamed(std::string_view name) {
  const auto* found =
      std::ranges::find(kNames, name, &std::pair<std::string_view, FaultKind>::first);
  return found == kNames.end() ? std::nullopt : std::optional(found->second);
}

void Faults::set(const std::string& prefix, const Fault& fault) {
  const std::lock_guard lock(mutex_);
  byPrefix_.insert_or_assign(prefix, fault);
}

void Faults::clear() {
  const std::lock_guard lock(mutex_);
  byPrefix_.clear();
}

Fault Faults::strike(std::string_view path) {
  const std::lock_guard lock(mutex_);
  auto longest = byPrefix_.end();
  for (auto it = byPrefix_.begin(); it != byPrefix_.end(); ++it) {
    // Of two prefixes of one path the later in order is the longer.
    if (path.starts_with(it->first)) {
      longest = it;
    }
  }
  if (longest == byPrefix_.end()) {
    return {};
  }
  const Fault fault = longest->second;
  if (fault.times == 1) {
    byPrefix_.erase(longest);
  } else if (fault.times > 1) {
    --longest->second.times;
  }
  return fault;
}

}  // namespace veltramoor
