// veltramoor-demo-site: a local index site with invented content, to try the application with.
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

#include "demo/DemoSite.h"

namespace {

/// Returns on SIGTERM or SIGINT and, with `untilEof`, when standard input ends.
void waitForTheEnd(const sigset_t& signals, bool untilEof) {
  const int signalPipe = ::signalfd(-1, &signals, SFD_CLOEXEC);
  std::array<pollfd, 2> waited{
      {{signalPipe, POLLIN, 0}, {untilEof ? STDIN_FILENO : -1, POLLIN, 0}}};
  while (true) {
    if (::poll(waited.data(), waited.size(), -1) < 0) {
      continue;
    }
    if (waited[0].revents != 0) {
      break;
    }
    std::array<char, 256> ignored{};
    if (waited[1].revents != 0 && ::read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0) {
      break;
    }
  }
  ::close(signalPipe);
}

}  // namespace

int main(int argc, char** argv) {
  veltramoor::DemoSiteOptions options;
  bool untilEof = false;
  CLI::App app{"A local index site with invented content.", "veltramoor-demo-site"};
  app.add_option("--port", options.port, "TCP port on 127.0.0.1; 0 takes a free one")
      ->check(CLI::Range(0, 65535));
  app.add_option("--torrents", options.torrents, "how many torrents there are")
      ->capture_default_str()
      ->check(CLI::Range(0, 1'000'000));
  app.add_option("--seed", options.seed, "what the content is made from")->capture_default_str();
  app.add_option("--page-rows", options.pageRows, "torrents on a listing page")
      ->capture_default_str()
      ->check(CLI::Range(1, 10'000));
  app.add_option("--notice", options.notice, "the notice endpoint's answer, such as GO:Hello");
  app.add_flag("--require-language", options.requireLanguage,
               "speak another language to clients without the cookie language=en_EN");
  app.add_option("--host-name", options.hostName, "the host of absolute links and of cookies");
  app.add_option("--movie-host", options.movieDatabaseHost, "the movie database's host")
      ->capture_default_str();
  app.add_option("--sponsored-host", options.sponsoredDownloadHost, "the sponsored-download host")
      ->capture_default_str();
  app.add_flag("--until-eof", untilEof, "end when standard input ends");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? 0 : 2;
  }

  // Blocked before other threads exist, so that they all leave the signals to signalfd.
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, SIGTERM);
  ::sigaddset(&signals, SIGINT);
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);  // the reader of our standard output may have gone

  try {
    const veltramoor::DemoSite site(options);
    std::printf("listening on 127.0.0.1:%d\n", site.port());
    std::fflush(stdout);
    waitForTheEnd(signals, untilEof);
  } catch (const std::exception& problem) {
    std::cerr << "veltramoor-demo-site: " << problem.what() << '\n';
    return 1;
  }
  return 0;
}
