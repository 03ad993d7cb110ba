#include "PageText.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

namespace veltramoor::cli {
namespace {

using Names = std::initializer_list<std::string_view>;

bool isOneOf(std::string_view name, Names names) {
  return std::ranges::find(names, name) != names.end();
}

bool isHidden(std::string_view element) {
  return isOneOf(element, {"head", "script", "style", "template", "noscript", "object", "iframe"});
}

bool isBlock(std::string_view element) {
  return isOneOf(element,
                 {"address", "article",  "aside",   "blockquote", "body", "dd",   "div", "dl",
                  "dt",      "fieldset", "footer",  "form",       "h1",   "h2",   "h3",  "h4",
                  "h5",      "h6",       "header",  "hr",         "li",   "main", "nav", "ol",
                  "p",       "pre",      "section", "table",      "tr",   "ul"});
}

// With a line of its own between it and what surrounds it.
bool isParagraph(std::string_view element) {
  return isOneOf(element, {"blockquote", "h1", "h2", "h3", "h4", "h5", "h6", "p", "pre", "table"});
}

bool isCell(std::string_view element) { return isOneOf(element, {"td", "th"}); }

// Collects text; blanks and line ends are owed until something follows them.
class Lines {
 public:
  [[nodiscard]] bool isFull() const { return text_.size() >= kLongestPageText; }
  [[nodiscard]] std::string take() { return std::move(text_); }

  void beginLine(std::size_t emptyLines) {
    ends_ = std::max(ends_, 1 + emptyLines);
    forgetBlanks();
  }
  void breakLine() {
    ends_ = std::min<std::size_t>(ends_ + 1, 2);
    forgetBlanks();
  }
  /// At least so many blanks, unless a line ends here.
  void owe(std::size_t blanks) { blanks_ = std::max(blanks_, blanks); }
  /// One more blank, also at a line's beginning.
  void addBlank() {
    ++blanks_;
    indents_ = true;
  }

  void append(char c) {
    const bool begins = ends_ > 0 || text_.empty();
    text_.append(text_.empty() ? 0 : ends_, '\n');
    text_.append(begins && !indents_ ? 0 : blanks_, ' ');
    ends_ = 0;
    forgetBlanks();
    text_ += c;
  }

 private:
  void forgetBlanks() {
    blanks_ = 0;
    indents_ = false;
  }

  std::string text_;
  std::size_t ends_ = 0;
  std::size_t blanks_ = 0;
  bool indents_ = false;
};

class Reader {
 public:
  void start(std::string_view element) {
    ++depth_;
    hidden_ += isHidden(element) ? 1 : 0;
    preformatted_ += element == "pre" ? 1 : 0;
    if (hidden_ > 0) {
      return;
    }
    beginWith(element);
    if (element == "br") {
      lines_.breakLine();
    } else if (element == "li") {
      append("- ");
    } else if (isCell(element)) {
      lines_.owe(2);
    }
  }

  void end(std::string_view element) {
    --depth_;
    beginWith(element);
    hidden_ -= isHidden(element) ? 1 : 0;
    preformatted_ -= element == "pre" ? 1 : 0;
  }

  void append(std::string_view text) {
    if (hidden_ > 0) {
      return;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char c = text[i];
      if (text.substr(i).starts_with(kNoBreakSpace)) {
        // A blank for whoever looks for words, and one that stays where it is.
        lines_.append(' ');
        i += kNoBreakSpace.size() - 1;
        continue;
      }
      const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
      if (preformatted_ > 0 && c == '\n') {
        lines_.breakLine();
      } else if (isBlank && preformatted_ > 0) {
        lines_.addBlank();
      } else if (isBlank) {
        lines_.owe(1);
      } else {
        lines_.append(c);
      }
    }
  }

  [[nodiscard]] bool isFull() const { return lines_.isFull() || depth_ > kDeepest; }
  [[nodiscard]] std::string take() { return lines_.take(); }

 private:
  void beginWith(std::string_view element) {
    if (hidden_ == 0 && isBlock(element)) {
      lines_.beginLine(isParagraph(element) ? 1 : 0);
    }
  }

  static constexpr std::string_view kNoBreakSpace = "\u00a0";
  // The parser looks through all open elements at each end tag that closes none.
  static constexpr int kDeepest = 2000;

  Lines lines_;
  int depth_ = 0;
  int hidden_ = 0;
  int preformatted_ = 0;
};

// libxml2's characters are UTF-8 in unsigned bytes.
const char* charsOf(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

Reader& readerOf(void* context) { return *static_cast<Reader*>(context); }

xmlSAXHandler handler() {
  xmlSAXHandler handler{};
  handler.startElement = [](void* context, const xmlChar* name, const xmlChar**) {
    readerOf(context).start(charsOf(name));
  };
  handler.endElement = [](void* context, const xmlChar* name) {
    readerOf(context).end(charsOf(name));
  };
  handler.characters = [](void* context, const xmlChar* text, int length) {
    readerOf(context).append({charsOf(text), static_cast<std::size_t>(length)});
  };
  handler.ignorableWhitespace = handler.characters;
  return handler;
}

// So much at a time: between two pieces the reader is asked whether it has enough.
constexpr std::size_t kPiece = std::size_t{16} * 1024;

}  // namespace

PageText textOfPage(std::string_view html) {
  Reader reader;
  xmlSAXHandler sax = handler();
  const std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)> parser(
      htmlCreatePushParserCtxt(&sax, &reader, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8),
      &htmlFreeParserCtxt);
  if (parser == nullptr) {
    throw std::bad_alloc();
  }
  // What the page says of its encoding was true of its bytes, which are UTF-8 by now.
  htmlCtxtUseOptions(parser.get(), HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                       HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC);
  while (!html.empty() && !reader.isFull()) {
    const std::string_view piece = html.substr(0, kPiece);
    htmlParseChunk(parser.get(), piece.data(), static_cast<int>(piece.size()), 0);
    html.remove_prefix(piece.size());
  }
  htmlParseChunk(parser.get(), nullptr, 0, 1);
  PageText page{.text = reader.take(), .isCut = !html.empty()};
  if (page.text.size() > kLongestPageText) {
    page.isCut = true;
    std::size_t end = kLongestPageText;
    // Not within a character.
    while (end > 0 && (static_cast<unsigned char>(page.text[end]) & 0xC0U) == 0x80U) {
      --end;
    }
    page.text.resize(end);
  }
  return page;
}

}  // namespace veltramoor::cli
