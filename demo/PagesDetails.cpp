#include <fmt/format.h>

#include "demo/Pages.h"
#include "demo/Random.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

std::string facts(const PageContext& context, const DemoTorrent& torrent) {
  std::string list = "<dl class=\"facts\">\n";
  const auto fact = [&](std::string_view label, std::string_view value) {
    list += fmt::format("\t<dt>{}:</dt>\n\t<dd>{}</dd>\n", label, value);
  };
  fact(context.say("Type", "Art"),
       fmt::format(R"(<a href="/browse/{0}" title="More from this category">{1} &gt; {2}</a>)",
                   torrent.category, demoCategoryLabel(torrent.category / 100 * 100),
                   demoCategoryLabel(torrent.category)));
  fact(context.say("Size", "Grösse"),
       fmt::format("{} ({}&nbsp;Bytes)", sizeMarkup(torrent.bytes), torrent.bytes));
  if (torrent.hasMovieLink) {
    fact(context.say("Info", "Info"),
         fmt::format("<a href=\"http://{}/title/tt{:07}/\" target=\"_blank\" rel=\"nofollow\">"
                     "Movie database</a>",
                     context.movieDatabaseHost, torrent.id % 10'000'000));
  }
  fact(context.say("Uploaded", "Hochgeladen"), fullDate(torrent.minutesAgo));
  fact(context.say("By", "Von"),
       torrent.uploader.empty()
           ? std::string("<i>Anonymous</i>")
           : fmt::format(R"(<a href="/user/{0}" title="Browse {0}">{0}</a>)", torrent.uploader));
  fact(context.say("Seeders", "Seeder"), std::to_string(torrent.seeders));
  fact(context.say("Leechers", "Leecher"), std::to_string(torrent.leechers));
  fact("Info hash", torrent.infoHash);
  return list + "</dl>\n";
}

std::string description(const DemoTorrent& torrent) {
  Random random(static_cast<std::uint64_t>(torrent.id));
  std::string text = fmt::format("{}\n\n", escapeHtml(torrent.name));
  const std::uint64_t paragraphs = 3 + random.below(6);
  for (std::uint64_t i = 0; i < paragraphs; ++i) {
    text += escapeHtml(
        fmt::format("{} from {} & {}: the {} {}, kept as it was found. Checked in {} by {}; "
                    "sources, scans & notes are included.\n\n",
                    random.pick(demoNouns()), random.pick(demoPlaces()), random.pick(demoPlaces()),
                    random.pick(demoAdjectives()), random.pick(demoNouns()),
                    random.pick(demoPlaces()), random.pick(demoPeople())));
  }
  return fmt::format(
      "<div class=\"nfo\">\n<pre>{}"
      "More: <a href=\"http://library.example/item/{}\" target=\"_blank\" rel=\"nofollow\">"
      "http://library.example/item/{}</a>\n</pre>\n</div>\n",
      text, torrent.id, torrent.id);
}

std::string comments(const DemoTorrent& torrent) {
  Random random(static_cast<std::uint64_t>(torrent.id) + 1);
  std::string list = "<div id=\"comments\">\n";
  const std::uint64_t count = random.below(5);
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto writer = random.pick(demoUploaders());
    list += fmt::format("<p><a href=\"/user/{0}\">{0}</a>: thank you, greetings from {1}.</p>\n",
                        writer, random.pick(demoPlaces()));
  }
  return list + "</div>\n";
}

}  // namespace

std::string detailsPage(const PageContext& context, const DemoTorrent& torrent) {
  std::string page = pageHead(context, torrent.name);
  page += popUnderScript() + sponsoredLink() + downloadBox() + premiumAnchor(context);
  page += fmt::format(
      "<div id=\"detailsouterframe\">\n<div id=\"detailsframe\">\n"
      "<div id=\"title\">{}</div>\n",
      escapeHtml(torrent.name));
  page += popUnderScript() + sponsoredLink();
  page += "<div id=\"details\">\n" + facts(context, torrent) + downloadBox();
  page += fmt::format(
      "<p><a href=\"{}\" title=\"Get this torrent\">Get this torrent (magnet link)</a> &middot; "
      "<a href=\"/files/{}.torrent\">{} file: {}.torrent</a></p>\n",
      linkMarkup(magnetLink(torrent.infoHash, torrent.name)), torrent.id,
      context.say("Torrent", "Torrent-"), torrent.id);
  page += premiumAnchor(context) + description(torrent) + downloadBox();
  page += sponsoredLink() + "</div>\n";
  page += fmt::format("<h2>{}</h2>\n", context.say("Comments", "Kommentare"));
  if (context.layout != FaultKind::OtherLayout) {
    page += comments(torrent);
  }
  return page + "</div>\n</div>\n" + sponsoredLink() + pageFoot(context);
}

}  // namespace veltramoor
