// What is wrong with a filter, in plain words.
#pragma once

#include <cstddef>
#include <string_view>

#include "lists/listings/Filter.h"
#include "regex/RegexException.h"

namespace veltramoor {

/// `text` stands in the expression that ICU refused after `before` ASCII characters of ours.
[[nodiscard]] FilterProblem filterProblem(const RegexErrorInfo& info, std::string_view text,
                                          std::size_t before);

}  // namespace veltramoor
