#include "platform/CookieEngine.h"

#include <curl/curl.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <unordered_set>

#include "platform/CookieLine.h"
#include "platform/CookieStorage.h"

namespace veltramoor {
namespace {

using Lines = std::unordered_map<std::string, std::string>;

/// The unexpired ones, in no order: that of the engine's list is its own affair. Releases differ in
/// how long they list a cookie that is over.
Lines linesIn(CURL* handle) {
  curl_slist* first = nullptr;
  curl_easy_getinfo(handle, CURLINFO_COOKIELIST, &first);
  const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> owner(first,
                                                                          &curl_slist_free_all);
  Lines lines;
  for (const curl_slist* item = first; item != nullptr; item = item->next) {
    if (const auto cookie = cookieOfLine(item->data); cookie && !isExpired(*cookie)) {
      lines.emplace(item->data, engineIdentityOf(*cookie));
    }
  }
  return lines;
}

void give(CURL* handle, const char* line) {
  if (curl_easy_setopt(handle, CURLOPT_COOKIELIST, line) == CURLE_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
}

bool isHeldAsStored(const Cookie& cookie) {
  const auto line = lineOfCookie(cookie);
  return line && line == lineForEngine(cookie);
}

}  // namespace

CookieEngine::CookieEngine(void* handle, CookieStorage& store) : handle_(handle), store_(store) {
  curl_easy_setopt(handle_, CURLOPT_COOKIEFILE, "");  // Switches the engine on, without a file.
}

void CookieEngine::handIn() {
  if (version_ == store_.version()) {
    return;
  }
  const auto [version, cookies] = store_.snapshot();
  give(handle_, "ALL");
  for (const Cookie& cookie : cookies) {
    if (const auto line = lineForEngine(cookie)) {
      give(handle_, line->c_str());
    }
  }
  // Releases differ in what they make of a line, so what it holds is what it says.
  held_ = linesIn(handle_);
  version_ = version;
}

void CookieEngine::noteSetCookie(std::string_view value) {
  const std::string_view name = value.substr(0, value.find_first_of("=;"));
  const std::size_t begin = std::min(name.find_first_not_of(" \t"), name.size());
  const std::size_t end = name.find_last_not_of(" \t\r\n") + 1;
  setNames_.emplace_back(name.substr(begin, std::max(begin, end) - begin));
}

void CookieEngine::takeBack() {
  if (setNames_.empty()) {
    return;
  }
  Lines now = linesIn(handle_);
  CookieChanges changes;
  std::unordered_set<std::string> identities;
  for (const auto& [line, identity] : now) {
    identities.insert(identity);
    if (!held_.contains(line)) {
      changes.set.push_back(*cookieOfLine(line));
    }
  }
  for (const auto& [line, identity] : held_) {
    // One whose time is over went by itself; the store knows that, too.
    if (const auto cookie = cookieOfLine(line);
        !identities.contains(identity) && !isExpired(*cookie)) {
      changes.deleted.push_back(*cookie);
    }
  }
  const auto place = [this](const Cookie& cookie) {
    return std::distance(setNames_.begin(),
                         std::find(setNames_.begin(), setNames_.end(), cookie.name));
  };
  std::sort(changes.set.begin(), changes.set.end(), [&place](const Cookie& a, const Cookie& b) {
    const auto placeA = place(a);
    const auto placeB = place(b);
    return placeA != placeB ? placeA < placeB : identityOf(a) < identityOf(b);
  });
  const auto [before, after] = store_.apply(changes);
  // As long as nobody else changed the store, and each kept the cookies as the other does.
  const bool isSame = before == version_ && std::ranges::all_of(changes.set, isHeldAsStored);
  version_ = isSame ? std::optional(after) : std::nullopt;
  setNames_.clear();
  held_ = std::move(now);
}

}  // namespace veltramoor
