#include "platform/CookieStorage.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "platform/CookieFile.h"
#include "platform/CookieLimits.h"
#include "platform/CookieLine.h"
#include "platform/MainThread.h"
#include "platform/RefusedWrites.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateAccess.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

using Clock = std::chrono::steady_clock;

// How long a list that the disk refused waits to be written again, when nothing changes before.
constexpr std::chrono::seconds kRetryPause{1};

struct StoredCookie {
  StoredCookie(const Cookie& stored, std::string lineOfIt, std::uint64_t when)
      : cookie(stored),
        line(std::move(lineOfIt)),
        identity(identityOf(stored)),
        engineIdentity(engineIdentityOf(stored)),
        limitDomain(limitDomainOf(stored)),
        setAt(when) {}

  Cookie cookie;
  std::string line;
  std::string identity;
  std::string engineIdentity;
  std::string limitDomain;
  std::uint64_t setAt;
};

}  // namespace

class CookieStorage::Impl {
 public:
  explicit Impl(const std::optional<std::filesystem::path>& stateFile) {
    if (stateFile) {
      file_.emplace(*stateFile);
      lastLines_ = file_->read();
      writtenLines_ = lastLines_;
      restore(lastLines_);
    }
  }

  ~Impl() {
    if (file_ && !lastWriteDone_) {
      try {
        file_->write(writtenLines_, lastLines_);
      } catch (const std::exception&) {
        return;  // The person has been told.
      }
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
    put({*cookieOfLine(*line), *line, ++sets_}, &StoredCookie::identity);
    trim();
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
        return item.engineIdentity == identity;
      });
    }
    for (const Cookie& cookie : changes.set) {
      if (const auto line = lineOfCookie(cookie)) {
        put({cookie, *line, ++sets_}, &StoredCookie::engineIdentity);
      }
    }
    const std::uint64_t after = changes_;
    // Another change: the engine that set them still holds what went.
    trim();
    return {before, after};
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
    if (!file_ || (savedChanges_ >= changes_ && lastWriteDone_)) {
      return;
    }
    try {
      bool isWaiting = false;
      bool isWritten = false;
      withPatience([&] { isWritten = save(std::exchange(isWaiting, true)); });
      if (isWritten) {
        reportWritten();
      }
    } catch (const std::exception& error) {
      {
        const std::scoped_lock lock(saving_);
        (MainThread::isWindowThread() ? windowRetryTime_ : retryTime_) = Clock::now() + kRetryPause;
      }
      reportRefusal(error);
    }
  }

  std::recursive_mutex& mutex() { return mutex_; }
  [[nodiscard]] std::uint64_t version() const { return changes_; }

 private:
  /// One try, of the cookies as they are now; whether there was something to write. Throws what the
  /// file throws. `isWaiting`: not the first try, which another thread's giving up does not end.
  bool save(bool isWaiting) {
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
    // Else another thread's newer list, which may still wait for its turn, goes for this one.
    if (snapshot > lastSnapshot_) {
      lastSnapshot_ = snapshot;
      lastChanges_ = changes;
      if (lines != lastLines_) {
        lastLines_ = std::move(lines);
        lastWriteDone_ = false;
        retryTime_ = {};
      }
    }
    bool isWritten = false;
    const auto retryTime = MainThread::isWindowThread() ? windowRetryTime_ : retryTime_;
    if (!lastWriteDone_ && (isWaiting || Clock::now() >= retryTime)) {
      file_->write(writtenLines_, lastLines_);
      writtenLines_ = lastLines_;
      lastWriteDone_ = true;
      isWritten = true;
    }
    savedChanges_ = lastChanges_;
    return isWritten;
  }

  void reportWritten() {
    if (!file_->problem()) {
      RefusedWrites::succeeded();
    } else if (!saysItIsInMemory_.exchange(true)) {
      RefusedWrites::report(*file_->problem(), *file_->problem());
    }
  }

  void reportRefusal(const std::exception& error) {
    const auto& problem = file_->problem();
    const std::string reason = problem ? *problem : refusalWords(error);
    RefusedWrites::report(
        reason,
        problem
            ? *problem
            : "Cookies could not be saved, so that you may have to sign in again: " + reason + ".");
  }

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

  /// Through cookies, so that a line which is none reaches nothing.
  void restore(const std::vector<std::string>& lines) {
    std::unordered_set<std::string> identities;
    for (const std::string& line : lines) {
      const auto cookie = cookieOfLine(line);
      const auto own = cookie ? lineOfCookie(*cookie) : std::nullopt;
      if (own && !isExpired(*cookie) && identities.insert(identityOf(*cookie)).second) {
        stored_.emplace_back(*cookie, *own, ++sets_);
        ++changes_;
      }
    }
    mayBeOver_ = true;
    trim();
  }

  /// Drops what is over the limits.
  void trim() {
    if (!std::exchange(mayBeOver_, false)) {
      return;
    }
    std::vector<CookieRank> ranks;
    for (const StoredCookie& item : stored_) {
      ranks.push_back({item.limitDomain, !item.cookie.expires, item.setAt});
    }
    const std::vector<bool> isKept = keptWithinLimits(
        ranks, SiteConfiguration::hostWithoutPort(SiteConfiguration::current().siteHost));
    std::vector<StoredCookie> kept;
    for (std::size_t i = 0; i < stored_.size(); ++i) {
      if (isKept[i]) {
        kept.push_back(std::move(stored_[i]));
      }
    }
    changes_ += kept.size() < stored_.size() ? 1 : 0;
    stored_ = std::move(kept);
  }

  /// In the place of the first one of the same identity, of the kind that is compared by, or at the
  /// end; the others of it go. One whose time is over leaves nothing but the gap.
  void put(StoredCookie item, std::string StoredCookie::*identity) {
    const auto replaced = [&](const StoredCookie& other) {
      return other.*identity == item.*identity;
    };
    // What is over has no place to be taken.
    std::erase_if(stored_, [](const StoredCookie& other) { return isExpired(other.cookie); });
    const auto first = std::find_if(stored_.begin(), stored_.end(), replaced);
    if (isExpired(item.cookie)) {
      eraseIf(replaced);
    } else if (first == stored_.end()) {
      mayBeOver_ = stored_.size() >= kMostCookies ||
                   std::ranges::count(stored_, item.limitDomain, &StoredCookie::limitDomain) >=
                       std::ptrdiff_t{kMostCookiesOfADomain} ||
                   mayBeOver_;
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
  std::uint64_t sets_ = 0;
  bool mayBeOver_ = false;
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
  std::uint64_t lastChanges_ = 0;
  std::atomic<bool> saysItIsInMemory_ = false;
  Clock::time_point retryTime_;
  // Of the thread that draws the window, which gives up sooner: a page that sets fifty cookies
  // there must not wait for a lock fifty times.
  Clock::time_point windowRetryTime_;
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
