#include "lists/listings/FilterProblems.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "Util/Utf.h"

namespace veltramoor {
namespace {

struct Wording {
  std::string_view errorName;
  std::string_view reason;
};

constexpr std::array kWordings = {
    Wording{"U_REGEX_RULE_SYNTAX",
            "This character cannot stand here. Put a backslash before it to mean the character."},
    Wording{"U_REGEX_BAD_ESCAPE_SEQUENCE", "This backslash begins nothing that is known."},
    Wording{"U_REGEX_PROPERTY_SYNTAX", "There is no class of characters of this name."},
    Wording{"U_REGEX_UNIMPLEMENTED", "This notation is not supported."},
    Wording{"U_REGEX_NUMBER_TOO_BIG", "This number is too large."},
    Wording{"U_REGEX_BAD_INTERVAL",
            "Braces repeat what stands before them, as in {2} or {2,5}. Put a backslash before { "
            "to mean the character."},
    Wording{"U_REGEX_MAX_LT_MIN", "The second number in the braces is smaller than the first."},
    Wording{"U_REGEX_INVALID_BACK_REF", "There is no group of this number."},
    Wording{"U_REGEX_INVALID_FLAG", "There is no option of this letter."},
    Wording{"U_REGEX_LOOK_BEHIND_LIMIT",
            "What is looked for behind must have a greatest length: no * or + there."},
    Wording{"U_REGEX_MISSING_CLOSE_BRACKET", "A [ is not closed by a ]."},
    Wording{"U_REGEX_INVALID_RANGE", "The range ends before it begins."},
    Wording{"U_REGEX_PATTERN_TOO_BIG", "The expression is too long."},
    Wording{"U_REGEX_STACK_OVERFLOW", "The expression is too deeply nested."},
    Wording{"U_REGEX_INVALID_CAPTURE_GROUP_NAME",
            "This is no name for a group here: it is unknown, taken, or has a character that names "
            "cannot have."},
    Wording{"U_ILLEGAL_CHAR_FOUND", "There is no character of this name."},
    Wording{"U_ILLEGAL_ARGUMENT_ERROR", "Something in the expression has no meaning."},
};

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// The byte at which the character number `character` of the line that begins at `byte` stands.
std::size_t byteOf(std::string_view text, std::size_t byte, std::size_t character) {
  for (; character > 0 && byte < text.size(); --character) {
    do {
      ++byte;
    } while (byte < text.size() && isContinuation(text[byte]));
  }
  return byte;
}

/// The ) that closes a bracket which `text` did not open: it closed ours, so that ICU stumbles only
/// over our own one after the text.
std::optional<std::size_t> surplusBracket(std::string_view text) {
  int open = 0;
  int sets = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (text[i]) {
      case '\\':
        ++i;
        break;
      case '[':
        ++sets;
        break;
      case ']':
        sets -= sets > 0 ? 1 : 0;
        break;
      case '(':
        open += sets == 0 ? 1 : 0;
        break;
      case ')':
        if (sets == 0 && open-- == 0) {
          return i;
        }
        break;
      default:
        break;
    }
  }
  return std::nullopt;
}

}  // namespace

FilterProblem filterProblem(const RegexErrorInfo& info, std::string_view text, std::size_t before) {
  FilterProblem problem;
  std::size_t at = text.size();
  if (info.line > 0) {
    // ICU counts lines from 1, and the characters of a line up to and with the offending one.
    std::size_t line = 0;
    for (int i = 1; i < info.line && line < text.size(); ++i) {
      line = std::min(text.find('\n', line), text.size() - 1) + 1;
    }
    const std::size_t ours = info.line == 1 ? before : 0;
    const auto read = static_cast<std::size_t>(std::max(info.offset, 1)) - 1;
    at = byteOf(text, line, read > ours ? read - ours : 0);
    problem.offset = utf16Length(text.substr(0, at));
  }
  if (info.errorName == "U_REGEX_MISMATCHED_PAREN") {
    const bool surplus = !info.postContext.empty();
    problem.reason = surplus ? "A ) has no ( before it." : "A ( is not closed by a ).";
    if (surplus && at == text.size()) {
      problem.offset = utf16Length(text.substr(0, surplusBracket(text).value_or(at)));
    }
    return problem;
  }
  const auto* known = std::ranges::find(kWordings, info.errorName, &Wording::errorName);
  problem.reason = known != kWordings.end()
                       ? std::string(known->reason)
                       : fmt::format("This is no valid expression ({}).", info.errorName);
  return problem;
}

}  // namespace veltramoor
