#include "remote/RemoteDiagnosis.h"

#include <fmt/format.h>

#include <charconv>
#include <memory>
#include <utility>

#include "Util/Capitalized.h"
#include "remote/BitClient.h"
#include "remote/RemoteJudgement.h"

namespace veltramoor {
namespace {

constexpr int kHighestPort = 65535;

bool isPort(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number >= 1 &&
         number <= kHighestPort;
}

DiagnosisStep failed(RemoteStep step, std::string text) { return {step, false, std::move(text)}; }

// What is missing; absent when nothing is.
std::optional<DiagnosisStep> missing(const RemoteSettings& settings, const BitClientClass* kind) {
  if (kind == nullptr) {
    return failed(RemoteStep::Settings,
                  "No BitTorrent client is chosen. Choose Vuze, Transmission or Utorrent.");
  }
  if (trimmed(settings.address.value_or("")).empty()) {
    return failed(RemoteStep::Settings,
                  fmt::format("The address is not filled in. Type the name or the IP address of "
                              "the computer that runs {}.",
                              kind->name));
  }
  if (!settings.port) {
    return failed(RemoteStep::Settings, fmt::format("The port is not filled in. {}'s own is {}.",
                                                    kind->name, kind->defaultPort));
  }
  return std::nullopt;
}

// Anything may have been typed into a field, a password too: what makes no address is not repeated.
std::optional<DiagnosisStep> misaddressed(const JudgedSettings& settings, const BitClient& client) {
  if (!isPort(settings.port)) {
    return failed(RemoteStep::Address,
                  fmt::format("The port is no number from 1 to 65535. {}'s own is {}.",
                              settings.kind.name, settings.kind.defaultPort));
  }
  const std::string& host = settings.host;
  const bool isBareIpv6 = host.find(':') != host.rfind(':') && !host.starts_with('[') &&
                          Url::parse("http://[" + host + "]/").has_value();
  if (isBareIpv6) {
    return failed(RemoteStep::Address,
                  fmt::format("An IPv6 address stands in brackets. Type [{}].", host));
  }
  const std::optional<Url> url = client.getProbe().url();
  if (!url || host.find_first_of("/?#@") != std::string::npos || url->host().empty()) {
    return failed(RemoteStep::Address,
                  "The address is neither a name nor an IP address. Type it without http://, port, "
                  "path and blanks, in letters without accents.");
  }
  return std::nullopt;
}

// The sentences' names for settings, whose blanks do not count.
JudgedSettings judged(const BitClientClass& kind, const BitClient& client) {
  return {.kind = kind,
          .host = trimmed(client.address.value_or("")),
          .port = trimmed(client.port.value_or("")),
          .hasUser = !client.username.value_or("").empty()};
}

/// One run, which tells of its steps as they are done.
class Run {
 public:
  explicit Run(const RemoteDiagnosis::Told& told) : told_(told) {}

  bool tell(DiagnosisStep step) {
    steps_.push_back(std::move(step));
    if (told_) {
      told_(steps_.back());
    }
    return steps_.back().ok;
  }

  void ask(const JudgedSettings& settings, const BitClient& client, const std::stop_token& stop,
           std::chrono::milliseconds limit) {
    HttpRequest probe = client.getProbe();
    probe.setFollowsRedirects(false);
    probe.setDeadline(std::chrono::steady_clock::now() + limit);
    probe.setStop(stop);
    ReachedStages reached;
    probe.setProgress([&](const ConnectionStage& stage) {
      reached.peerAddress = stage.peerAddress;
      if (stage.reached == ConnectionStage::Reached::Address) {
        tell(nameStep(settings, stage.peerAddress));
      } else {
        reached.localAddress = stage.localAddress;
        tell(portStep(settings));
      }
    });
    probe.request();
    if (!probe.urlResponse()) {
      tell(judgeFailure(settings, *probe.failure(), reached));
      return;
    }
    tell({RemoteStep::Http, true, "It speaks HTTP."});
    if (tell(judgeStatus(settings, probe, reached))) {
      tell(judgeKind(settings, client, probe));
    }
  }

  [[nodiscard]] std::vector<DiagnosisStep> takeSteps() { return std::move(steps_); }

 private:
  const RemoteDiagnosis::Told& told_;
  std::vector<DiagnosisStep> steps_;
};

}  // namespace

std::string_view nameOf(RemoteStep step) {
  switch (step) {
    case RemoteStep::Settings:
      return "settings";
    case RemoteStep::Address:
      return "address";
    case RemoteStep::Name:
      return "name";
    case RemoteStep::Port:
      return "port";
    case RemoteStep::Http:
      return "http";
    case RemoteStep::Status:
      return "status";
    case RemoteStep::Kind:
      break;
  }
  return "kind";
}

std::vector<DiagnosisStep> RemoteDiagnosis::run(const RemoteSettings& settings, const Told& told,
                                                const std::stop_token& stop,
                                                std::chrono::milliseconds limit) {
  Run run(told);
  const BitClientClass* kind = BitClient::classNamed(settings.client.value_or(""));
  if (auto step = missing(settings, kind)) {
    run.tell(std::move(*step));
    return run.takeSteps();
  }
  run.tell({RemoteStep::Settings, true, "The fields are filled in."});
  const std::unique_ptr<BitClient> client = BitClient::configured(settings);
  const JudgedSettings asked = judged(*kind, *client);
  if (auto step = misaddressed(asked, *client)) {
    run.tell(std::move(*step));
    return run.takeSteps();
  }
  run.tell({RemoteStep::Address, true,
            fmt::format("They make an address: {}, port {}.", asked.host, asked.port)});
  run.ask(asked, *client, stop, limit);
  return run.takeSteps();
}

DiagnosisStep RemoteDiagnosis::ofUnusable(const RemoteSettings& settings) {
  const BitClientClass* kind = BitClient::classNamed(settings.client.value_or(""));
  const auto step = missing(settings, kind);
  return step.value_or(
      DiagnosisStep{.text = "The torrent could not be sent.", .ofSettings = false});
}

DiagnosisStep RemoteDiagnosis::ofFailedSend(const RemoteSettings& settings, const BitClient& client,
                                            const HttpRequest& add, const ReachedStages& reached) {
  const BitClientClass* kind = BitClient::classNamed(settings.client.value_or(""));
  if (const auto step = missing(settings, kind)) {
    return *step;
  }
  const JudgedSettings asked = judged(*kind, client);
  if (const auto step = misaddressed(asked, client)) {
    return *step;
  }
  if (!add.url() && client.handshake()) {
    // What came in place of a token made no address of it.
    const HttpRequest& handshake = *client.handshake();
    if (!handshake.urlResponse()) {
      return judgeFailure(asked, *handshake.failure(), reached);
    }
    const DiagnosisStep status = judgeStatus(asked, handshake, reached);
    return status.ok ? judgeKind(asked, client, handshake) : status;
  }
  return add.urlResponse() ? judgeRefusedSend(asked, add, reached)
                           : judgeFailure(asked, *add.failure(), reached);
}

}  // namespace veltramoor
