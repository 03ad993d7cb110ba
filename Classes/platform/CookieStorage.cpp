#include "platform/CookieStorage.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <mutex>
#include <utility>

#include "platform/CookieFile.h"
#include "platform/CookieLine.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

// How long a list that the disk refused waits to be written again, when nothing changes before.
constexpr std::chrono::seconds kRetryPause{1};

struct StoredCookie {
  Cookie cookie;
  std::string line;
  std::string identity;
};

}  // namespace

class CookieStorage::Impl {
 public:
  explicit Impl(const std::optional<std::filesystem::path>& stateFile) {
    if (stateFile) {
      file_.emplace(*stateFile);
      lastLines_ = file_->read();
      writtenLines_ = lastLines_;
      for (const std::string& line : lastLines_) {
        // Through a Cookie, so that a line which is none reaches nothing.
        if (const auto cookie = cookieOfLine(line); cookie && !isExpired(*cookie)) {
          insert(*cookie);
        }
      }
    }
  }

  ~Impl() {
    if (file_ && !lastWriteDone_) {
      file_->write(writtenLines_, lastLines_);
    }
  }

  Snapshot snapshot() {
    const std::scoped_lock lock(mutex_);
    Snapshot snapshot{changes_, {}};
    forEachUnexpired(
        [&snapshot](const StoredCookie& item) { snapshot.cookies.push_back(item.cookie); });
    return snapshot;
  }

  void insert(const Cookie& cookie) {
    const auto line = lineOfCookie(cookie);
    if (!line) {
      return;
    }
    const std::scoped_lock lock(mutex_);
    StoredCookie stored{*cookieOfLine(*line), *line, {}};
    stored.identity = identityOf(stored.cookie);
    put(std::move(stored),
        [](const StoredCookie& a, const StoredCookie& b) { return a.identity == b.identity; });
  }

  std::size_t erase(const std::vector<std::string>& domains, std::optional<std::string_view> name) {
    std::vector<std::string> wanted;
    std::transform(domains.begin(), domains.end(), std::back_inserter(wanted), &lowerCaseDomain);
    const std::scoped_lock lock(mutex_);
    return eraseIf([&](const StoredCookie& item) {
      return (!name || item.cookie.name == *name) && !isExpired(item.cookie) &&
             std::find(wanted.begin(), wanted.end(), lowerCaseDomain(item.cookie.domain)) !=
                 wanted.end();
    });
  }

  std::pair<std::uint64_t, std::uint64_t> apply(const CookieChanges& changes) {
    const std::scoped_lock lock(mutex_);
    const std::uint64_t before = changes_;
    for (const Cookie& cookie : changes.deleted) {
      eraseIf([identity = engineIdentityOf(cookie)](const StoredCookie& item) {
        return engineIdentityOf(item.cookie) == identity;
      });
    }
    for (const Cookie& cookie : changes.set) {
      if (const auto line = lineOfCookie(cookie)) {
        put({cookie, *line, identityOf(cookie)}, [](const StoredCookie& a, const StoredCookie& b) {
          return engineIdentityOf(a.cookie) == engineIdentityOf(b.cookie);
        });
      }
    }
    return {before, changes_};
  }

  void keepOnly(CookieStorage& storage, const std::vector<std::string>& domains,
                const Cookie& cookie) {
    {
      const std::scoped_lock lock(keeping_);
      if (kept_ && kept_->changes == changes_ && kept_->line == lineOfCookie(cookie) &&
          kept_->domains == domains && !cookie.expires) {
        return;
      }
    }
    const std::scoped_lock lock(mutex_);
    storage.erase(domains, cookie.name);
    storage.insert(cookie);
    const std::scoped_lock keepingLock(keeping_);
    kept_ = Kept{changes_, domains, lineOfCookie(cookie)};
  }

  void saveIfChanged() {
    // Whoever changed something waits below until it is written, even when another thread does it.
    if (savedChanges_ >= changes_ && lastWriteDone_) {
      return;
    }
    std::vector<std::string> lines;
    std::uint64_t snapshot = 0;
    std::uint64_t changes = 0;
    {
      const std::scoped_lock lock(mutex_);
      changes = changes_;
      forEachUnexpired([&lines](const StoredCookie& item) { lines.push_back(item.line); });
      snapshot = ++snapshots_;
    }
    // Not under the cookies' own lock: other requests go on while the disk writes.
    const std::scoped_lock lock(saving_);
    if (snapshot < lastSnapshot_) {
      return;  // What was written in the meantime is newer.
    }
    lastSnapshot_ = snapshot;
    const auto now = std::chrono::steady_clock::now();
    if (file_ && (lines != lastLines_ || (!lastWriteDone_ && now >= retryTime_))) {
      lastLines_ = std::move(lines);
      lastWriteDone_ = file_->write(writtenLines_, lastLines_);
      if (lastWriteDone_) {
        writtenLines_ = lastLines_;
      }
      retryTime_ = now + kRetryPause;
    }
    savedChanges_ = changes;
  }

  std::recursive_mutex& mutex() { return mutex_; }
  [[nodiscard]] std::uint64_t version() const { return changes_; }

 private:
  template <typename Use>
  void forEachUnexpired(const Use& use) const {
    for (const StoredCookie& item : stored_) {
      if (!isExpired(item.cookie)) {
        use(item);
      }
    }
  }

  template <typename Condition>
  std::size_t eraseIf(const Condition& condition) {
    const std::size_t erased = std::erase_if(stored_, condition);
    changes_ += erased > 0 ? 1 : 0;
    return erased;
  }

  /// In the place of the first one that `isReplaced` finds for it, or at the end; the others that
  /// it finds go. One whose time is over leaves nothing but the gap.
  template <typename IsReplaced>
  void put(StoredCookie item, const IsReplaced& isReplaced) {
    const auto replaced = [&](const StoredCookie& other) { return isReplaced(item, other); };
    // What is over has no place to be taken.
    std::erase_if(stored_, [](const StoredCookie& other) { return isExpired(other.cookie); });
    const auto first = std::find_if(stored_.begin(), stored_.end(), replaced);
    if (isExpired(item.cookie)) {
      eraseIf(replaced);
    } else if (first == stored_.end()) {
      stored_.push_back(std::move(item));
      ++changes_;
    } else {
      const auto others = std::remove_if(std::next(first), stored_.end(), replaced);
      changes_ += others != stored_.end() || first->line != item.line ? 1 : 0;
      stored_.erase(others, stored_.end());
      *first = std::move(item);
    }
  }

  // Recursive, and held over steps of several operations.
  std::recursive_mutex mutex_;
  std::vector<StoredCookie> stored_;
  std::uint64_t snapshots_ = 0;

  // Counts up with every change, for those who only want to know whether there was one.
  std::atomic<std::uint64_t> changes_{0};

  struct Kept {
    std::uint64_t changes;
    std::vector<std::string> domains;
    std::optional<std::string> line;
  };
  std::mutex keeping_;
  std::optional<Kept> kept_;

  std::mutex saving_;
  std::optional<CookieFile> file_;
  std::atomic<std::uint64_t> savedChanges_{0};
  std::atomic<bool> lastWriteDone_{true};
  // What this process last loaded or wrote, and what it wants the file to hold: the same, unless
  // the disk refused it.
  std::vector<std::string> writtenLines_;
  std::vector<std::string> lastLines_;
  std::uint64_t lastSnapshot_ = 0;
  std::chrono::steady_clock::time_point retryTime_;
};

CookieStorage::CookieStorage(const std::optional<std::filesystem::path>& stateFile)
    : impl_(std::make_unique<Impl>(stateFile)) {}

CookieStorage::~CookieStorage() = default;

CookieStorage& CookieStorage::sharedInstance() {
  static CookieStorage instance(defaultStateFile());
  return instance;
}

std::vector<Cookie> CookieStorage::cookies() const { return impl_->snapshot().cookies; }

void CookieStorage::insert(const Cookie& cookie) { impl_->insert(cookie); }

std::size_t CookieStorage::erase(const std::vector<std::string>& domains,
                                 std::optional<std::string_view> name) {
  return impl_->erase(domains, name);
}

void CookieStorage::keepOnly(const std::vector<std::string>& domains, const Cookie& cookie) {
  impl_->keepOnly(*this, domains, cookie);
}

void CookieStorage::atomically(const std::function<void(CookieStorage&)>& step) {
  const std::scoped_lock lock(impl_->mutex());
  step(*this);
}

void CookieStorage::saveIfChanged() { impl_->saveIfChanged(); }

std::uint64_t CookieStorage::version() const { return impl_->version(); }

CookieStorage::Snapshot CookieStorage::snapshot() const { return impl_->snapshot(); }

std::pair<std::uint64_t, std::uint64_t> CookieStorage::apply(const CookieChanges& changes) {
  return impl_->apply(changes);
}

}  // namespace veltramoor
