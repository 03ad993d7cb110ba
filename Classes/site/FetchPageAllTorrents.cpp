#include "site/FetchPageAllTorrents.h"

#include "site/HttpRequestRegExTorrent.h"

namespace veltramoor {

void FetchPageAllTorrents::fetch() {
  HttpRequestRegExTorrent request(url());
  request.request();
  returnObject_ = request.takeTorrents();
  failure_ = request.trouble();
}

}  // namespace veltramoor
