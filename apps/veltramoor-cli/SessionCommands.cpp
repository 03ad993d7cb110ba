#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "Commands.h"
#include "ListOutput.h"
#include "PasswordPrompt.h"
#include "platform/SiteConfiguration.h"
#include "platform/UrlLoading.h"
#include "site/FetchPageLoginCheck.h"
#include "site/FetchPageSignIn.h"
#include "site/SiteSession.h"
#include "site/UserInfo.h"

namespace veltramoor::cli {
namespace {

using Page = std::shared_ptr<HttpRequest>;

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

int tell(bool json) {
  const UserInfo& user = UserInfo::sharedInstance();
  const std::string name = user.username().value_or("Anonymous");
  if (json) {
    fmt::print("{}\n", jsonText({{"username", name}, {"ratio", user.ratio().value_or("")}}, 2));
  } else {
    fmt::print("{} ({})\n", printable(name), printable(user.ratio().value_or("")));
  }
  return kDone;
}

int login(Terminal& terminal, const std::string& username, bool json) {
  if (SiteConfiguration::current().siteHost.empty()) {
    return failWithoutSite();
  }
  const std::optional<std::string> password = readPassword();
  if (!password) {
    return fail(kWrongUsage, "No password was given.");
  }
  const Page page = exchange<FetchPageSignIn>(terminal, loginAddress(), username, *password);
  const LoginOutcome outcome = judgeLogin(*page);
  return outcome.loggedIn ? tell(json) : fail(kRefused, outcome.message);
}

int whoami(Terminal& terminal, bool json) {
  if (SiteConfiguration::current().siteHost.empty()) {
    return failWithoutSite();
  }
  const Page page = exchange<FetchPageLoginCheck>(terminal, settingsAddress());
  if (!page->isResponseValid()) {
    return fail(kRefused, judgeLogin(*page).message);
  }
  if (!sessionExists(*page)) {
    UserInfo::sharedInstance().setUsername("Anonymous");
    UserInfo::sharedInstance().setRatio("N/A");
  }
  return tell(json);
}

int logout() {
  deleteSessionCookies();
  return kDone;
}

}  // namespace

void addSessionCommands(CLI::App& app, Commands& commands) {
  CLI::App* signIn = app.add_subcommand(
      "login", "Sign in to the site; the password is asked for, or read from standard input");
  const auto username = std::make_shared<std::string>();
  signIn->add_option("username", *username, "Your name at the site")->required()->check(utf8());
  commands.push_back({signIn, [username](Terminal& terminal, bool json) {
                        return login(terminal, *username, json);
                      }});
  commands.push_back(
      {app.add_subcommand("logout", "End the session"), [](Terminal&, bool) { return logout(); }});
  commands.push_back({app.add_subcommand("whoami", "Show who the site takes you for"), whoami});
}

}  // namespace veltramoor::cli
