#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "UsageProblem.h"
#include "platform/Bundle.h"

namespace veltramoor::cli {
namespace {

void addArgument(CLI::App& app, const Argument& argument) {
  if (argument.kind == Argument::Kind::Flag) {
    app.add_flag_callback(
           argument.name, [take = argument.take] { take({}); }, argument.description)
        ->disable_flag_override();
    return;
  }
  CLI::Option* option =
      app.add_option_function<std::string>(argument.name, argument.take, argument.description);
  option->type_name(argument.check.typeName)->required(argument.kind == Argument::Kind::Required);
  if (argument.check.problemWith) {
    option->transform(CLI::Validator(argument.check.problemWith, "",
                                     argument.check.saysWhatItTakes ? kTakes : ""));
  }
}

void addAll(CLI::App& app, const Command& command) {
  for (const Argument& argument : command.arguments) {
    addArgument(app, argument);
  }
  for (const Command& below : command.commands) {
    addAll(*app.add_subcommand(below.name, below.description), below);
  }
  if (!command.commands.empty()) {
    app.require_subcommand(command.run ? 0 : 1, 1);
  }
}

/// The innermost command that was given.
const Command& chosen(const CLI::App& app, const Command& command) {
  const std::vector<CLI::App*> given = app.get_subcommands();
  if (given.empty()) {
    return command;
  }
  return chosen(*given.front(),
                *std::ranges::find(command.commands, given.front()->get_name(), &Command::name));
}

}  // namespace

Request readCommandLine(const Command& program, int argc, char** argv) {
  CLI::App app(program.description, program.name);
  app.set_version_flag("--version", Bundle::version());
  app.fallthrough();
  addAll(app, program);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return {.status = error.get_exit_code() == 0 ? app.exit(error)
                                                 : fail(kWrongUsage, usageProblem(app, error))};
  }
  return {.command = &chosen(app, program)};
}

}  // namespace veltramoor::cli
