#include "site/SiteSession.h"

#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"

namespace veltramoor {
namespace {

constexpr std::string_view kLoginForm = R"(action="/login" name="loginform")";
constexpr std::string_view kInvalidUsername = "check username and password.";
constexpr std::string_view kAnonymous = "anonymous";

// One byte of another encoding must not make the login form an account page: such a page is judged
// by its bytes.
std::string_view pageOf(const HttpRequest& request) {
  const auto& page = request.result() ? request.result() : request.responseData();
  return page ? std::string_view(*page) : std::string_view();
}

// Domain of a cookie for that host only: without port and brackets.
std::string cookieDomain(const std::string& host) {
  const std::string domain = SiteConfiguration::hostWithoutPort(host);
  return domain.starts_with('[') ? domain.substr(1, domain.size() - 2) : domain;
}

}  // namespace

std::string settingsAddress() { return SiteConfiguration::current().siteAddress("/settings"); }

std::string loginAddress() { return SiteConfiguration::current().siteAddress("/login"); }

bool isLoginHeader(std::string_view page) { return page.find(kLoginForm) != page.npos; }

bool isLoginUrl(std::string_view url) { return url == loginAddress(); }

bool isInvalidUsername(std::string_view page) { return page.find(kInvalidUsername) != page.npos; }

bool sessionExists(const HttpRequest& settingsPage) {
  return settingsPage.isResponseValid() && !isLoginHeader(pageOf(settingsPage));
}

LoginOutcome judgeLogin(const HttpRequest& request) {
  const std::string_view page = pageOf(request);
  if (request.result() == kAnonymous || sessionExists(request)) {
    return {true, ""};
  }
  if (!request.isResponseValid()) {
    return {false, "Connection error. Verify your data network."};
  }
  if (isInvalidUsername(page)) {
    return {false, "Bad username or password."};
  }
  return {false,
          "Unknown login error.  Verify you have cookies enabled.  Goto Settings->Safari->Accept "
          "Cookies.  Select 'From visited' or 'Always' and restart the app."};
}

std::size_t deleteSessionCookies() {
  const SiteConfiguration& configuration = SiteConfiguration::current();
  const std::string site = cookieDomain(configuration.siteHost);
  const std::string defaultSite = cookieDomain(configuration.defaultSiteHost);
  const std::string captcha = cookieDomain(configuration.captchaHost);
  // The site in use may be another than the built-in one; its session ends too.
  std::vector<std::string> domains{"." + defaultSite, defaultSite, "." + captcha};
  if (!site.empty()) {
    domains.insert(domains.end(), {"." + site, site});
  }
  // Gone from the disk as well before anything else happens.
  CookieStorage& cookies = CookieStorage::sharedInstance();
  const std::size_t deleted = cookies.erase(domains);
  cookies.saveIfChanged();
  return deleted;
}

}  // namespace veltramoor
