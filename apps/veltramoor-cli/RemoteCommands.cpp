#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "Commands.h"
#include "PasswordPrompt.h"
#include "platform/Preferences.h"
#include "remote/BitClient.h"
#include "remote/FetchPageRemoteUI.h"
#include "remote/ServerInfo.h"

namespace veltramoor::cli {
namespace {

nlohmann::json orNull(const std::optional<std::string>& text) {
  return text ? nlohmann::json(*text) : nlohmann::json();
}

std::string kindNames() {
  std::string names;
  for (const BitClientClass& kind : BitClient::classes()) {
    names += (names.empty() ? "" : ", ") + std::string(kind.name);
  }
  return names;
}

bool isPort(const std::string& text) {
  return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == text.npos &&
         std::stoi(text) >= 1 && std::stoi(text) <= 65535;
}

struct RemoteArguments {
  std::optional<std::string> client;
  std::optional<std::string> address;
  std::optional<std::string> port;
  std::optional<std::string> user;
  bool passwordFromInput = false;
};

// Stores what was given; a client without a port gets its kind's default one.
int remoteSet(const RemoteArguments& arguments) {
  std::optional<std::string> port = arguments.port;
  if (arguments.client) {
    const BitClientClass* kind = BitClient::classNamed(*arguments.client);
    if (kind == nullptr) {
      return fail(kWrongUsage, "The client is one of " + kindNames() + ".");
    }
    port = port.value_or(std::string(kind->defaultPort));
  }
  if (port && !isPort(*port)) {
    return fail(kWrongUsage, "The port is a number from 1 to 65535.");
  }
  std::optional<std::string> password;
  if (arguments.passwordFromInput) {
    password = readPassword();
    if (!password) {
      return fail(kWrongUsage, "No password was given.");
    }
  }
  ServerInfo& info = ServerInfo::sharedInstance();
  const Preferences& preferences = Preferences::sharedInstance();
  if (!preferences.isPersistent()) {
    return fail(kRefused, "Nothing was kept: the settings file cannot be used.");
  }
  const bool isStored = (!arguments.client || info.setClient(arguments.client)) &&
                        (!arguments.address || info.setAddress(arguments.address)) &&
                        (!port || info.setPort(port)) &&
                        (!arguments.user || info.setUsername(arguments.user)) &&
                        (!password || info.setPassword(password));
  return isStored ? kDone
                  : fail(kRefused, preferences.lastProblem().value_or("It could not be saved."));
}

// Of the password only whether there is one.
int remoteShow(bool json) {
  const ServerInfo& info = ServerInfo::sharedInstance();
  const bool hasPassword = !info.password().value_or("").empty();
  if (json) {
    fmt::print("{}\n", jsonText({{"client", orNull(info.client())},
                                 {"address", orNull(info.address())},
                                 {"port", orNull(info.port())},
                                 {"username", orNull(info.username())},
                                 {"hasPassword", hasPassword}},
                                2));
    return kDone;
  }
  if (!info.client()) {
    fmt::print("No remote client is set.\n");
    return kDone;
  }
  fmt::print("{} at {}:{}\n", printable(*info.client()), printable(info.address().value_or("?")),
             printable(info.port().value_or("?")));
  const std::string user = info.username().value_or("");
  fmt::print("user {}, {}\n", user.empty() ? "none" : printable(user),
             hasPassword ? "with a password" : "no password");
  return kDone;
}

// Fetches the client's own web interface with the stored settings, as the app's test button does.
int remoteTest(Terminal& terminal, bool json) {
  OperationQueue queue(1);
  terminal.wait([&](const std::function<void(bool)>& done) {
    queue.addOperation(std::make_shared<FetchPageRemoteUI>(
        std::nullopt, true, [done](const std::optional<std::string>&) { done(true); }));
  });
  const bool good = terminal.alertText().value_or("").starts_with("Success!");
  if (json) {
    fmt::print("{}\n", jsonText({{"reached", good}}));
  } else if (good) {
    fmt::print("Success!\n");
  }
  return good ? kDone : fail(kRefused, terminal.alertText().value_or("The test did not end."));
}

}  // namespace

void addRemoteCommands(CLI::App& app, Commands& commands) {
  CLI::App* remote = app.add_subcommand("remote", "Your BitTorrent client")->require_subcommand(1);
  CLI::App* set = remote->add_subcommand("set", "Say where it is");
  const auto arguments = std::make_shared<RemoteArguments>();
  set->add_option("--client", arguments->client, "One of " + kindNames());
  set->add_option("--address", arguments->address, "Host name or IP address")->check(utf8());
  set->add_option("--port", arguments->port, "Port of its remote interface");
  set->add_option("--user", arguments->user, "User name of its remote interface")->check(utf8());
  set->add_flag("--password-stdin", arguments->passwordFromInput,
                "Read the password from the first line of standard input");
  commands.push_back({set, [arguments](Terminal&, bool) { return remoteSet(*arguments); }});
  commands.push_back({remote->add_subcommand("show", "Show where it is"),
                      [](Terminal&, bool json) { return remoteShow(json); }});
  commands.push_back({remote->add_subcommand("test", "Try to reach it"), remoteTest});
}

}  // namespace veltramoor::cli
