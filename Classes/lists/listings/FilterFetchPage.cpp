#include "lists/listings/FilterFetchPage.h"

#include "site/HttpRequestRegExTorrent.h"

namespace veltramoor {

FilterFetchPage::FilterFetchPage(std::optional<Url> url, std::shared_ptr<FilterSet> filters,
                                 Completion completion, std::optional<DeliveryPlace> place)
    : FetchPage(std::move(url), std::move(completion), std::move(place)),
      filters_(std::move(filters)) {}

void FilterFetchPage::fetch() {
  HttpRequestRegExTorrent request(url());
  request.request();
  failure_ = request.failure();
  returnObject_.trouble = request.trouble();
  returnObject_.torrents = request.takeTorrents();
  returnObject_.filters = filters_;
  if (returnObject_.torrents) {
    returnObject_.accepted = filters_->accepted(*returnObject_.torrents);
  }
}

}  // namespace veltramoor
