// What the terminal can do, by area; each area adds its own commands.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <vector>

#include "Terminal.h"

namespace veltramoor::cli {

/// A command and what runs when it was the one given; `run` returns the exit status.
struct Command {
  CLI::App* command;
  std::function<int(Terminal& terminal, bool json)> run;
};
using Commands = std::vector<Command>;

/// recent, search, top, uploads.
void addListCommands(CLI::App& app, Commands& commands);
/// login, logout, whoami.
void addSessionCommands(CLI::App& app, Commands& commands);
/// send, history.
void addSendCommands(CLI::App& app, Commands& commands);
/// favourites, filters.
void addFavoriteCommands(CLI::App& app, Commands& commands);
/// details.
void addDetailsCommands(CLI::App& app, Commands& commands);
/// remote set, show, test.
void addRemoteCommands(CLI::App& app, Commands& commands);

}  // namespace veltramoor::cli
