#include "remote/RemoteJudgement.h"

#include <arpa/inet.h>
#include <fmt/format.h>
#include <sys/socket.h>

#include <array>

#include "Util/PrintableLine.h"
#include "platform/FailureWords.h"
#include "remote/Transmission.h"
#include "site/HttpRequest.h"

namespace veltramoor {
namespace {

bool isIpAddress(std::string text) {
  std::array<unsigned char, sizeof(in6_addr)> bytes{};
  if (text.starts_with('[') && text.ends_with(']')) {
    text = text.substr(1, text.size() - 2);
  }
  return inet_pton(AF_INET, text.c_str(), bytes.data()) == 1 ||
         inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1;
}

std::string checkPort(const JudgedSettings& settings) {
  return fmt::format("Check the port: {}'s own is {}.", settings.kind.name,
                     settings.kind.defaultPort);
}

std::string checkKind(const JudgedSettings& settings) {
  return fmt::format("Check the kind of client, and the port: {}'s own is {}.", settings.kind.name,
                     settings.kind.defaultPort);
}

// "192.0.2.*": home networks give their computers one number after another.
std::string neighbours(const std::string& address) {
  const std::size_t lastDot = address.rfind('.');
  const bool isLoopback = address.starts_with("127.");
  return address.find(':') != std::string::npos || lastDot == std::string::npos || isLoopback
             ? address
             : address.substr(0, lastDot) + ".*";
}

// From another machine's answer: short and printable.
std::string shortLine(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  const std::string line = printableLine(text);
  return line.size() > kLongest ? line.substr(0, kLongest) + "..." : line;
}

// Where a redirect leads, without what may be secret in it; "" for one that cannot be told apart
// from credentials.
std::string shortTarget(std::string target) {
  if (const std::optional<Url> url = Url::parse(target)) {
    target = url->withoutCredentials();
  } else if (target.find('@') != std::string::npos) {
    return {};
  }
  return shortLine(target.substr(0, target.find_first_of(";?#")));
}

bool bodyHas(const HttpRequest& answered, std::string_view words) {
  return answered.responseData() && answered.responseData()->find(words) != std::string::npos;
}

// Whether a refusal is the chosen client's own: any server at that port may refuse.
bool isOwnRefusal(const JudgedSettings& settings, const HttpRequest& answered) {
  return settings.kind.name == Transmission::kName &&
         (isTransmission(answered) || bodyHas(answered, "Unauthorized User") ||
          bodyHas(answered, "Unauthorized IP") || bodyHas(answered, "login attempts"));
}

// "; it calls itself nginx", or nothing.
std::string selfNamed(const HttpRequest& answered) {
  const std::string server = shortLine(answered.urlResponse()->header("Server").value_or(""));
  return server.empty() ? "" : fmt::format("; it calls itself {}", server);
}

std::string refusedLogin(const JudgedSettings& settings, const HttpRequest& answered) {
  const std::string_view kind = settings.kind.name;
  if (isOwnRefusal(settings, answered)) {
    return settings.hasUser
               ? fmt::format(
                     "The user name or the password is not right. Compare them with those "
                     "in {} of {}.",
                     settings.kind.remotePreferences.substr(4), kind)
               : fmt::format("{} asks for a user name and a password. Fill them in.", kind);
  }
  return fmt::format(
      "What answers at port {} {} (401{}). {}", settings.port,
      settings.hasUser ? "does not take the user name or the password"
                       : "asks for a user name and a password",
      selfNamed(answered),
      settings.hasUser ? "Check them, and the port." : "Fill them in, or check the port.");
}

std::string refusedAddress(const JudgedSettings& settings, const HttpRequest& answered,
                           const ReachedStages& reached) {
  const std::string_view kind = settings.kind.name;
  const std::string_view place = settings.kind.remotePreferences;
  if (!isOwnRefusal(settings, answered)) {
    return fmt::format(
        "What answers at port {} refuses this computer (403{}). Look for the allowed "
        "addresses in {} of {}, or check the port.",
        settings.port, selfNamed(answered), place.substr(4), kind);
  }
  // Transmission counts over everybody who asks, and stays locked until it is started again.
  if (bodyHas(answered, "login attempts")) {
    return fmt::format(
        "{0} lets nobody in after too many wrong passwords. Restart {0}, and correct the password "
        "before the next try.",
        kind);
  }
  const std::string allowed =
      reached.localAddress.empty() ? "its address" : neighbours(reached.localAddress);
  // Version 4.1 says the same in both cases.
  const bool maybeLocked = settings.hasUser && !bodyHas(answered, "Unauthorized IP");
  return fmt::format(
      "{} refuses this computer. In {}, allow {}, or switch off 'Only allow these IP addresses'.{}",
      kind, place, allowed,
      maybeLocked ? fmt::format(" After too many wrong passwords it refuses everybody: restart it "
                                "then.")
                  : "");
}

std::string leadsElsewhere(const JudgedSettings& settings, const std::string& target) {
  if (target.starts_with("https://")) {
    return fmt::format(
        "Port {} leads to a secure connection (https), which is not offered here. Switch it off "
        "there, or use the port for plain ones.",
        settings.port);
  }
  const std::string where = shortTarget(target);
  return fmt::format("Port {} leads elsewhere{} and is not {}. {}", settings.port,
                     where.empty() ? "" : fmt::format(", to {},", where), settings.kind.name,
                     checkKind(settings));
}

std::string refusedStatus(const JudgedSettings& settings, const HttpRequest& answered,
                          const ReachedStages& reached) {
  const int status = answered.urlResponse()->statusCode;
  const std::string_view kind = settings.kind.name;
  if (status == 401) {
    return refusedLogin(settings, answered);
  }
  if (status == 403) {
    return refusedAddress(settings, answered, reached);
  }
  if (status == 421) {
    return fmt::format(
        "{} does not know the host name {}. Type the computer's IP address in its place, or add "
        "the name to the host names that {} allows.",
        kind, settings.host, kind);
  }
  if (status == 400 && bodyHas(answered, "HTTPS")) {
    return fmt::format(
        "Port {} takes secure connections only. Switch HTTPS off there, or use the port for plain "
        "ones.",
        settings.port);
  }
  if (status >= 300 && status < 400) {
    return leadsElsewhere(settings, answered.urlResponse()->header("Location").value_or(""));
  }
  if (status >= 500) {
    return fmt::format(
        "What answers at port {} has failed itself ({}{}). Restart it, or check the port.",
        settings.port, status, selfNamed(answered));
  }
  return fmt::format("Port {} answers, but not as {} does ({}). {}", settings.port, kind, status,
                     checkKind(settings));
}

}  // namespace

DiagnosisStep nameStep(const JudgedSettings& settings, const std::string& peerAddress) {
  return {RemoteStep::Name, true,
          isIpAddress(settings.host)
              ? fmt::format("{} is an IP address.", settings.host)
              : fmt::format("The name {} leads to {}.", settings.host, peerAddress)};
}

DiagnosisStep portStep(const JudgedSettings& settings) {
  return {RemoteStep::Port, true, fmt::format("Port {} answers.", settings.port)};
}

DiagnosisStep judgeFailure(const JudgedSettings& settings, const TransferFailure& failure,
                           const ReachedStages& reached) {
  const std::string_view kind = settings.kind.name;
  const std::string& port = settings.port;
  const bool isName = !isIpAddress(settings.host);
  if (failure.kind == TransferFailureKind::NameNotFound ||
      (isName && reached.peerAddress.empty())) {
    const bool isSlow = failure.kind == TransferFailureKind::TimedOut;
    return {RemoteStep::Name, false,
            failure.kind == TransferFailureKind::GivenUp
                ? sentenceOf(failure)
                : fmt::format("The name {} was not found{}. Check it, or type the computer's IP "
                              "address.",
                              settings.host, isSlow ? " in time" : "")};
  }
  if (reached.localAddress.empty()) {
    std::string text = sentenceOf(failure);
    if (failure.kind == TransferFailureKind::Refused) {
      text = fmt::format(
          "The computer is there, but nothing answers at port {}. Start {}, switch remote access "
          "on in {}, or check the port.",
          port, kind, settings.kind.remotePreferences);
    } else if (failure.kind == TransferFailureKind::TimedOut) {
      text = fmt::format(
          "Nothing answers at port {} of {}. Check that the computer is on, and that its firewall "
          "lets port {} through.",
          port, reached.peerAddress, port);
    } else if (failure.kind == TransferFailureKind::Unreachable) {
      text =
          fmt::format("There is no way to {} from here. Check that both are in the same network.",
                      reached.peerAddress);
    }
    return {RemoteStep::Port, false, text};
  }
  std::string text = sentenceOf(failure) + " " + checkPort(settings);
  if (failure.kind == TransferFailureKind::NotHttp) {
    text =
        fmt::format("What answers at port {} does not speak HTTP. {}", port, checkPort(settings));
  } else if (failure.kind == TransferFailureKind::TimedOut) {
    text = fmt::format(
        "Port {} takes the connection, but does not answer in time. Restart {}, or check the port.",
        port, kind);
  } else if (failure.kind == TransferFailureKind::BrokenOff && reached.spoke) {
    text = fmt::format(
        "{0} went away before it answered. Start {0}, and look whether it has the torrent.", kind);
  } else if (failure.kind == TransferFailureKind::BrokenOff) {
    text = fmt::format(
        "Port {} takes the connection and breaks it off, as a port for secure connections does. {}",
        port, checkPort(settings));
  } else if (failure.kind == TransferFailureKind::GivenUp) {
    text = sentenceOf(failure);
  }
  return {RemoteStep::Http, false, text};
}

DiagnosisStep judgeStatus(const JudgedSettings& settings, const HttpRequest& answered,
                          const ReachedStages& reached) {
  if (answered.isResponseValid() || answered.urlResponse()->statusCode == 409) {
    return {RemoteStep::Status, true, "It lets this computer in."};
  }
  return {RemoteStep::Status, false, refusedStatus(settings, answered, reached)};
}

DiagnosisStep judgeKind(const JudgedSettings& settings, const BitClient& client,
                        const HttpRequest& answered) {
  const std::string_view kind = settings.kind.name;
  if (client.isOwnAnswer(answered)) {
    return {RemoteStep::Kind, true, fmt::format("It is {}.", kind)};
  }
  if (isTransmission(answered)) {
    return {RemoteStep::Kind, false,
            fmt::format("What answers speaks as Transmission does, not as {}. Choose Transmission "
                        "as the client.",
                        kind)};
  }
  return {
      RemoteStep::Kind, false,
      fmt::format("What answers is not {}{}. {}", kind, selfNamed(answered), checkKind(settings))};
}

DiagnosisStep judgeRefusedSend(const JudgedSettings& settings, const HttpRequest& add,
                               const ReachedStages& reached) {
  const std::string_view kind = settings.kind.name;
  if (add.isResponseValid()) {
    return {RemoteStep::Status, false,
            leadsElsewhere(settings, add.urlResponse()->url.absoluteString())};
  }
  if (add.urlResponse()->statusCode != 409) {
    return {RemoteStep::Status, false, refusedStatus(settings, add, reached)};
  }
  return {RemoteStep::Kind, false,
          kind == Transmission::kName
              ? "Transmission wants a new session. Send the torrent once more."
              : fmt::format("What answers asks for a session, as Transmission does and {} does "
                            "not. Choose Transmission as the client.",
                            kind)};
}

}  // namespace veltramoor
