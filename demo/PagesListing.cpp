#include <fmt/format.h>

#include <algorithm>

#include "demo/Pages.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

std::string magnetMarkup(const PageContext& context, const DemoTorrent& torrent, std::size_t row) {
  const std::string link = magnetLink(torrent.infoHash, torrent.name);
  if (context.layout == FaultKind::QuoteMagnet && row < 2) {
    // The second keeps its apostrophe as it is; a double quote could not stand raw.
    return row == 0 ? linkMarkup(link + "&x=\"quoted\"&y=100%")
                    : linkMarkup(link) + "&x=it's&y=%22";
  }
  return linkMarkup(link);
}

std::string uploaderMarkup(const DemoTorrent& torrent) {
  if (torrent.uploader.empty()) {
    return "<i>Anonymous</i>";
  }
  return fmt::format(R"(<a class="detDesc" href="/user/{0}" title="Browse {0}">{0}</a>)",
                     torrent.uploader);
}

std::string rowMarkup(const PageContext& context, const DemoTorrent& torrent, std::size_t row,
                      bool uploaded) {
  const std::string name = escapeHtml(torrent.name);
  const int group = torrent.category / 100 * 100;
  const auto when = uploaded ? fmt::format("{} {}, ", context.say("Uploaded", "Hochgeladen"),
                                           dateMarkup(torrent.minutesAgo))
                             : std::string();
  return fmt::format(
      "<tr>\n\t<td class=\"vertTh\">\n\t\t<center>\n"
      "\t\t\t<a href=\"/browse/{0}\" title=\"More from this category\">{1}</a><br>\n"
      "\t\t\t(<a href=\"/browse/{2}\" title=\"More from this group\">{3}</a>)\n"
      "\t\t</center>\n\t</td>\n\t<td>\n"
      "<div class=\"detName\">\t\t<a href=\"/torrent/{4}/{5}\" class=\"detLink\" "
      "title=\"Details for {6}\">{6}</a>\n</div>\n"
      "<a href=\"{7}\" title=\"Download this torrent using magnet\">"
      "<img src=\"/static/img/icon-magnet.gif\" alt=\"Magnet link\" width=\"12\" height=\"12\">"
      "</a>\n"
      "\t\t<font class=\"detDesc\">{8}{9} {10}, {11} {12}</font>\n"
      "\t</td>\n\t<td align=\"right\">{13}</td>\n\t<td align=\"right\">{14}</td>\n</tr>\n",
      torrent.category, demoCategoryLabel(torrent.category), group, demoCategoryLabel(group),
      torrent.id, slug(torrent.name), name, magnetMarkup(context, torrent, row), when,
      context.say("Size", "Grösse"), sizeMarkup(torrent.bytes), context.say("ULed by", "von"),
      uploaderMarkup(torrent), torrent.seeders, torrent.leechers);
}

/// A row as a redesign of the site might make it: links in other cells, no sentence.
std::string otherRowMarkup(const PageContext& context, const DemoTorrent& torrent,
                           std::size_t row) {
  const std::string name = escapeHtml(torrent.name);
  return fmt::format(
      "<tr>\n\t<td><a href=\"/browse/{0}\">{1}</a></td>\n"
      "\t<td><a href=\"/torrent/{2}/{3}\">{4}</a></td>\n"
      "\t<td><a href=\"{5}\">magnet</a></td>\n\t<td>{6}</td>\n\t<td>{7}</td>\n"
      "\t<td>{8}</td>\n\t<td>{9}</td>\n</tr>\n",
      torrent.category, demoCategoryLabel(torrent.category), torrent.id, slug(torrent.name), name,
      magnetMarkup(context, torrent, row), dateMarkup(torrent.minutesAgo),
      sizeMarkup(torrent.bytes), torrent.seeders, torrent.leechers);
}

std::string pageLinks(const ListingPage& listing, std::size_t pages) {
  std::string links = "<div class=\"pages\">\n";
  const auto link = [&](std::size_t number) {
    links += number == listing.number
                 ? fmt::format("\t<b>{}</b>\n", number + 1)
                 : fmt::format("\t<a href=\"{}{}{}\">{}</a>\n", listing.linkBefore, number,
                               listing.linkAfter, number + 1);
  };
  const std::size_t first = listing.number > 6 ? listing.number - 6 : 0;
  const std::size_t last = std::min(pages, first + 14);
  if (first > 0) {
    link(0);
  }
  for (std::size_t number = first; number < last; ++number) {
    link(number);
  }
  if (last < pages) {
    link(pages - 1);
  }
  return links + "</div>\n";
}

}  // namespace

std::string listingPage(const PageContext& context, const ListingPage& listing) {
  const std::size_t total = listing.found.size();
  const std::size_t pages = (total + listing.rows - 1) / listing.rows;
  const bool beyond = listing.number >= pages;
  const std::size_t first = beyond ? total : listing.number * listing.rows;
  const std::size_t last = std::min(total, first + listing.rows);

  std::string page = pageHead(context, listing.title, listing.search);
  page.reserve(page.size() + 8192 + (last - first) * 2048);
  page += fmt::format("<h2><span>{}</span> <small>({} {})</small></h2>\n",
                      escapeHtml(listing.title), total, context.say("torrents", "Torrents"));
  if (beyond) {
    page += fmt::format("<p>{}</p>\n", context.say("No hits. Try fewer words.", "Keine Treffer."));
    return page + pageFoot(context);
  }
  page += fmt::format(
      "<table id=\"searchResult\">\n<thead>\n\t<tr class=\"header\">\n\t\t<th>{}</th>\n"
      "\t\t<th>{}</th>\n\t\t<th class=\"count\"><abbr title=\"Seeders\">SE</abbr></th>\n"
      "\t\t<th class=\"count\"><abbr "
      "title=\"Leechers\">LE</abbr></th>\n\t</tr>\n</thead>\n<tbody>\n",
      context.say("Type", "Art"), context.say("Name", "Name"));
  for (std::size_t i = first; i < last; ++i) {
    const DemoTorrent& torrent = *listing.found[i];
    page += context.layout == FaultKind::OtherLayout
                ? otherRowMarkup(context, torrent, i - first)
                : rowMarkup(context, torrent, i - first,
                            context.layout != FaultKind::NoUploaded || i + 3 < last);
  }
  page += "</tbody>\n</table>\n";
  if (!listing.linkBefore.empty() && pages > 1) {
    page += pageLinks(listing, pages);
  }
  return page + pageFoot(context);
}

std::string rowFloodPage(const PageContext& context) {
  std::string page = pageHead(context, "Recent torrents") + "<table id=\"searchResult\">\n";
  for (int i = 0; i < 10'000; ++i) {
    page += "<tr><td class=\"vertTh\">";
  }
  return page + "</table>\n" + pageFoot(context);
}

}  // namespace veltramoor
