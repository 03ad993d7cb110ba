// Veltramoor in a terminal: the same lists and sends, without a screen.
#include "CommandLine.h"
#include "platform/ExchangeLog.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/UrlLoading.h"

namespace {

using veltramoor::SiteConfiguration;
namespace cli = veltramoor::cli;

struct Switches {
  bool json = false;
  bool verbose = false;
};

// The program, whose site options go into `configuration`.
cli::Command programTable(SiteConfiguration& configuration,
                          const std::shared_ptr<Switches>& switches) {
  std::vector<cli::Argument> arguments;
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    arguments.push_back({"--" + name,
                         "Overrides " + name + " of the configuration file",
                         [&configuration, field = field](const std::string& value) {
                           configuration.*field = value;
                         },
                         {[key = name](const std::string& value) {
                           return std::string(SiteConfiguration::validationError(key, value));
                         }}});
  }
  arguments.push_back({"--json",
                       "Print JSON",
                       cli::into(switches, &Switches::json),
                       {},
                       cli::Argument::Kind::Flag});
  arguments.push_back({"--verbose",
                       "Print a line on each exchange to standard error",
                       cli::into(switches, &Switches::verbose),
                       {},
                       cli::Argument::Kind::Flag});
  return {"veltramoor-cli",
          "Browse a torrent index and push torrents to your computer.",
          std::move(arguments),
          {},
          cli::allCommands()};
}

int run(int argc, char** argv) {
  std::vector<std::string> problems;
  SiteConfiguration configuration =
      SiteConfiguration::load(SiteConfiguration::defaultFile(), &problems);
  const auto switches = std::make_shared<Switches>();
  const cli::Command program = programTable(configuration, switches);
  const cli::Request request = cli::readCommandLine(program, argc, argv);
  if (request.command == nullptr) {
    return request.status;
  }
  for (const std::string& problem : problems) {
    cli::noteLines(problem);
  }
  SiteConfiguration::setCurrent(configuration);

  if (const auto trouble = veltramoor::Preferences::sharedInstance().lastProblem()) {
    cli::noteLines(*trouble);
  }
  if (switches->verbose) {
    veltramoor::UrlLoading::sharedInstance().setExchangeLog(&veltramoor::writeToStandardError);
  }
  cli::Terminal terminal;
  return request.command->run(terminal, switches->json);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return cli::fail(cli::kRefused, error.what());
  }
}
