#include "demo/PageFrame.h"

#include <fmt/format.h>

#include <algorithm>

#include "demo/PageStyle.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

/// Names offered while typing in the search field.
constexpr std::size_t kSuggestions = 240;

std::string menus(const PageContext& context) {
  std::string menu = "<nav class=\"menu\">\n";
  const auto link = [&](std::string_view href, std::string_view text) {
    menu += fmt::format("\t<a href=\"{}\" title=\"{}\">{}</a>\n", href, text, text);
  };
  link("/", context.say("Home", "Startseite"));
  link("/recent/0", context.say("Recent", "Neueste"));
  link("/top/all", "Top 100");
  for (const DemoGroup& group : demoGroups()) {
    link(fmt::format("/browse/{}/0/99", group.code), group.label);
  }
  link("/forum/", "Forum");
  if (context.account != nullptr) {
    link(fmt::format("/user/{}/0/99", context.account->name),
         context.say("My uploads", "Meine Uploads"));
    link("/settings", context.say("Settings", "Einstellungen"));
    link("/logout", context.say("Log out", "Abmelden"));
  } else {
    link("/login", context.say("Log in", "Anmelden"));
  }
  return menu + "</nav>\n";
}

std::string searchForm(const PageContext& context, std::string_view search) {
  std::string form = fmt::format(
      "<form method=\"get\" id=\"q\" action=\"/s/\">\n"
      "\t<input type=\"search\" name=\"q\" value=\"{}\" list=\"names\" placeholder=\"{}\">\n"
      "\t<select name=\"category\">\n\t\t<option value=\"0\">All</option>\n",
      escapeHtml(search), context.say("Search the index", "Index durchsuchen"));
  for (const DemoGroup& group : demoGroups()) {
    form +=
        fmt::format("\t\t<optgroup label=\"{}\">\n\t\t\t<option value=\"{}\">{}: all</option>\n",
                    group.label, group.code, group.label);
    for (const DemoCategory& category : demoCategories()) {
      if (category.code / 100 == group.code / 100) {
        form +=
            fmt::format("\t\t\t<option value=\"{}\">{}</option>\n", category.code, category.label);
      }
    }
    form += "\t\t</optgroup>\n";
  }
  form += fmt::format(
      "\t</select>\n\t<input type=\"hidden\" name=\"orderby\" value=\"99\">\n"
      "\t<button type=\"submit\">{}</button>\n\t<datalist id=\"names\">\n",
      context.say("Search", "Suchen"));
  const auto& all = context.catalogue.all();
  for (std::size_t i = 0; i < std::min(kSuggestions, all.size()); ++i) {
    form += fmt::format("\t\t<option value=\"{}\" label=\"{}\"></option>\n",
                        escapeHtml(all[i].name), demoCategoryLabel(all[i].category));
  }
  return form + "\t</datalist>\n</form>\n";
}

}  // namespace

std::string pageHead(const PageContext& context, std::string_view title, std::string_view search) {
  std::string page = fmt::format(
      "<!DOCTYPE html>\n<html lang=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<title>{} - Open Index (demo)</title>\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta name=\"description\" content=\"A small index of freely shared works.\">\n"
      "<link rel=\"search\" href=\"{}/s/\" title=\"Open Index (demo)\">\n"
      "<style>\n{}</style>\n<script>\n{}</script>\n</head>\n<body>\n",
      context.english ? "en" : "de", escapeHtml(title), context.origin, pageStyle(), pageScript());
  page += "<header id=\"header\">\n<a class=\"brand\" href=\"/\">Open Index <small>(demo)</small>";
  page += "</a>\n" + searchForm(context, search) + menus(context) + "</header>\n";
  return page + popUnderScript() + sponsoredLink() + "<main>\n";
}

std::string pageFoot(const PageContext& context) {
  std::string page = "</main>\n<div id=\"foot\">\n<p class=\"categories\">\n";
  for (const DemoCategory& category : demoCategories()) {
    page += fmt::format("\t<a href=\"/browse/{}\">{}</a>\n", category.code, category.label);
  }
  page += fmt::format(
      "</p>\n<p><a href=\"/language/en_EN\">English</a> &middot; "
      "<a href=\"/language/de_DE\">Deutsch</a></p>\n<p>{}</p>\n</div>\n</body>\n</html>\n",
      context.say("Every name on this site is invented. Nothing here can be downloaded.",
                  "Alle Namen auf dieser Seite sind erfunden. Nichts hier kann geladen werden."));
  return page;
}

std::string popUnderScript() {
  return "<!-- popunder --><script>\nvar popunderShown = false;\n"
         "document.addEventListener('click', function () { popunderShown = true; });\n"
         "</script>\n";
}

std::string popUnderBlock() {
  return "<!-- popunder --><div class=\"pop\">A window behind this one: the Ferry Museum.</div>\n";
}

std::string sponsoredLink() {
  return "<div class=\"spons-link\"><a href=\"http://ads.example/ferry\" target=\"_blank\">"
         "Sponsored: visit the Ferry Museum</a></div>\n";
}

std::string downloadBox() {
  return "<div class=\"download\"><a href=\"http://ads.example/fast\" target=\"_blank\">"
         "Advertisement: a faster download</a></div>\n";
}

std::string premiumAnchor(const PageContext& context) {
  return fmt::format(
      "<a href=\"http://{}/premium?from=details\" class=\"premium\">Premium download</a>\n",
      context.sponsoredDownloadHost);
}

}  // namespace veltramoor
