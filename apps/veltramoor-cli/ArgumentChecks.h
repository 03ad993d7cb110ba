// Checks on arguments that can say in words what they take.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CommandTable.h"
#include "lists/listings/SiteCodes.h"

namespace veltramoor::cli {

/// The number that `text` is, decimal digits and nothing else; absent for any other text and for a
/// number outside of `least` to `most`.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text, int least, int most);
/// Takes the whole numbers from `least` to `most`; as a transformation hands them on without
/// leading zeros, which would make other numbers of them.
[[nodiscard]] ArgumentCheck wholeNumbers(int least, int most);
/// Takes the numbers of pages, which count from 0.
[[nodiscard]] ArgumentCheck pageNumbers();
/// Takes the numbers of rows, which count from 1.
[[nodiscard]] ArgumentCheck rowNumbers();
/// "a, b or c".
[[nodiscard]] std::string listed(const std::vector<std::string>& words);
/// Takes one of `words`.
[[nodiscard]] ArgumentCheck oneOf(const std::vector<std::string>& words);
/// Takes a choice's name, in any case of letters, or its code; a transformation, to the code.
[[nodiscard]] ArgumentCheck oneOf(const std::vector<SettingChoice>& choices);
/// Takes the site's category codes.
[[nodiscard]] ArgumentCheck categoryCodes();
/// Refuses a value that is not UTF-8: no file, screen or remote client could take it.
[[nodiscard]] ArgumentCheck utf8();

}  // namespace veltramoor::cli
