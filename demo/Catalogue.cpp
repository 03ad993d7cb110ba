#include "demo/Catalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>

#include "demo/Random.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

/// Up to this many, each further torrent is older than the last; more are packed as densely.
constexpr std::uint64_t kSpread = 3000;

std::string makeTitle(Random& random) {
  const std::string noun(random.pick(demoNouns()));
  switch (random.below(4)) {
    case 0:
      return fmt::format("The {} {}", random.pick(demoAdjectives()), noun);
    case 1:
      return fmt::format("{} of {}", noun, random.pick(demoPlaces()));
    case 2:
      return fmt::format("{} {}", random.pick(demoAdjectives()), noun);
    default:
      return fmt::format(
          "{} {} for {}",
          std::string_view("AEIOU").find(noun[0]) == std::string_view::npos ? "A" : "An", noun,
          random.pick(demoPlaces()));
  }
}

std::string makeName(const DemoCategory& category, Random& random) {
  const std::string_view pattern = random.pick(category.patterns);
  std::string name;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != '%') {
      name += pattern[i];
      continue;
    }
    switch (pattern[++i]) {
      case 'T':
        name += makeTitle(random);
        break;
      case 'A':
        name += random.pick(demoPeople());
        break;
      case 'P':
        name += random.pick(demoPlaces());
        break;
      case 'Y':
        name += std::to_string(1908 + random.below(116));
        break;
      case 'V': {
        const std::uint64_t major = 1 + random.below(14);
        name += fmt::format("{}.{}", major, random.below(10));
        break;
      }
      default:
        name += fmt::format("{:02}", 1 + random.below(24));
    }
  }
  if (random.oneIn(9)) {
    name += random.pick(demoOddEndings());
  }
  return name;
}

std::int64_t age(std::size_t index, std::size_t count) {
  const std::uint64_t j = count <= kSpread ? index : index * kSpread / count;
  return static_cast<std::int64_t>(2 + 3 * j + j * j / 16 + j * j * j / 4500);
}

int skewed(Random& random, unsigned doublings) {
  return static_cast<int>(random.below(std::uint64_t{1} << random.below(doublings)));
}

std::string makeHash(Random& random) {
  const std::uint64_t first = random.next();
  const std::uint64_t second = random.next();
  return fmt::format("{:016x}{:016x}{:08x}", first, second, random.below(0x100000000));
}

std::vector<std::string> foldedWords(const std::string& words) {
  std::vector<std::string> list;
  const std::string folded = foldCase(words);
  for (std::size_t begin = 0; begin < folded.size();) {
    const std::size_t end = std::min(folded.find(' ', begin), folded.size());
    if (end > begin) {
      list.push_back(folded.substr(begin, end - begin));
    }
    begin = end + 1;
  }
  return list;
}

bool isInCategory(int category, int wanted) {
  return wanted == 0 || category == wanted || (wanted % 100 == 0 && category / 100 == wanted / 100);
}

template <typename Field>
void sortBy(std::vector<const DemoTorrent*>& found, Field field, bool ascending) {
  std::ranges::stable_sort(found, [&](const DemoTorrent* a, const DemoTorrent* b) {
    return ascending ? std::invoke(field, a) < std::invoke(field, b)
                     : std::invoke(field, b) < std::invoke(field, a);
  });
}

}  // namespace

Catalogue::Catalogue(std::uint64_t seed, std::size_t count) {
  Random random(seed);
  torrents_.reserve(count);
  folded_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    DemoTorrent torrent;
    torrent.id = static_cast<int>(1'200'000 + (count - i) * 7 + random.below(7));
    const DemoCategory* category = &random.pick(demoCategories());
    torrent.name = makeName(*category, random);
    if (i > 0 && random.oneIn(50)) {
      const DemoTorrent& twin = torrents_[static_cast<std::size_t>(random.below(i))];
      torrent.name = twin.name;
      category = demoCategory(twin.category);
    }
    torrent.category = category->code;
    const std::uint64_t smallest = (category->smallestKiB * 1024)
                                   << random.below(category->doublings + 1);
    torrent.bytes = smallest + random.below(smallest);
    torrent.minutesAgo = age(i, count);
    torrent.seeders = skewed(random, 13);
    torrent.leechers = skewed(random, 11);
    if (!random.oneIn(20)) {
      torrent.uploader = random.pick(demoUploaders());
    }
    torrent.infoHash = makeHash(random);
    torrent.hasMovieLink = random.oneIn(2) && category->film;
    folded_.push_back(foldCase(torrent.name));
    torrents_.push_back(std::move(torrent));
  }
}

std::vector<const DemoTorrent*> Catalogue::find(const DemoQuery& query) const {
  const auto words = foldedWords(query.words);
  std::vector<const DemoTorrent*> found;
  for (std::size_t i = 0; i < torrents_.size(); ++i) {
    const DemoTorrent& torrent = torrents_[i];
    if (isInCategory(torrent.category, query.category) &&
        (query.uploader.empty() || torrent.uploader == query.uploader) &&
        std::ranges::all_of(words, [&](const std::string& word) {
          return folded_[i].find(word) != std::string::npos;
        })) {
      found.push_back(&torrent);
    }
  }
  switch (query.order) {
    case 5:
    case 6:
      sortBy(found, &DemoTorrent::bytes, query.order == 6);
      break;
    case 7:
    case 8:
      sortBy(found, &DemoTorrent::seeders, query.order == 8);
      break;
    case 9:
    case 10:
      sortBy(found, &DemoTorrent::leechers, query.order == 10);
      break;
    case 100:
      std::ranges::reverse(found);
      break;
    default:
      break;
  }
  return found;
}

const DemoTorrent* Catalogue::withId(int id) const {
  const auto found = std::ranges::lower_bound(torrents_, id, std::greater{}, &DemoTorrent::id);
  return found != torrents_.end() && found->id == id ? &*found : nullptr;
}

}  // namespace veltramoor
