// The demo site's torrents: invented, and the same for the same seed on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltramoor {

struct DemoTorrent {
  int id = 0;
  std::string name;
  /// A leaf code of the category table: 101, 207, ... never a hundred.
  int category = 0;
  std::uint64_t bytes = 0;
  /// Minutes before the site's fixed present; see `kDemoPresent` in Wording.h.
  std::int64_t minutesAgo = 0;
  int seeders = 0;
  int leechers = 0;
  /// Empty for an anonymous upload.
  std::string uploader = {};
  /// 40 hexadecimal digits.
  std::string infoHash;
  /// Whether the details page links to the movie database.
  bool hasMovieLink = false;
};

/// Which torrents a listing shows and in what order.
struct DemoQuery {
  /// A leaf code, a hundred for its whole group, 0 for all.
  int category = 0;
  /// 99/100 date, 5/6 size, 7/8 seeders, 9/10 leechers, each descending/ascending; anything else,
  /// the 3 of favourites included, is date descending.
  int order = 99;
  /// Words that the name must all contain, without case; empty for any.
  std::string words = {};
  /// An uploader's name; empty for any.
  std::string uploader = {};
};

class Catalogue {
 public:
  Catalogue(std::uint64_t seed, std::size_t count);

  /// Newest first. Names may repeat; ids and info hashes do not.
  [[nodiscard]] const std::vector<DemoTorrent>& all() const { return torrents_; }
  /// Pointers into `all()`. Equal keys stand newest first.
  [[nodiscard]] std::vector<const DemoTorrent*> find(const DemoQuery& query) const;
  /// Null when there is none.
  [[nodiscard]] const DemoTorrent* withId(int id) const;

 private:
  std::vector<DemoTorrent> torrents_;
  /// The names in lower case, index for index.
  std::vector<std::string> folded_;
};

}  // namespace veltramoor
