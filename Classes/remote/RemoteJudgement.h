// What a BitTorrent client's answer, or its absence, says of the settings it was asked by.
#pragma once

#include <string>

#include "remote/BitClient.h"
#include "remote/RemoteDiagnosis.h"

namespace veltramoor {

/// Settings that make an address, as the sentences name them.
struct JudgedSettings {
  const BitClientClass& kind;
  std::string host;
  std::string port;
  bool hasUser = false;
};

/// The step at which an exchange without an answer ended.
[[nodiscard]] DiagnosisStep judgeFailure(const JudgedSettings& settings,
                                         const TransferFailure& failure,
                                         const ReachedStages& reached);

/// Whether an answer's status lets this computer in; the answer must be there.
[[nodiscard]] DiagnosisStep judgeStatus(const JudgedSettings& settings, const HttpRequest& answered,
                                        const ReachedStages& reached);

/// Whether the answer to `client`'s probe is one of the kind that was chosen.
[[nodiscard]] DiagnosisStep judgeKind(const JudgedSettings& settings, const BitClient& client,
                                      const HttpRequest& answered);

/// Why an answer to a send is no success; the answer must be there.
[[nodiscard]] DiagnosisStep judgeRefusedSend(const JudgedSettings& settings, const HttpRequest& add,
                                             const ReachedStages& reached);

/// Sentences for the stages that were reached.
[[nodiscard]] DiagnosisStep nameStep(const JudgedSettings& settings,
                                     const std::string& peerAddress);
[[nodiscard]] DiagnosisStep portStep(const JudgedSettings& settings);

}  // namespace veltramoor
