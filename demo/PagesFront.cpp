#include <fmt/format.h>

#include <algorithm>

#include "demo/Pages.h"
#include "demo/Random.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

constexpr int kTopics = 24;

std::string topicTitle(int topic) {
  Random random(static_cast<std::uint64_t>(topic));
  return fmt::format("The {} {} of {}: where to find it?", random.pick(demoAdjectives()),
                     random.pick(demoNouns()), random.pick(demoPlaces()));
}

/// The forum is a small site of its own, with a frame of its own.
std::string forumFrame(std::string_view title, std::string_view base, std::string_view content) {
  return fmt::format(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<title>{0} - Open Index forum (demo)</title>\n"
      "<style>body {{ font-family: \"Liberation Sans\", sans-serif; margin: 0 auto; padding: 16px; "
      "max-width: 760px; color: #22303a; background: #fbfaf7; }} a {{ color: #1f6f78; }} "
      "li, .post {{ background: #fff; border: 1px solid #dfdcd3; border-radius: 5px; "
      "padding: 10px 14px; margin: 8px 0; list-style: none; }} ul {{ padding: 0; }}</style>\n"
      "</head>\n<body>\n<p><a href=\"{1}/\">Open Index forum (demo)</a></p>\n<h1>{0}</h1>\n{2}"
      "<p>Elsewhere: <a href=\"http://elsewhere.example/\">a site of friends</a></p>\n"
      "</body>\n</html>\n",
      title, base, content);
}

}  // namespace

std::string homePage(const PageContext& context) {
  std::string page = pageHead(context, context.say("Home", "Startseite"));
  page +=
      fmt::format("<h1>{}</h1>\n<p>{}</p>\n<div class=\"tiles\">\n",
                  context.say("Freely shared works", "Freie Werke"),
                  context.say("Free software, open films, books and music in the public domain.",
                              "Freie Software, offene Filme, gemeinfreie Bücher und Musik."));
  for (const DemoGroup& group : demoGroups()) {
    page += fmt::format(
        "<div class=\"tile\"><a href=\"/browse/{}/0/99\"><b>{}</b></a> "
        "<a href=\"/top/{}\">top 100</a>\n<ul>\n",
        group.code, group.label, group.code);
    auto found = context.catalogue.find({.category = group.code});
    found.resize(std::min<std::size_t>(found.size(), 4));
    for (const DemoTorrent* torrent : found) {
      page += fmt::format("\t<li><a href=\"/torrent/{}/{}\">{}</a></li>\n", torrent->id,
                          slug(torrent->name), escapeHtml(torrent->name));
    }
    page += "</ul></div>\n";
  }
  return page + "</div>\n" + pageFoot(context);
}

std::string forumFrontPage(const PageContext& context, std::string_view base) {
  std::string list = "<ul>\n";
  for (int topic = 1; topic <= kTopics; ++topic) {
    list += fmt::format("<li><a href=\"{}/topic/{}\">{}</a></li>\n", base, topic,
                        escapeHtml(topicTitle(topic)));
  }
  list += fmt::format("</ul>\n<p><a href=\"{}/\">Back to the index</a></p>\n", context.origin);
  return forumFrame("All topics", base, list);
}

std::string forumTopicPage(const PageContext& /*context*/, std::string_view base, int topic) {
  Random random(static_cast<std::uint64_t>(topic) + 77);
  std::string posts;
  const std::uint64_t count = 2 + random.below(6);
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto writer = random.pick(demoUploaders());
    posts += fmt::format(
        "<div class=\"post\"><b>{}</b><br>I saw a {} one in {}. "
        "<a href=\"{}/topic/{}\">See also</a>.</div>\n",
        writer, escapeHtml(random.pick(demoAdjectives())), random.pick(demoPlaces()), base,
        1 + random.below(kTopics));
  }
  return forumFrame(escapeHtml(topicTitle(topic)), base, posts);
}

std::string messagePage(const PageContext& context, std::string_view title, std::string_view text) {
  return pageHead(context, title) +
         fmt::format("<h1>{}</h1>\n<p>{}</p>\n", escapeHtml(title), escapeHtml(text)) +
         pageFoot(context);
}

std::string longPage(const PageContext& context, std::size_t bytes) {
  std::string page = pageHead(context, "The long story");
  page.reserve(bytes + 65'536);
  for (int i = 0; page.size() < bytes; ++i) {
    page += fmt::format("<p class=\"chapter\"><a href=\"/story/{}\">Chapter {}</a>: {}</p>\n", i, i,
                        escapeHtml(topicTitle(i)));
  }
  return page + pageFoot(context);
}

}  // namespace veltramoor
