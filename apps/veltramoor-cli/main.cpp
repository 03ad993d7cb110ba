// Veltramoor in a terminal: the same lists and sends, without a screen.
#include <CLI/CLI.hpp>

#include "Commands.h"
#include "UsageProblem.h"
#include "platform/Bundle.h"
#include "platform/ExchangeLog.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/UrlLoading.h"

namespace {

using veltramoor::SiteConfiguration;
namespace cli = veltramoor::cli;

void addSiteOptions(CLI::App& app, SiteConfiguration& configuration) {
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    app.add_option("--" + name, configuration.*field,
                   "Overrides " + name + " of the configuration file")
        ->check([key = name](const std::string& value) {
          return std::string(SiteConfiguration::validationError(key, value));
        });
  }
}

int run(int argc, char** argv) {
  CLI::App app{"Browse a torrent index and push torrents to your computer.", "veltramoor-cli"};
  app.set_version_flag("--version", veltramoor::Bundle::version());
  app.require_subcommand(1);
  app.fallthrough();

  std::vector<std::string> problems;
  SiteConfiguration configuration =
      SiteConfiguration::load(SiteConfiguration::defaultFile(), &problems);
  addSiteOptions(app, configuration);
  bool json = false;
  app.add_flag("--json", json, "Print JSON")->disable_flag_override();
  bool verbose = false;
  app.add_flag("--verbose", verbose, "Print a line on each exchange to standard error")
      ->disable_flag_override();

  cli::Commands commands;
  cli::addListCommands(app, commands);
  cli::addSessionCommands(app, commands);
  cli::addSendCommands(app, commands);
  cli::addFavoriteCommands(app, commands);
  cli::addDetailsCommands(app, commands);
  cli::addRemoteCommands(app, commands);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return error.get_exit_code() == 0 ? app.exit(error)
                                      : cli::fail(cli::kWrongUsage, cli::usageProblem(app, error));
  }
  for (const std::string& problem : problems) {
    cli::noteLines(problem);
  }
  SiteConfiguration::setCurrent(configuration);

  if (const auto trouble = veltramoor::Preferences::sharedInstance().lastProblem()) {
    cli::noteLines(*trouble);
  }
  if (verbose) {
    veltramoor::UrlLoading::sharedInstance().setExchangeLog(&veltramoor::writeToStandardError);
  }
  cli::Terminal terminal;
  for (const cli::Command& command : commands) {
    if (command.command->parsed()) {
      return command.run(terminal, json);
    }
  }
  return cli::kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return cli::fail(cli::kRefused, error.what());
  }
}
