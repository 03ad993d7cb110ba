#include "platform/ArrayPlace.h"

#include <algorithm>
#include <cassert>

namespace veltramoor {
namespace {

// An end says less than a neighbour does: others add at one end, and drop what is old at the other.
int likeness(const std::optional<std::string>& now, const std::optional<std::string>& then) {
  return now != then ? 0 : now ? 2 : 1;
}

}  // namespace

ArrayPlace ArrayPlace::of(const std::vector<std::string>& elements, std::size_t index) {
  assert(index < elements.size());
  ArrayPlace place{.index = index};
  if (index > 0) {
    place.before = elements[index - 1];
  }
  if (index + 1 < elements.size()) {
    place.after = elements[index + 1];
  }
  return place;
}

std::size_t ArrayPlace::in(const std::vector<std::string>& elements) const {
  const auto neighbour = [&elements](std::size_t at) {
    return at < elements.size() ? std::optional(elements[at]) : std::nullopt;
  };
  const auto distance = [this](std::size_t at) { return at < index ? index - at : at - index; };
  std::size_t best = std::min(index, elements.size());
  int most = 0;
  for (std::size_t at = 0; at <= elements.size(); ++at) {
    const int like = likeness(at > 0 ? neighbour(at - 1) : std::nullopt, before) +
                     likeness(neighbour(at), after);
    if (like > most || (like == most && distance(at) < distance(best))) {
      most = like;
      best = at;
    }
  }
  return best;
}

}  // namespace veltramoor
