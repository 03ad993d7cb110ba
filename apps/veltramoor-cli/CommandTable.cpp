#include "CommandTable.h"

#include <iterator>

namespace veltramoor::cli {

Commands allCommands() {
  Commands all;
  for (Commands (*const area)() : {listCommands, sessionCommands, sendCommands, favoriteCommands,
                                   detailsCommands, remoteCommands}) {
    std::ranges::move(area(), std::back_inserter(all));
  }
  return all;
}

}  // namespace veltramoor::cli
