// What the terminal says of a command line or a configuration that it does not understand.
#include <algorithm>
#include <fstream>

#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class CliUsageTest : public test::CliFixture {};

TEST_F(CliUsageTest, NamesTheOptionAndWhatItTakesInOneLine) {
  const std::string bad = "s3cret";
  struct Case {
    std::vector<std::string> arguments;
    const char* words;
  };
  for (const Case& one : std::initializer_list<Case>{
           {{}, "A command is missing. --help names them all."},
           {{bad}, "There is no such command. --help names them all."},
           {{"--" + bad}, "There is no such option. --help names them all."},
           {{"recent", "--order", bad},
            "--order takes date, size, seeders or leechers, or the site's code."},
           {{"recent", "--sort", bad}, "--sort takes desc or asc."},
           {{"recent", "--page", bad}, "--page takes a whole number from 0 to 1000000."},
           {{"recent", "--page"}, "--page takes a whole number from 0 to 1000000."},
           {{"recent", "--page", "1", "--page", "2"}, "--page may be given once only."},
           {{"details", bad}, "row takes a whole number from 1 to 1000000."},
           {{"filters", "remove", bad}, "N takes a whole number from 1 to 1000000."},
           {{"remote", bad}, "remote takes set, show or test."},
           {{"remote", "set", "--client", bad}, "--client takes Vuze, Transmission or Utorrent."},
           {{"remote", "set", "--port", bad}, "--port takes a whole number from 1 to 65535."},
           {{"remote", "set", "--user"}, "--user needs a value."},
           {{"send", "magnet:?xt=a", "--name", bad + "\xE9"}, "--name is not text in UTF-8."},
           {{"send", bad}, "send takes a row number, from 1, or a magnet link."},
           {{"search"}, "query is missing. What to look for."},
           {{"--json=" + bad, "top"}, "--json takes no value."},
           {{"login", "anna", bad},
            "login does not take one of these arguments. login --help names those it takes."},
           {{"top", "--" + bad, bad},
            "top does not take one of these arguments. top --help names those it takes."}}) {
    EXPECT_EQ(said(one.arguments), std::string("veltramoor-cli: ") + one.words + "\n");
    EXPECT_EQ(status_, 2) << one.words;
  }
  // With a query for search: releases of the library differ in which of two faults they name.
  for (const std::vector<std::string>& line : std::initializer_list<std::vector<std::string>>{
           {"recent"}, {"search", "x"}, {"top"}, {"favourites"}}) {
    std::vector<std::string> arguments = line;
    arguments.insert(arguments.end(), {"--category", bad});
    const std::string text = said(arguments);
    EXPECT_TRUE(text.starts_with("veltramoor-cli: --category takes 0 for all, 100 for audio,"));
    EXPECT_EQ(text.find(bad), std::string::npos) << text;
  }
  const std::string text = said({"--forum-host", "http://me:" + bad + "@a.test/", "recent"});
  EXPECT_TRUE(text.starts_with("veltramoor-cli: --forum-host must be a host name")) << text;
  EXPECT_EQ(text.find(bad), std::string::npos) << text;
  EXPECT_NE(said({"recent", "--help"}).find("veltramoor-cli recent [OPTIONS]"), std::string::npos);
}

TEST_F(CliUsageTest, SaysEachProblemOfTheConfigurationOnALineOfItsOwn) {
  std::filesystem::create_directories(stateFile_.parent_path());
  const auto linesFor = [&](const char* configuration) {
    std::ofstream(stateFile_.parent_path() / "veltramoor.toml", std::ios::trunc) << configuration;
    const std::string text = said({"history"});
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(text.find('?'), std::string::npos) << text;
    const std::string begin = "veltramoor-cli: " + stateFile_.parent_path().string();
    std::ptrdiff_t lines = 0;
    for (std::size_t at = text.find(begin); at != std::string::npos;
         at = text.find(begin, at + 1)) {
      ++lines;
    }
    EXPECT_EQ(std::ranges::count(text, '\n'), lines) << text;
    return lines;
  };
  EXPECT_EQ(linesFor("colour = 1\nforum-host = 2\n"), 2);
  EXPECT_EQ(linesFor("\"caf\\u0085\" = 1\n"), 1);
}

}  // namespace
}  // namespace veltramoor
