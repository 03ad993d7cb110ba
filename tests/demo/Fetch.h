// A plain libcurl client for the tests of the demo site.
#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace veltramoor::test {

struct Fetched {
  CURLcode code = CURLE_OK;
  long status = 0;
  std::string header;
  std::string body;
  /// Bytes on the wire, before decoding.
  curl_off_t received = 0;
};

/// One client with a cookie jar and one connection that it keeps.
class Client {
 public:
  Client() : curl_(curl_easy_init(), curl_easy_cleanup) {
    curl_easy_setopt(curl_.get(), CURLOPT_COOKIEFILE, "");
    curl_easy_setopt(curl_.get(), CURLOPT_NOSIGNAL, 1L);
  }

  /// Body bytes after which a transfer is given up.
  std::size_t limit = 100'000'000;
  long timeoutMs = 30'000;
  bool gzip = false;
  std::string host;

  Fetched get(const std::string& url) { return fetch(url, nullptr); }
  Fetched post(const std::string& url, const std::string& form) { return fetch(url, &form); }
  void setCookie(const std::string& line) {
    curl_easy_setopt(curl_.get(), CURLOPT_COOKIELIST, line.c_str());
  }

 private:
  struct Sink {
    Fetched* into;
    std::size_t limit;
  };

  static std::size_t keepBody(char* data, std::size_t size, std::size_t count, void* user) {
    const auto* sink = static_cast<Sink*>(user);
    sink->into->body.append(data, size * count);
    return sink->into->body.size() > sink->limit ? 0 : size * count;
  }
  static std::size_t keepHeader(char* data, std::size_t size, std::size_t count, void* user) {
    static_cast<Fetched*>(user)->header.append(data, size * count);
    return size * count;
  }

  Fetched fetch(const std::string& url, const std::string* form) {
    Fetched fetched;
    Sink sink{&fetched, limit};
    CURL* curl = curl_.get();
    const std::unique_ptr<curl_slist, void (*)(curl_slist*)> list(
        host.empty() ? nullptr : curl_slist_append(nullptr, ("Host: " + host).c_str()),
        curl_slist_free_all);
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, list.get());
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    if (form != nullptr) {
      curl_easy_setopt(curl, CURLOPT_COPYPOSTFIELDS, form->c_str());
    } else {
      curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
    }
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, gzip ? "gzip" : nullptr);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, timeoutMs);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, keepBody);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &sink);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, keepHeader);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &fetched);
    fetched.code = curl_easy_perform(curl);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &fetched.status);
    curl_easy_getinfo(curl, CURLINFO_SIZE_DOWNLOAD_T, &fetched.received);
    return fetched;
  }

  std::unique_ptr<CURL, void (*)(CURL*)> curl_;
};

using Rows = std::vector<std::vector<std::string>>;

}  // namespace veltramoor::test
