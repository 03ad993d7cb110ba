#include "demo/SpoiltAnswer.h"

#include <fmt/format.h>

#include "demo/Gzip.h"
#include "demo/Pages.h"

namespace veltramoor {
namespace {

constexpr int kFillerHeaders = 300;
constexpr std::size_t kFillerHeaderBytes = 1000;
constexpr std::size_t kBigPageBytes = 5'000'000;

SiteAnswer bomb() {
  SiteAnswer answer = html(gzipBomb());
  answer.headers.emplace_back("Content-Encoding", "gzip");
  answer.compressible = false;
  return answer;
}

Delivery deliveryOf(FaultKind kind) {
  switch (kind) {
    case FaultKind::Hang:
      return Delivery::Hang;
    case FaultKind::Close:
      return Delivery::Close;
    case FaultKind::Reset:
      return Delivery::Reset;
    case FaultKind::Endless:
      return Delivery::Endless;
    case FaultKind::Drip:
      return Delivery::Drip;
    default:
      return Delivery::Whole;
  }
}

SiteAnswer contentOf(const SitePages& pages, const SiteRequest& request, FaultKind kind) {
  switch (kind) {
    case FaultKind::Hang:
    case FaultKind::Close:
      return {};
    case FaultKind::Endless:
      return html(std::string(16384, '.'));
    case FaultKind::Bomb:
      return bomb();
    case FaultKind::RedirectLoop:
      return redirect(request.seen.target);
    case FaultKind::TrFlood:
      return html(rowFloodPage(pages.contextFor(request)));
    case FaultKind::Big:
      return html(longPage(pages.contextFor(request), kBigPageBytes));
    case FaultKind::Error500:
      return html(messagePage(pages.contextFor(request), "Error 500", "The site is overloaded."),
                  500);
    default:
      return pages.answer(request, kind);
  }
}

}  // namespace

SiteAnswer spoiltAnswer(const SitePages& pages, const SiteRequest& request, const Fault& fault) {
  SiteAnswer answer = contentOf(pages, request, fault.kind);
  if (fault.kind == FaultKind::Headers) {
    for (int i = 0; i < kFillerHeaders; ++i) {
      answer.headers.emplace_back(fmt::format("X-Filler-{}", i),
                                  std::string(kFillerHeaderBytes, 'x'));
    }
  } else if (fault.kind == FaultKind::InvalidUtf8) {
    // Anywhere in the page will do; half of it is among the rows of a listing.
    answer.body.insert(answer.body.size() / 2, "\xFF\xFE \xE9t\xE9");
  }
  answer.delivery = deliveryOf(fault.kind);
  answer.delay = fault.delay;
  return answer;
}

}  // namespace veltramoor
