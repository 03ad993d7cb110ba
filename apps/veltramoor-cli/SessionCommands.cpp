#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <tuple>

#include "ArgumentChecks.h"
#include "CommandTable.h"
#include "ListOutput.h"
#include "PasswordPrompt.h"
#include "platform/CookieStorage.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateFile.h"
#include "platform/UrlLoading.h"
#include "site/FetchPageLoginCheck.h"
#include "site/FetchPageSignIn.h"
#include "site/PageTrouble.h"
#include "site/SiteSession.h"
#include "site/UserInfo.h"

namespace veltramoor::cli {
namespace {

using Page = std::shared_ptr<HttpRequest>;

struct LoginArguments {
  std::string username;
};

template <typename Operation, typename... Arguments>
Page exchange(Terminal& terminal, const std::string& address, Arguments&&... arguments) {
  Page page;
  OperationQueue queue(1);
  terminal.wait([&](const std::function<void(bool)>& done) {
    queue.addOperation(std::make_shared<Operation>(
        Url::parse(address), std::forward<Arguments>(arguments)..., [&page, done](Page answer) {
          page = std::move(answer);
          done(true);
        }));
  });
  return page;
}

bool isRecognised() {
  const std::optional<std::string> name = UserInfo::sharedInstance().username();
  return name && name != "Anonymous";
}

int tell(bool json) {
  const UserInfo& user = UserInfo::sharedInstance();
  const std::string name = user.username().value_or("Anonymous");
  if (json) {
    fmt::print("{}\n", jsonText({{"username", name}, {"ratio", user.ratio().value_or("")}}, 2));
  } else if (isRecognised()) {
    fmt::print("{}\nStatus: {}\n", printable(name), printable(user.ratio().value_or("")));
  } else {
    fmt::print("Nobody is signed in.\n");
  }
  return kDone;
}

/// The page is none of the site's that names an account, whatever its status.
int failToRecognise(const HttpRequest& page) {
  return fail(kRefused, "The site's answer names nobody. " + sentenceOf(troubleOf(page)));
}

/// The cookies from before a command, to see afterwards whether the state file took its changes.
class CookiesBefore {
 public:
  /// Whether what was set since is in the state file, and what was deleted is not.
  [[nodiscard]] bool changesAreKept() const {
    const std::vector<Cookie> now = CookieStorage::sharedInstance().cookies();
    const std::vector<Cookie> kept = CookieStorage(defaultStateFile()).cookies();
    return std::ranges::all_of(
               now, [&](const Cookie& one) { return isIn(before_, one) || isIn(kept, one); }) &&
           std::ranges::all_of(
               before_, [&](const Cookie& one) { return isIn(now, one) || !isIn(kept, one); });
  }

 private:
  static bool isIn(const std::vector<Cookie>& cookies, const Cookie& one) {
    return std::ranges::any_of(cookies, [&](const Cookie& other) {
      return std::tie(one.name, one.value, one.domain, one.path) ==
             std::tie(other.name, other.value, other.domain, other.path);
    });
  }

  const std::vector<Cookie> before_ = CookieStorage::sharedInstance().cookies();
};

int failToKeepCookies(std::string_view what) {
  return fail(kRefused, fmt::format("{} {}", what,
                                    Preferences::sharedInstance().lastProblem().value_or(
                                        "The settings file did not take the change.")));
}

int refuseLogin(const HttpRequest& page, const LoginOutcome& outcome) {
  if (!page.isResponseValid()) {
    return failToLoad(troubleOf(page));
  }
  return fail(kRefused, isInvalidUsername(page.responseData().value_or(""))
                            ? outcome.message
                            : "The site asks to sign in again and does not say why.");
}

int login(Terminal& terminal, const std::string& username, bool json) {
  if (SiteConfiguration::current().siteHost.empty()) {
    return failWithoutSite();
  }
  if (!Preferences::sharedInstance().isPersistent()) {
    return failToKeep();
  }
  const std::optional<std::string> password = readPassword();
  if (!password) {
    return fail(kWrongUsage, "No password was given.");
  }
  const CookiesBefore before;
  const Page page = exchange<FetchPageSignIn>(terminal, loginAddress(), username, *password);
  const LoginOutcome outcome = judgeLogin(*page);
  if (!outcome.loggedIn) {
    return refuseLogin(*page, outcome);
  }
  if (!isRecognised()) {
    return failToRecognise(*page);
  }
  return before.changesAreKept() ? tell(json)
                                 : failToKeepCookies("You are signed in until this command ends.");
}

int whoami(Terminal& terminal, bool json) {
  if (SiteConfiguration::current().siteHost.empty()) {
    return failWithoutSite();
  }
  const Page page = exchange<FetchPageLoginCheck>(terminal, settingsAddress());
  if (!page->isResponseValid()) {
    return failToLoad(troubleOf(*page));
  }
  if (!sessionExists(*page)) {
    UserInfo::sharedInstance().setUsername("Anonymous");
    UserInfo::sharedInstance().setRatio("N/A");
  } else if (!isRecognised()) {
    return failToRecognise(*page);
  }
  return tell(json);
}

int logout() {
  if (!Preferences::sharedInstance().isPersistent()) {
    return failToKeep();
  }
  const CookiesBefore before;
  deleteSessionCookies();
  return before.changesAreKept() ? kDone : failToKeepCookies("The session was not ended.");
}

}  // namespace

Commands sessionCommands() {
  const auto arguments = std::make_shared<LoginArguments>();
  return {{"login",
           "Sign in to the site; the password is asked for, or read from standard input",
           {{"username", "Your name at the site", into(arguments, &LoginArguments::username),
             utf8(), Argument::Kind::Required}},
           [arguments](Terminal& terminal, bool json) {
             return login(terminal, arguments->username, json);
           }},
          {"logout", "End the session", {}, [](Terminal&, bool) { return logout(); }},
          {"whoami", "Show who the site takes you for", {}, whoami}};
}

}  // namespace veltramoor::cli
