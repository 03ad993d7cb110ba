// What one list asks the site for.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Url.h"

namespace veltramoor {

/// Keys of the settings that a listing reads; "": it has no such setting.
struct ListingKeys {
  std::string_view category;
  std::string_view order;
  std::string_view sort;
};

/// The pages of a list, in the order in which they are asked for. Knows no screen: whoever fetches
/// them decides how. Main thread only.
class Listing {
 public:
  /// A full page of the site; a shorter one is the last.
  static constexpr std::size_t kFullPage = 30;

  explicit Listing(const ListingKeys& keys) : keys_(keys) {}
  virtual ~Listing() = default;
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  /// Address of page `page`, from 0, by the settings of this moment; none when it cannot be a URL.
  [[nodiscard]] virtual std::optional<Url> pageUrl(int page) const = 0;
  /// What the first appearance and a refresh ask for.
  [[nodiscard]] virtual std::optional<Url> firstPageUrl() const { return pageUrl(0); }

  /// The page that was asked for last.
  [[nodiscard]] int currentPage() const { return currentPage_; }
  void setCurrentPage(int page) { currentPage_ = page; }
  /// The page that "load more" asks for.
  [[nodiscard]] int nextPage() const { return currentPage_ + 1; }

  [[nodiscard]] const ListingKeys& keys() const { return keys_; }
  /// The stored setting, or what this listing was told in its place.
  [[nodiscard]] std::optional<std::string> setting(std::string_view key) const;
  /// Has this one listing take `value` for the setting; nothing is stored.
  void overrideSetting(std::string_view key, std::string value);

  /// What the settings of this moment change, in words: "Video, Movies; by size, ascending". ""
  /// when the list shows everything, newest first.
  [[nodiscard]] std::string choiceInWords() const;

 protected:
  /// Whether the order counts for what is asked for now.
  [[nodiscard]] virtual bool isOrdered() const { return !keys_.order.empty(); }
  /// Whether a category is chosen.
  [[nodiscard]] bool isNarrowed() const;
  /// The category's code; "" and "0" are all.
  [[nodiscard]] std::string category() const;
  /// The order's code, direction included.
  [[nodiscard]] std::string order() const;
  /// "http://", the site's host, and `path`.
  [[nodiscard]] static std::optional<Url> onSite(std::string_view path);

 private:
  ListingKeys keys_;
  std::map<std::string, std::string, std::less<>> overrides_;
  int currentPage_ = 0;
};

}  // namespace veltramoor
