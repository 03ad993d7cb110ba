// What the terminal can do.
#pragma once

#include <optional>
#include <string>

#include "Terminal.h"

namespace veltramoor::cli {

/// Lists one page of the recent torrents; rows are numbered from 1.
int recent(Terminal& terminal, int page, bool json);

struct SendArguments {
  /// A row number of `page`, or a magnet link.
  std::string what;
  std::optional<std::string> name;
  int page = 0;
};
int send(Terminal& terminal, const SendArguments& arguments, bool json);

/// The names that were sent, newest first.
int history(bool json);

struct RemoteArguments {
  std::optional<std::string> client;
  std::optional<std::string> address;
  std::optional<std::string> port;
  std::optional<std::string> user;
  bool passwordFromInput = false;
};
/// Stores what was given; a client without a port gets its kind's default one.
int remoteSet(const RemoteArguments& arguments);
/// The settings; of the password only whether there is one.
int remoteShow(bool json);

}  // namespace veltramoor::cli
