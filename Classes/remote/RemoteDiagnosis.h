// Why the person's BitTorrent client cannot be used, step by step.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "remote/RemoteSettings.h"

namespace veltramoor {

class BitClient;
class HttpRequest;

/// In the order in which they are tried.
enum class RemoteStep {
  /// The fields are filled in.
  Settings,
  /// They make an address.
  Address,
  /// The name is found.
  Name,
  /// The port answers.
  Port,
  /// It speaks HTTP.
  Http,
  /// It lets this computer in.
  Status,
  /// It is the kind of client that was chosen.
  Kind,
};

/// "settings", "address", "name", "port", "http", "status", "kind".
[[nodiscard]] std::string_view nameOf(RemoteStep step);

struct DiagnosisStep {
  RemoteStep step = RemoteStep::Settings;
  bool ok = false;
  /// One sentence, and a second one where the person can act. Printable; holds no password, and
  /// no address that is none, for anything may have been typed there.
  std::string text;
  /// Whether the remote settings are where it can be mended.
  bool ofSettings = true;

  friend bool operator==(const DiagnosisStep&, const DiagnosisStep&) = default;
};

/// How far a connection had come; "" for what it had not reached. See ConnectionStage.
struct ReachedStages {
  std::string peerAddress = {};
  /// Who this computer is to the peer.
  std::string localAddress = {};
  /// Whether an earlier request of the same send was answered.
  bool spoke = false;
};

class RemoteDiagnosis {
 public:
  /// The whole diagnosis.
  static constexpr std::chrono::seconds kLongest{10};

  /// Called as each step is done, on the thread of `run`.
  using Told = std::function<void(const DiagnosisStep&)>;

  /// Tries the steps and stops at the first that fails, which is the last one returned. Asks the
  /// client once: it counts the logins that it refuses. Blocks for `limit` at most.
  static std::vector<DiagnosisStep> run(const RemoteSettings& settings, const Told& told = {},
                                        const std::stop_token& stop = {},
                                        std::chrono::milliseconds limit = kLongest);

  /// The step at which a send by `client` failed, by how its requests ended, `add` being the last;
  /// nothing is asked anew.
  [[nodiscard]] static DiagnosisStep ofFailedSend(const RemoteSettings& settings,
                                                  const BitClient& client, const HttpRequest& add,
                                                  const ReachedStages& reached);
  /// The same where the settings name no client that could be asked.
  [[nodiscard]] static DiagnosisStep ofUnusable(const RemoteSettings& settings);
};

}  // namespace veltramoor
