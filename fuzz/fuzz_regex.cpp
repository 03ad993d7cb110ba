// The regular-expression operations against ICU alone: whatever ICU settles, they answer alike.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Util/Utf.h"
#include "regex/BareIcu.h"
#include "regex/RegexKitLiteAdditions.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/HttpRequestRegExProfileDetails.h"
#include "site/TorrentScraping.h"

namespace {

using namespace veltramoor;

const std::string_view kExpressions[] = {kTorrentRowRegex, kDetailsRegex, kAccountRegex,
                                         R"(<!-- popunder -->[\s\S]*?</script>)",
                                         R"(["'](http://movies\.example/.*?)["'])"};
constexpr const char* kReplacements[] = {"", "-", "[$0]", "\\$\\\\"};
/// 200,000 of ICU's steps a search; a text on which it needs more proves nothing.
constexpr std::int32_t kSteps = 20;

void expect(bool same, const char* operation, const std::string& regex, const std::string& text) {
  if (!same) {
    std::fprintf(stderr, "%s differs\nexpression: %s\ntext: %s\n", operation, regex.c_str(),
                 text.c_str());
    std::abort();
  }
}

void compare(const std::string& regex, const std::string& text, const std::string& replacement) {
  const BareAnswer bare = askBareIcu(text, regex, replacement, kSteps);
  try {
    RegexMatching matching;
    const auto all = arrayOfCaptureComponentsMatchedByRegex(text, regex, &matching);
    if (U_FAILURE(bare.status)) {
      return;
    }
    expect(!matching.timedOut && all == bare.matches, "all matches", regex, text);
    const auto first = captureComponentsMatchedByRegex(text, regex);
    expect(first == (bare.matches.empty() ? std::vector<std::string>{} : bare.matches.front()),
           "first match", regex, text);
    expect(stringByMatching(text, regex, bare.groupCount) ==
               (bare.matches.empty() ? std::nullopt : std::optional(bare.matches.front().back())),
           "one capture", regex, text);
    std::string replaced = text;
    expect(replaceOccurrencesOfRegex(replaced, regex, replacement) == bare.matches.size() &&
               replaced == bare.replaced,
           "replacing", regex, text);
  } catch (const RegexException& e) {
    // Where ICU alone runs out of stack or steps, a shorter way there may fail differently.
    expect(U_FAILURE(bare.status), e.what(), regex, text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const bool own = input.ConsumeBool();
  const std::string replacement = input.PickValueInArray(kReplacements);
  const std::string regex =
      own ? input.ConsumeRandomLengthString(80) : std::string(input.PickValueInArray(kExpressions));
  compare(regex, input.ConsumeRemainingBytesAsString(), replacement);
  return 0;
}
