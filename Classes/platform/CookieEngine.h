// The cookie engine of one libcurl handle, kept in step with the store.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltramoor {

class CookieStorage;

/// libcurl decides which cookies go with a request and what an answer's Set-Cookie lines mean, each
/// handle in an engine of its own: in some of its releases an engine shared by threads is a race
/// (8.14.1 chains the stored cookies themselves into the list of each request). Belongs to the
/// thread that uses the handle; many may share one store.
///
/// An answer that sets again what its handle was given changes nothing: what others have stored or
/// deleted since then stands.
class CookieEngine {
 public:
  /// `handle` is the CURL*, which must live as long; typed as void to keep curl out of this header.
  CookieEngine(void* handle, CookieStorage& store);

  /// Gives the engine what the store holds now. Next to free when nothing has changed since. Called
  /// before an exchange, never during one.
  void handIn();
  /// Says that an answer has this value for Set-Cookie.
  void noteSetCookie(std::string_view value);
  /// Gives the store what the answer set and deleted so far, in the answer's order of names. Next
  /// to free without `noteSetCookie`.
  void takeBack();

 private:
  void* handle_;
  CookieStorage& store_;
  /// Of the store, when both hold the same; absent when they may not.
  std::optional<std::uint64_t> version_ = 0;
  /// What the engine holds: each line as it lists it, with what decides whom it replaces there.
  std::unordered_map<std::string, std::string> held_;
  /// In the order of the answer.
  std::vector<std::string> setNames_;
};

}  // namespace veltramoor
