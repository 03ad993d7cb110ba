#include "ListingPages.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>

namespace veltramoor {
namespace {

constexpr std::array kWords = {"Amber",   "Brook",  "Cinder", "Dapple", "Ember",
                               "Fallow",  "Garnet", "Hollow", "Ivory",  "Juniper",
                               "Kestrel", "Larch",  "Meadow", "Nettle"};
constexpr std::array kAccented = {"Été", "Größe", "Čas", "Łąka", "Ñandú", "Море", "日本"};
constexpr std::array kCategories = {"Audio", "Video", "Applications", "Games", "Other"};

std::string head() {
  std::string text =
      "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\">\n<html>\n<head>\n"
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"/>\n"
      "<title>Listing</title>\n<link rel=\"stylesheet\" href=\"/static/css/main.css\"/>\n";
  for (int i = 0; i < 230; ++i) {
    text += fmt::format(
        "<script type=\"text/javascript\">var s{0} = {{ width: {0}, name: \"s{0}\", on: {0} < 7 && "
        "{0} > 3 }}; if (s{0}.on) {{ document.write('<br />'); }}</script>\n",
        i);
  }
  return text + "</head>\n<body>\n";
}

std::string menu() {
  std::string text =
      "<div id=\"header\"><form method=\"get\" action=\"/s/\"><h2><a href=\"/\">"
      "<img src=\"/static/img/logo.png\" alt=\"\" /></a></h2>\n";
  for (int i = 1; i <= 60; ++i) {
    text += fmt::format(
        "<a href=\"/browse/{0}\" title=\"Browse {1} {0}\">{1} {0}</a>&nbsp;| <label for=\"c{0}\" "
        "title=\"{1}\"><input id=\"c{0}\" name=\"c{0}\" type=\"checkbox\"/>{1}</label>\n",
        i * 100, kCategories[static_cast<std::size_t>(i) % kCategories.size()]);
  }
  return text + "</form></div>\n";
}

std::string name(int number, bool accents) {
  const auto n = static_cast<std::size_t>(number);
  std::string text =
      fmt::format("{} {} {} v{}.{}", kWords[n % kWords.size()], kWords[(n * 5 + 3) % kWords.size()],
                  kWords[(n * 11 + 7) % kWords.size()], number % 9, number % 7);
  if (accents && number % 3 == 0) {
    text += fmt::format(" {} &amp; {}", kAccented[n % kAccented.size()], kWords[n % kWords.size()]);
  }
  return text;
}

std::string magnet(int number) {
  std::string text = fmt::format("magnet:?xt=urn:btih:{:040x}&amp;dn=Name+{}",
                                 static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U, number);
  for (int tracker = 0; tracker < 8; ++tracker) {
    text += fmt::format("&amp;tr=udp%3A%2F%2Ftracker{}.example%3A80%2Fannounce", tracker);
  }
  return text;
}

std::string row(int number, bool accents, bool complete) {
  const int category = 100 * (1 + number % 5);
  const std::string title = name(number, accents);
  std::string text = fmt::format(
      "<tr>\n<td class=\"vertTh\">\n<center>\n<a href=\"/browse/{0}\" title=\"More from this "
      "category\">{2}</a><br />\n(<a href=\"/browse/{1}\" title=\"More from this "
      "category\">{2} {1}</a>)\n</center>\n</td>\n<td>\n<div class=\"detName\"><a "
      "href=\"/torrent/{3}/Name_{3}\" class=\"detLink\" title=\"Details for {4}\">{4}</a></div>\n",
      category, category + number % 7,
      kCategories[static_cast<std::size_t>(number) % kCategories.size()], 7000000 + number, title);
  text += fmt::format(
      "<a href=\"{}\" title=\"Download this torrent using magnet\"><img "
      "src=\"/static/img/icon-magnet.gif\" alt=\"Magnet link\" /></a><a "
      "href=\"/user/someone{}\"><img src=\"/static/img/trusted.png\" alt=\"Trusted\" "
      "title=\"Trusted\" style=\"width:11px;\" border='0' /></a>\n",
      magnet(number), number);
  text += fmt::format(
      "<font class=\"detDesc\">{0} {1}&nbsp;{2}, Size {3}.{4}&nbsp;MiB, ULed by <a "
      "class=\"detDesc\" href=\"/user/someone{5}/\" title=\"Browse someone{5}\">someone{5}</a>"
      "</font>\n</td>\n<td align=\"right\">{6}</td>\n<td align=\"right\">{7}</td>\n</tr>\n",
      complete ? "Uploaded" : "Added", number % 4 == 0 ? "<b>Today</b>" : "11-20", "14:03",
      701 + number, number % 10, number, number * 3, number * 2);
  return text;
}

std::string card(int number, bool accents) {
  return fmt::format(
      "<tr class=\"card\"><td><a href=\"/browse/{0}\">{1}</a></td>\n<td><a "
      "href=\"/torrent/{2}/Name_{2}\">{3}</a> <a href=\"{4}\">magnet</a>\n<time "
      "datetime=\"2024-11-20\">20 November</time> <data value=\"{2}\">701 MB</data></td>\n<td>{5}"
      "</td>\n<td>{6}</td>\n</tr>\n",
      100 * (1 + number % 5), kCategories[static_cast<std::size_t>(number) % kCategories.size()],
      7000000 + number, name(number, accents), magnet(number), number * 3, number * 2);
}

std::string foot() {
  std::string text = "</table>\n<div id=\"foot\" style=\"text-align:center;margin-top:1em;\">\n";
  for (int i = 1; i <= 40; ++i) {
    text += fmt::format(
        "<a href=\"/recent/{0}\">{0}</a>&nbsp;\n<p><a href=\"/about/{0}\" "
        "title=\"Page {0}\">Page {0}</a> | <b>text</b></p>\n",
        i);
  }
  return text + "</div>\n</body>\n</html>\n";
}

}  // namespace

std::string listingPage(const ListingPage& page) {
  std::string text = head() + menu();
  text +=
      "<table id=\"searchResult\">\n<thead id=\"tableHead\">\n<tr class=\"header\">\n"
      "<th>Type</th>\n<th>Name</th>\n<th>SE</th>\n<th>LE</th>\n</tr>\n</thead>\n";
  for (int i = 0; i < page.rows; ++i) {
    text += page.otherLayout ? card(i, page.accents)
                             : row(i, page.accents, i < page.rows - page.incomplete);
  }
  return text + foot();
}

std::string pageWithoutRows(std::size_t bytes) {
  std::string text = head() + menu();
  for (int i = 0; text.size() < bytes; ++i) {
    text += fmt::format(
        "<div class=\"post\"><p>{0} wrote, on day {1}: <a href=\"/forum/{1}\">{0}</a> said that "
        "text, and more text, is what pages are made of.</p>\n<ul><li>one</li><li>two</li></ul>"
        "</div>\n",
        kWords[static_cast<std::size_t>(i) % kWords.size()], i);
  }
  return text + foot();
}

}  // namespace veltramoor
