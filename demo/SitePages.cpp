#include "demo/SitePages.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "demo/Gzip.h"
#include "demo/Pages.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

constexpr std::size_t kTopRows = 100;

std::vector<std::string> splitPath(std::string_view path) {
  std::vector<std::string> parts;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    if (end > 0) {
      parts.push_back(percentDecode(path.substr(0, end)));
    }
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return parts;
}

template <typename Number>
Number number(const std::vector<std::string>& parts, std::size_t index, Number fallback) {
  Number value = fallback;
  if (index < parts.size()) {
    const std::string& text = parts[index];
    std::from_chars(text.data(), text.data() + text.size(), value);
  }
  return value;
}

std::string withoutPort(const std::string& host) { return host.substr(0, host.find(':')); }

SiteAnswer picture(std::string bytes, std::string type) {
  SiteAnswer answer;
  answer.contentType = std::move(type);
  answer.body = std::move(bytes);
  answer.compressible = false;
  return answer;
}

void setCookie(SiteAnswer& answer, std::string_view name, std::string_view value,
               const std::string& domain, int seconds) {
  answer.headers.emplace_back("Set-Cookie", fmt::format("{}={}; Domain={}; Path=/; Max-Age={}",
                                                        name, value, domain, seconds));
}

constexpr int kMonth = 30 * 24 * 3600;

}  // namespace

SiteAnswer html(std::string body, int status) {
  SiteAnswer answer;
  answer.status = status;
  answer.body = std::move(body);
  return answer;
}

SiteAnswer redirect(std::string location) {
  SiteAnswer answer;
  answer.status = 302;
  answer.headers.emplace_back("Location", std::move(location));
  return answer;
}

SitePages::SitePages(const DemoSiteOptions& options)
    : options_(options),
      catalogue_(options.seed, options.torrents),
      accounts_(options.seed),
      notice_(options.notice) {}

void SitePages::setNotice(const std::string& text) {
  const std::lock_guard lock(noticeMutex_);
  notice_ = text;
}

PageContext SitePages::contextFor(const SiteRequest& request) const {
  PageContext context{.catalogue = catalogue_,
                      .origin = {},
                      .movieDatabaseHost = options_.movieDatabaseHost,
                      .sponsoredDownloadHost = options_.sponsoredDownloadHost};
  const std::string host = request.seen.header("Host");
  context.origin = "http://" + (options_.hostName.empty() ? host : options_.hostName);
  const std::string language = request.seen.cookie("language");
  context.english = language.empty() ? !options_.requireLanguage : language == "en_EN";
  context.account = accounts_.withSession(request.seen.cookie("session"));
  context.pageRows = std::max<std::size_t>(1, options_.pageRows);
  return context;
}

std::string SitePages::cookieDomain(const SiteRequest& request) const {
  const std::string host = withoutPort(request.seen.header("Host"));
  const std::string own = withoutPort(options_.hostName);
  return !own.empty() && (host == own || host.ends_with("." + own)) ? own : host;
}

std::optional<std::string> SitePages::listing(const PageContext& context,
                                              const Parts& parts) const {
  const std::string& kind = parts[0];
  DemoQuery query;
  ListingPage page;
  page.rows = context.pageRows;
  if (kind == "recent") {
    page.number = number<std::size_t>(parts, 1, 0);
    page.title = context.say("Recent torrents", "Neueste Torrents");
    page.linkBefore = "/recent/";
  } else if (kind == "browse" && parts.size() > 1) {
    query.category = number(parts, 1, -1);
    page.number = number<std::size_t>(parts, 2, 0);
    query.order = number(parts, 3, 99);
    page.title = demoCategoryLabel(query.category);
    page.linkBefore = fmt::format("/browse/{}/", query.category);
    page.linkAfter = fmt::format("/{}", query.order);
  } else if (kind == "search" && parts.size() > 1) {
    query.words = parts[1];
    page.number = number<std::size_t>(parts, 2, 0);
    query.order = number(parts, 3, 99);
    query.category = number(parts, 4, 0);
    page.search = query.words;
    page.title =
        fmt::format("{}: {}", context.say("Search results", "Suchergebnisse"), query.words);
    page.linkBefore = fmt::format("/search/{}/", percentEncode(query.words));
    page.linkAfter = fmt::format("/{}/{}", query.order, query.category);
  } else if (kind == "top" && parts.size() > 1) {
    query.category = parts[1] == "all" ? 0 : number(parts, 1, -1);
    query.order = 7;
    page.rows = kTopRows;
    page.title = fmt::format("Top 100: {}", demoCategoryLabel(query.category));
  } else if (kind == "user" && parts.size() > 1) {
    query.uploader = parts[1];
    page.number = number<std::size_t>(parts, 2, 0);
    query.order = number(parts, 3, 99);
    page.title = query.uploader;
    page.linkBefore = fmt::format("/user/{}/", percentEncode(query.uploader));
    page.linkAfter = fmt::format("/{}", query.order);
  } else {
    return std::nullopt;
  }
  page.found = catalogue_.find(query);
  if (kind == "top" && page.found.size() > kTopRows) {
    page.found.resize(kTopRows);
  }
  return listingPage(context, page);
}

SiteAnswer SitePages::login(const SiteRequest& request, PageContext context) const {
  if (request.seen.method != "POST") {
    return html(loginPage(context, {}));
  }
  context.account = Accounts::withPassword(request.param("username"), request.param("password"));
  if (context.account == nullptr) {
    return html(loginPage(context, context.say("Login failed. Please check username and password.",
                                               "Anmeldung fehlgeschlagen.")));
  }
  SiteAnswer answer = loginAnswer_ == LoginAnswer::RedirectToSettings ? redirect("/settings")
                                                                      : html(settingsPage(context));
  const std::string domain = cookieDomain(request);
  setCookie(answer, "uid", context.account->uid, domain, kMonth);
  setCookie(answer, "session", accounts_.sessionOf(*context.account), domain, kMonth);
  return answer;
}

SiteAnswer SitePages::forum(const PageContext& context, const Parts& parts, bool ownHost) const {
  const std::size_t first = ownHost ? 0 : 1;
  const std::string_view base = ownHost ? "" : "/forum";
  if (parts.size() <= first) {
    return html(forumFrontPage(context, base));
  }
  if (parts[first] == "topic") {
    return html(forumTopicPage(context, base, number(parts, first + 1, 1)));
  }
  return html(forumFrontPage(context, base), 404);
}

SiteAnswer SitePages::page(const SiteRequest& request, const PageContext& context,
                           const Parts& parts) const {
  const std::string kind = parts.empty() ? "" : parts[0];
  const std::string last = parts.empty() ? "" : parts.back();
  if (request.seen.header("Host").starts_with("forum.")) {
    return forum(context, parts, true);
  }
  if (kind.empty()) return html(homePage(context));
  if (kind == "forum") return forum(context, parts, false);
  if (kind == "login") return login(request, context);
  if (kind == "settings") {
    return html(context.account != nullptr ? settingsPage(context) : loginPage(context, {}));
  }
  if (kind == "logout") {
    SiteAnswer answer = redirect("/");
    setCookie(answer, "uid", "", cookieDomain(request), 0);
    setCookie(answer, "session", "", cookieDomain(request), 0);
    return answer;
  }
  if (kind == "language" && (last == "en_EN" || last == "de_DE")) {
    SiteAnswer answer = redirect("/");
    setCookie(answer, "language", last, cookieDomain(request), kMonth);
    return answer;
  }
  if (kind == "s") {
    return redirect(fmt::format("/search/{}/0/{}/{}", percentEncode(request.param("q")),
                                number<int>({request.param("orderby")}, 0, 99),
                                number<int>({request.param("category")}, 0, 0)));
  }
  if (kind == "torrent") {
    if (const DemoTorrent* torrent = catalogue_.withId(number(parts, 1, 0))) {
      return html(detailsPage(context, *torrent));
    }
  }
  if (kind == "veltramoor.php") {
    const std::lock_guard lock(noticeMutex_);
    return html(notice_);
  }
  if (kind == "img" && last.ends_with(".png")) {
    return picture(categoryPng(number(parts, 1, 0)), "image/png");
  }
  if (kind == "static" && last.ends_with(".gif")) return picture(magnetGif(), "image/gif");
  if (auto body = listing(context, parts)) return html(*std::move(body));
  return html(messagePage(context, context.say("Not found", "Nicht gefunden"),
                          context.say("There is no such page.", "Diese Seite gibt es nicht.")),
              404);
}

SiteAnswer SitePages::answer(const SiteRequest& request, FaultKind layout) const {
  PageContext context = contextFor(request);
  context.layout = layout;
  return page(request, context, splitPath(request.path));
}

}  // namespace veltramoor
