// Veltramoor in a terminal: the same lists and sends, without a screen.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <QGuiApplication>

#include "Commands.h"
#include "platform/Bundle.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateFile.h"

namespace {

using veltramoor::SiteConfiguration;
namespace cli = veltramoor::cli;

void addSiteOptions(CLI::App& app, SiteConfiguration& configuration) {
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    app.add_option("--" + name, configuration.*field,
                   "Overrides " + name + " of the configuration file");
  }
}

int run(int argc, char** argv) {
  CLI::App app{"Browse a torrent index and push torrents to your computer."};
  app.set_version_flag("--version", veltramoor::Bundle::version());
  app.require_subcommand(1);
  app.fallthrough();

  std::optional<std::string> problem;
  SiteConfiguration configuration =
      SiteConfiguration::load(SiteConfiguration::defaultFile(), &problem);
  addSiteOptions(app, configuration);
  bool json = false;
  app.add_flag("--json", json, "Print JSON");

  int page = 0;
  CLI::App* recent = app.add_subcommand("recent", "List a page of the most recent torrents");
  recent->add_option("--page", page, "Page number, from 0")->check(CLI::Range(0, 1000000));

  cli::SendArguments sending;
  CLI::App* send = app.add_subcommand("send", "Push a torrent to your BitTorrent client");
  send->add_option("what", sending.what, "Row number (from 1) of a recent page, or a magnet link")
      ->required();
  send->add_option("--name", sending.name, "Name to remember a magnet link by");
  send->add_option("--page", sending.page, "Page of the row, from 0")
      ->check(CLI::Range(0, 1000000));

  CLI::App* history = app.add_subcommand("history", "List what was sent, newest first");

  CLI::App* remote = app.add_subcommand("remote", "Your BitTorrent client")->require_subcommand(1);
  cli::RemoteArguments settings;
  CLI::App* set = remote->add_subcommand("set", "Say where it is");
  set->add_option("--client", settings.client, "Vuze, Transmission or Utorrent");
  set->add_option("--address", settings.address, "Host name or IP address");
  set->add_option("--port", settings.port, "Port of its remote interface");
  set->add_option("--user", settings.user, "User name of its remote interface");
  set->add_flag("--password-stdin", settings.passwordFromInput,
                "Read the password from the first line of standard input");
  CLI::App* show = remote->add_subcommand("show", "Show where it is");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? cli::kDone : cli::kWrongUsage;
  }
  if (problem) {
    cli::fail(cli::kDone, *problem);
  }
  SiteConfiguration::setCurrent(configuration);

  if (const auto trouble = veltramoor::Preferences::sharedInstance().lastProblem()) {
    cli::fail(cli::kDone, *trouble);
  }
  cli::Terminal terminal;
  if (recent->parsed()) return cli::recent(terminal, page, json);
  if (send->parsed()) return cli::send(terminal, sending, json);
  if (history->parsed()) return cli::history(json);
  if (set->parsed()) return cli::remoteSet(settings);
  return show->parsed() ? cli::remoteShow(json) : cli::kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  // The controllers measure texts, which needs the graphical application object but no display.
  // What it has to say of its surroundings is no answer to a command.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  int noArguments = 1;
  QGuiApplication application(noArguments, argv);
  try {
    return run(argc, argv);
  } catch (const veltramoor::StateFileError& error) {
    return cli::fail(cli::kRefused, error.what());
  }
}
