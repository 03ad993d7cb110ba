// What the terminal can do, as one table: the commands, their options, and what each takes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Terminal.h"

namespace veltramoor::cli {

/// A check on an option's value.
struct ArgumentCheck {
  /// What is wrong with `value`, in words that go on from the option's name; empty when nothing is.
  /// May put `value` into the form that its command takes.
  std::function<std::string(std::string& value)> problemWith;
  /// The words for an empty value say what the option takes: "takes date or size".
  bool saysWhatItTakes = false;
  /// What stands for the value in --help.
  std::string typeName = "TEXT";
};

/// An option ("--page"), or an argument by its place ("query").
struct Argument {
  enum class Kind { Optional, Required, Flag };

  std::string name;
  std::string description;
  /// Called with the checked value, an empty one for a flag, when the argument was given.
  std::function<void(const std::string& value)> take;
  ArgumentCheck check = {};
  Kind kind = Kind::Optional;
};

/// A command, or the program itself.
struct Command {
  std::string name;
  std::string description;
  std::vector<Argument> arguments;
  /// Runs when none of `commands` was given, and returns the exit status; where it is empty, one of
  /// them must be.
  std::function<int(Terminal& terminal, bool json)> run = {};
  std::vector<Command> commands = {};
};
using Commands = std::vector<Command>;

/// Stores a value in a member of `arguments`: text as it is, a number that a check has let through,
/// true for a flag.
template <typename Arguments, typename Value>
std::function<void(const std::string&)> into(const std::shared_ptr<Arguments>& arguments,
                                             Value Arguments::*member) {
  return [arguments, member](const std::string& text) {
    Value& value = *arguments.*member;
    if constexpr (std::is_same_v<Value, bool>) {
      value = true;
    } else if constexpr (std::is_assignable_v<Value&, std::string>) {
      value = text;
    } else {
      value = std::stoi(text);
    }
  };
}

/// recent, search, top, uploads.
[[nodiscard]] Commands listCommands();
/// login, logout, whoami.
[[nodiscard]] Commands sessionCommands();
/// send, history.
[[nodiscard]] Commands sendCommands();
/// favourites, filters.
[[nodiscard]] Commands favoriteCommands();
/// details.
[[nodiscard]] Commands detailsCommands();
/// remote set, show, test.
[[nodiscard]] Commands remoteCommands();
/// All of them, in the order in which --help names them.
[[nodiscard]] Commands allCommands();

}  // namespace veltramoor::cli
