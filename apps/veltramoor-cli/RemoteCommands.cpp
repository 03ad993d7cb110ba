#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "ArgumentChecks.h"
#include "CommandTable.h"
#include "PasswordPrompt.h"
#include "platform/Preferences.h"
#include "remote/BitClient.h"
#include "remote/RemoteDiagnosis.h"
#include "remote/ServerInfo.h"

namespace veltramoor::cli {
namespace {

nlohmann::json orNull(const std::optional<std::string>& text) {
  return text ? nlohmann::json(*text) : nlohmann::json();
}

std::vector<std::string> kindNames() {
  std::vector<std::string> names;
  for (const BitClientClass& kind : BitClient::classes()) {
    names.emplace_back(kind.name);
  }
  return names;
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
    port = port.value_or(std::string(BitClient::classNamed(*arguments.client)->defaultPort));
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
    return failToKeep();
  }
  const bool isStored = (!arguments.client || info.setClient(arguments.client)) &&
                        (!arguments.address || info.setAddress(arguments.address)) &&
                        (!port || info.setPort(port)) &&
                        (!arguments.user || info.setUsername(arguments.user)) &&
                        (!password || info.setPassword(password));
  return isStored ? kDone : failToKeep("Not everything was kept. ");
}

// An address with credentials in it is none, but it may have been typed.
std::string addressToShow(const ServerInfo& info) {
  const std::string address = info.address().value_or("?");
  return address.substr(address.rfind('@') + 1);
}

// Of the password only whether there is one.
int remoteShow(bool json) {
  const ServerInfo& info = ServerInfo::sharedInstance();
  const bool hasPassword = !info.password().value_or("").empty();
  if (json) {
    fmt::print(
        "{}\n",
        jsonText({{"client", orNull(info.client())},
                  {"address", info.address() ? nlohmann::json(addressToShow(info)) : nullptr},
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
  fmt::print("{} at {}:{}\n", printable(*info.client()), printable(addressToShow(info)),
             printable(info.port().value_or("?")));
  const std::string user = info.username().value_or("");
  fmt::print("user {}, {}\n", user.empty() ? "none" : printable(user),
             hasPassword ? "with a password" : "no password");
  return kDone;
}

// Tells of each step as it is done: the last one may take its time.
int remoteTest(bool json) {
  nlohmann::json told = nlohmann::json::array();
  const auto steps =
      RemoteDiagnosis::run(ServerInfo::sharedInstance().settings(), [&](const DiagnosisStep& step) {
        if (json) {
          told.push_back({{"step", nameOf(step.step)}, {"ok", step.ok}, {"text", step.text}});
          return;
        }
        fmt::print("{:6}{}\n", step.ok ? "ok" : "FAIL", printable(step.text));
        std::fflush(stdout);
      });
  if (json) {
    fmt::print("{}\n", jsonText(told, 2));
  }
  return std::ranges::all_of(steps, &DiagnosisStep::ok) ? kDone : kRefused;
}

}  // namespace

Commands remoteCommands() {
  const auto arguments = std::make_shared<RemoteArguments>();
  return {{"remote",
           "Your BitTorrent client",
           {},
           {},
           {{"set",
             "Say where it is",
             {{"--client", listed(kindNames()), into(arguments, &RemoteArguments::client),
               oneOf(kindNames())},
              {"--address", "Host name or IP address", into(arguments, &RemoteArguments::address),
               utf8()},
              {"--port", "Port of its remote interface", into(arguments, &RemoteArguments::port),
               wholeNumbers(1, 65535)},
              {"--user", "User name of its remote interface",
               into(arguments, &RemoteArguments::user), utf8()},
              {"--password-stdin",
               "Read the password from the first line of standard input",
               into(arguments, &RemoteArguments::passwordFromInput),
               {},
               Argument::Kind::Flag}},
             [arguments](Terminal&, bool) { return remoteSet(*arguments); }},
            {"show", "Show where it is", {}, [](Terminal&, bool json) { return remoteShow(json); }},
            {"test", "Find out step by step whether it can be used", {}, [](Terminal&, bool json) {
               return remoteTest(json);
             }}}}};
}

}  // namespace veltramoor::cli
