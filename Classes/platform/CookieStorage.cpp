#include "platform/CookieStorage.h"

#include <curl/curl.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

#include "platform/CookieFile.h"
#include "platform/CookieLine.h"
#include "platform/CurlGlobal.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

// How long a list that the disk refused waits to be written again, when nothing changes before.
constexpr std::chrono::seconds kRetryPause{1};

struct ListedCookie {
  std::string line;
  Cookie cookie;
  std::uint64_t place = 0;
};

}  // namespace

class CookieStorage::Impl {
 public:
  explicit Impl(const std::optional<std::filesystem::path>& stateFile) {
    initialiseCurl();
    share_.reset(curl_share_init());
    curl_share_setopt(share_.get(), CURLSHOPT_USERDATA, this);
    curl_share_setopt(share_.get(), CURLSHOPT_LOCKFUNC, &Impl::lock);
    curl_share_setopt(share_.get(), CURLSHOPT_UNLOCKFUNC, &Impl::unlock);
    curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    handle_.reset(curl_easy_init());
    if (share_ == nullptr || handle_ == nullptr) {
      throw std::bad_alloc();
    }
    curl_easy_setopt(handle_.get(), CURLOPT_SHARE, share_.get());
    curl_easy_setopt(handle_.get(), CURLOPT_COOKIEFILE, "");
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

  // The unexpired cookies in the order of their places; cookies that the engine took from an answer
  // since the last listing get theirs here. The engine itself lists by a hash of the domain.
  std::vector<ListedCookie> listing() {
    const std::scoped_lock lock(mutex_);
    curl_slist* first = nullptr;
    curl_easy_getinfo(handle_.get(), CURLINFO_COOKIELIST, &first);
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> owner(first,
                                                                            &curl_slist_free_all);
    std::vector<ListedCookie> listed;
    for (const curl_slist* item = first; item != nullptr; item = item->next) {
      // A deleted cookie is listed, as expired, until the next one is stored.
      if (auto cookie = cookieOfLine(item->data); cookie && !isExpired(*cookie)) {
        listed.push_back({item->data, std::move(*cookie), 0});
      }
    }
    std::unordered_map<std::string, std::uint64_t> places;
    for (ListedCookie& item : listed) {
      std::string identity = identityOf(item.cookie);
      const auto known = places_.find(identity);
      item.place = known != places_.end() ? known->second : nextPlace_++;
      places.emplace(std::move(identity), item.place);
    }
    places_ = std::move(places);
    std::sort(listed.begin(), listed.end(),
              [](const auto& a, const auto& b) { return a.place < b.place; });
    return listed;
  }

  void insert(const Cookie& cookie) {
    if (const auto line = lineOfCookie(cookie)) {
      const std::scoped_lock lock(mutex_);
      ++changes_;
      curl_easy_setopt(handle_.get(), CURLOPT_COOKIELIST, line->c_str());
      if (places_.try_emplace(identityOf(*cookieOfLine(*line)), nextPlace_).second) {
        ++nextPlace_;
      }
    }
  }

  void remove(Cookie cookie) {
    cookie.expires = 0;
    const std::scoped_lock lock(mutex_);
    insert(cookie);
    places_.erase(identityOf(cookie));
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

  void noteChange() { ++changes_; }

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
      for (ListedCookie& item : listing()) {
        lines.push_back(std::move(item.line));
      }
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
  CURLSH* share() const { return share_.get(); }

 private:
  // Recursive, and held over steps of several operations, during which the engine locks it again.
  static void lock(CURL* /*handle*/, curl_lock_data data, curl_lock_access /*access*/, void* self) {
    auto* impl = static_cast<Impl*>(self);
    data == CURL_LOCK_DATA_COOKIE ? impl->mutex_.lock() : impl->attaching_.lock();
  }
  static void unlock(CURL* /*handle*/, curl_lock_data data, void* self) {
    auto* impl = static_cast<Impl*>(self);
    data == CURL_LOCK_DATA_COOKIE ? impl->mutex_.unlock() : impl->attaching_.unlock();
  }

  std::recursive_mutex mutex_;
  std::mutex attaching_;
  std::unordered_map<std::string, std::uint64_t> places_;
  std::uint64_t nextPlace_ = 0;
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

  // The handle goes first, and both before the mutexes that their locks need.
  std::unique_ptr<CURLSH, decltype(&curl_share_cleanup)> share_{nullptr, &curl_share_cleanup};
  std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle_{nullptr, &curl_easy_cleanup};
};

CookieStorage::CookieStorage(const std::optional<std::filesystem::path>& stateFile)
    : impl_(std::make_unique<Impl>(stateFile)) {}

CookieStorage::~CookieStorage() = default;

CookieStorage& CookieStorage::sharedInstance() {
  static CookieStorage instance(defaultStateFile());
  return instance;
}

std::vector<Cookie> CookieStorage::cookies() const {
  std::vector<Cookie> cookies;
  for (ListedCookie& item : impl_->listing()) {
    cookies.push_back(std::move(item.cookie));
  }
  return cookies;
}

void CookieStorage::insert(const Cookie& cookie) { impl_->insert(cookie); }

std::size_t CookieStorage::erase(const std::vector<std::string>& domains,
                                 std::optional<std::string_view> name) {
  std::vector<std::string> wanted;
  std::transform(domains.begin(), domains.end(), std::back_inserter(wanted), &lowerCaseDomain);
  const std::scoped_lock lock(impl_->mutex());
  std::size_t erased = 0;
  for (const ListedCookie& item : impl_->listing()) {
    if ((!name || item.cookie.name == *name) &&
        std::find(wanted.begin(), wanted.end(), lowerCaseDomain(item.cookie.domain)) !=
            wanted.end()) {
      impl_->remove(item.cookie);
      ++erased;
    }
  }
  return erased;
}

void CookieStorage::keepOnly(const std::vector<std::string>& domains, const Cookie& cookie) {
  impl_->keepOnly(*this, domains, cookie);
}

void CookieStorage::atomically(const std::function<void(CookieStorage&)>& step) {
  const std::scoped_lock lock(impl_->mutex());
  step(*this);
}

void CookieStorage::saveIfChanged() { impl_->saveIfChanged(); }

void CookieStorage::noteChange() { impl_->noteChange(); }

void* CookieStorage::shareHandle() const { return impl_->share(); }

}  // namespace veltramoor
