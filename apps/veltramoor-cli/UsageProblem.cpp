#include "UsageProblem.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "ArgumentChecks.h"

namespace veltramoor::cli {
namespace {

// The command that a command line names, the innermost one; the program itself when it names none.
CLI::App& namedCommand(CLI::App& app) {
  CLI::App* command = &app;
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
  }
  return *command;
}

// The option or argument of the program or of the command that `error` begins with: the library
// names it first of all.
CLI::Option* blamedOption(CLI::App& app, const CLI::Error& error) {
  const std::string_view text = error.what();
  for (CLI::App* owner : {&namedCommand(app), &app}) {
    for (CLI::Option* option : owner->get_options()) {
      const std::string name = option->get_name();
      // Of a flag it tells the name without hyphens.
      const std::string bare = name.substr(std::min(name.find_first_not_of('-'), name.size()));
      for (const std::string& begin : {name, bare}) {
        if (!begin.empty() && (text.starts_with(begin + ":") || text.starts_with(begin + " "))) {
          return option;
        }
      }
    }
  }
  return nullptr;
}

// "takes date or size", of an option that can say so.
std::string takenBy(CLI::Option& option) {
  try {
    return (*option.get_validator(kTakes))(std::string());
  } catch (const CLI::OptionNotFound&) {
    return {};
  }
}

std::string problemWith(CLI::Option& option, const CLI::Error& error) {
  const std::string name = option.get_name();
  const std::string_view text = error.what();
  if (error.get_name() == "RequiredError") {
    return fmt::format("{} is missing. {}.", name, option.get_description());
  }
  if (error.get_name() == "ValidationError") {
    return fmt::format("{} {}.", name, text.substr(std::min(text.find(": ") + 2, text.size())));
  }
  if (option.get_items_expected_max() == 0) {
    return name + " takes no value.";
  }
  if (option.count() > 1) {
    return name + " may be given once only.";
  }
  const std::string taken = takenBy(option);
  return taken.empty() ? name + " needs a value." : fmt::format("{} {}.", name, taken);
}

}  // namespace

std::string usageProblem(CLI::App& app, const CLI::Error& error) {
  if (CLI::Option* option = blamedOption(app, error)) {
    return problemWith(*option, error);
  }
  CLI::App& command = namedCommand(app);
  const std::vector<std::string> unknown = app.remaining();
  const bool needsCommand = error.get_name() == "RequiredError";
  if (&command == &app) {
    return needsCommand && unknown.empty() ? "A command is missing. --help names them all."
           : !unknown.empty() && !unknown.front().starts_with('-')
               ? "There is no such command. --help names them all."
               : "There is no such option. --help names them all.";
  }
  if (needsCommand) {
    std::vector<std::string> names;
    for (const CLI::App* below : command.get_subcommands([](CLI::App*) { return true; })) {
      names.push_back(below->get_name());
    }
    return fmt::format("{} takes {}.", command.get_name(), listed(names));
  }
  return fmt::format("{0} does not take one of these arguments. {0} --help names those it takes.",
                     command.get_name());
}

}  // namespace veltramoor::cli
