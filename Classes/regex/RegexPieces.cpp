#include "regex/RegexPieces.h"

#include <cstddef>
#include <utility>

#include "regex/Utf16Scan.h"

namespace veltramoor {
namespace {

using Kind = RegexPiece::Kind;

/// Deeper nesting than anybody writes; the reader calls itself for each level.
constexpr int kMaxDepth = 50;

constexpr bool isAsciiDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr bool isAsciiLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
constexpr bool isHighSurrogate(char16_t c) { return (c & 0xFC00) == 0xD800; }

/// Reads the syntax of ICU's expressions without flags. Every `read...` returns false when it meets
/// something it does not surely understand.
class PieceReader {
 public:
  explicit PieceReader(std::u16string_view regex) : regex_(regex) {}

  std::optional<RegexPieces> read() {
    if (!readAlternatives(0) || at_ != regex_.size()) {
      return std::nullopt;
    }
    return std::move(result_);
  }

 private:
  enum class Quantifier : std::uint8_t { None, Star, Other };

  [[nodiscard]] bool atEnd() const { return at_ == regex_.size(); }
  [[nodiscard]] char16_t peek() const { return atEnd() ? u'\0' : regex_[at_]; }
  bool skip(std::u16string_view text) {
    if (!regex_.substr(at_).starts_with(text)) {
      return false;
    }
    at_ += text.size();
    return true;
  }

  void add(Kind kind, std::u16string_view text = {}) {
    result_.pieces.push_back({kind, std::u16string(text)});
  }
  void replaceFrom(std::size_t mark, Kind kind) {
    result_.pieces.resize(mark);
    add(kind);
  }

  /// Up to the closing parenthesis, which stays unread, or the end.
  bool readAlternatives(int depth) {
    if (depth > kMaxDepth) {
      return false;
    }
    const std::size_t mark = result_.pieces.size();
    bool alternation = false;
    while (!atEnd() && peek() != u')') {
      if (skip(u"|")) {
        alternation = true;
      } else if (!readQuantified(depth)) {
        return false;
      }
    }
    if (alternation) {
      replaceFrom(mark, Kind::Anything);
    }
    return true;
  }

  bool readQuantified(int depth) {
    const std::size_t mark = result_.pieces.size();
    Kind quantified = Kind::Anything;  // what the atom becomes under a quantifier other than `*`
    Kind starred = Kind::Anything;     // and under `*`
    if (!readAtom(depth, quantified, starred)) {
      return false;
    }
    const std::optional<Quantifier> quantifier = readQuantifier();
    if (!quantifier) {
      return false;
    }
    if (*quantifier != Quantifier::None) {
      replaceFrom(mark, *quantifier == Quantifier::Star ? starred : quantified);
    }
    return true;
  }

  /// Absent when it is none that is understood.
  std::optional<Quantifier> readQuantifier() {
    Quantifier quantifier = Quantifier::Other;
    if (skip(u"*")) {
      quantifier = Quantifier::Star;
    } else if (skip(u"{")) {
      const std::size_t digits = at_;
      while (isAsciiDigit(peek()) || peek() == u',') {
        ++at_;
      }
      if (at_ == digits || !skip(u"}")) {
        return std::nullopt;
      }
    } else if (!skip(u"+") && !skip(u"?")) {
      return Quantifier::None;
    }
    if (skip(u"+")) {  // possessive: it gives nothing back, so it counts as no plain star
      return Quantifier::Other;
    }
    skip(u"?");
    return quantifier;
  }

  bool readAtom(int depth, Kind& quantified, Kind& starred) {
    switch (peek()) {
      case u'(':
        return readGroup(depth);
      case u'[':
        if (skip(uR"([\s\S])") || skip(uR"([\S\s])")) {
          starred = Kind::AnythingStar;
          add(Kind::Anything);
          return true;
        }
        return readSet();
      case u'.':
        ++at_;
        quantified = Kind::OneLine;
        starred = Kind::DotStar;
        add(Kind::OneLine);
        return true;
      case u'^':
      case u'$':
        ++at_;
        add(Kind::Anything);
        return true;
      case u'\\':
        return readEscape(quantified, starred);
      case u'*':
      case u'+':
      case u'?':
      case u'{':
      case u'}':
      case u']':
        return false;
      default:
        readLiteral(quantified, starred);
        return true;
    }
  }

  /// One character, whatever it is, as a literal.
  void readLiteral(Kind& quantified, Kind& starred) {
    const bool pair = isHighSurrogate(peek()) && at_ + 1 < regex_.size();
    addLiteral(regex_.substr(at_, pair ? 2 : 1), quantified, starred);
    at_ += pair ? 2 : 1;
  }

  void addLiteral(std::u16string_view text, Kind& quantified, Kind& starred) {
    quantified = starred = isLineEnd(text.front()) ? Kind::Anything : Kind::OneLine;
    add(Kind::Literal, text);
  }

  bool readEscape(Kind& quantified, Kind& starred) {
    ++at_;
    if (atEnd()) {
      return false;
    }
    const char16_t c = peek();
    if (!isAsciiLetter(c) && !isAsciiDigit(c)) {
      if (c > 0x7F) {
        return false;
      }
      readLiteral(quantified, starred);
      return true;
    }
    ++at_;
    switch (c) {
      case u'd':
        quantified = starred = Kind::Digits;
        add(Kind::Digits);
        return true;
      case u'w':
        quantified = starred = Kind::OneLine;
        add(Kind::OneLine);
        return true;
      case u'n':
        addLiteral(u"\n", quantified, starred);
        return true;
      case u'r':
        addLiteral(u"\r", quantified, starred);
        return true;
      case u't':
        addLiteral(u"\t", quantified, starred);
        return true;
      case u's':
      case u'S':
      case u'D':
      case u'W':
      case u'b':
      case u'B':
      case u'A':
      case u'z':
      case u'Z':
        add(Kind::Anything);
        return true;
      default:
        break;
    }
    if (c >= u'1' && c <= u'9') {
      // How many digits belong to the number depends on how many groups there are. The rest would
      // be literal digits: leaving all of them out claims less, never more.
      while (isAsciiDigit(peek())) {
        ++at_;
      }
      result_.hasBackReference = true;
      add(Kind::Anything);
      return true;
    }
    return false;
  }

  bool readSet() {
    ++at_;
    skip(u"^");
    if (peek() == u']') {
      return false;
    }
    while (!atEnd() && peek() != u']') {
      const char16_t c = regex_[at_++];
      if (c == u'[') {
        return false;
      }
      if (c == u'\\') {
        if (atEnd() || peek() == u'Q' || peek() == u'c') {
          return false;
        }
        ++at_;
      }
    }
    add(Kind::Anything);
    return skip(u"]");
  }

  bool readGroup(int depth) {
    ++at_;
    const std::size_t mark = result_.pieces.size();
    bool dissolves = true;
    if (skip(u"?=") || skip(u"?!") || skip(u"?<=") || skip(u"?<!") || skip(u"?>")) {
      dissolves = false;
    } else if (skip(u"?<")) {
      while (isAsciiLetter(peek()) || isAsciiDigit(peek())) {
        ++at_;
      }
      if (!skip(u">")) {
        return false;
      }
    } else if (!skip(u"?:") && peek() == u'?') {
      return false;
    }
    if (!readAlternatives(depth + 1) || !skip(u")")) {
      return false;
    }
    if (!dissolves) {
      replaceFrom(mark, Kind::Anything);
    } else if (result_.pieces.size() == mark) {
      add(Kind::Anything);  // an empty group; a quantifier after it must have a piece to stand on
    }
    return true;
  }

  std::u16string_view regex_;
  std::size_t at_ = 0;
  RegexPieces result_;
};

}  // namespace

std::optional<RegexPieces> regexPieces(std::u16string_view regex) {
  return PieceReader(regex).read();
}

}  // namespace veltramoor
