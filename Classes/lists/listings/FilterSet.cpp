#include "lists/listings/FilterSet.h"

#include <algorithm>

namespace veltramoor {

FilterSet::FilterSet(const std::vector<std::string>& regexes) {
  for (const std::string& regex : regexes) {
    filters_.emplace_back(regex);
  }
}

std::vector<std::string> FilterSet::regexes() const {
  std::vector<std::string> texts;
  for (const Entry& entry : filters_) {
    texts.push_back(entry.filter.regex());
  }
  return texts;
}

std::vector<bool> FilterSet::accepted(const std::vector<Torrent>& page) {
  const std::lock_guard lock(turn_);
  return acceptedUntil(Clock::time_point::max(), page);
}

std::vector<bool> FilterSet::acceptedWithin(std::chrono::milliseconds limit,
                                            const std::vector<Torrent>& page) {
  return acceptedUntil(Clock::now() + limit, page);
}

std::vector<bool> FilterSet::acceptedUntil(Clock::time_point end,
                                           const std::vector<Torrent>& page) {
  std::vector<bool> accepted(page.size());
  for (Entry& entry : filters_) {
    if (!ask(entry, page, end, accepted)) {
      break;
    }
  }
  return accepted;
}

bool FilterSet::ask(Entry& entry, const std::vector<Torrent>& page, Clock::time_point limit,
                    std::vector<bool>& accepted) {
  const Clock::time_point own = Clock::now() + kAllowance;
  const Clock::time_point deadline = std::min(own, limit);
  for (std::size_t i = 0; i < page.size() && !entry.givenUp; ++i) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    const FilterVerdict verdict =
        left.count() > 0 ? entry.filter.ask(page[i].name, left) : FilterVerdict::GivenUp;
    if (verdict == FilterVerdict::GivenUp) {
      if (deadline != own) {
        return false;
      }
      entry.givenUp = true;
    }
    accepted[i] = accepted[i] || verdict == FilterVerdict::Accepted;
  }
  return true;
}

std::vector<std::string> FilterSet::givenUp() const {
  std::vector<std::string> texts;
  for (const Entry& entry : filters_) {
    if (entry.givenUp) {
      texts.push_back(entry.filter.regex());
    }
  }
  return texts;
}

std::vector<std::string> FilterSet::invalid() const {
  std::vector<std::string> texts;
  for (const Entry& entry : filters_) {
    if (entry.filter.problem()) {
      texts.push_back(entry.filter.regex());
    }
  }
  return texts;
}

}  // namespace veltramoor
