// Replacing a file in one step.
#pragma once

#include <filesystem>
#include <string_view>

namespace veltramoor {

/// Replaces `file` by `content` so that a reader, or a crash, sees either the old or the new whole.
/// Follows a symbolic link, keeps the mode of a present file (a new one is the owner's alone) and
/// makes the folder when it is missing. Durable when it returns; throws std::system_error.
void replaceFile(const std::filesystem::path& file, std::string_view content);

}  // namespace veltramoor
