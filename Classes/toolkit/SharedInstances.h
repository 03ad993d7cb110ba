// What the application has one of.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <typeindex>
#include <typeinfo>
#include <utility>
#include <vector>

namespace veltramoor {

/// Owns the objects that every `sharedInstance` of the screens hands out: each is made when it is
/// first asked for, and they go with their owner, the last one made first. A static object would
/// outlive the application object, and what knows Qt cannot end without that.
///
/// `main` makes one, after the application object, and ends it when no thread asks any more but
/// those that an instance of its own joins. Until then any thread may ask. A second owner, asking
/// without one, and asking in the end for what has gone by then, are each a `std::logic_error`.
class SharedInstances {
 public:
  SharedInstances();
  ~SharedInstances();
  SharedInstances(const SharedInstances&) = delete;
  SharedInstances& operator=(const SharedInstances&) = delete;

  /// The one T; made by its default constructor, which may be private to this class.
  template <typename T>
  [[nodiscard]] static std::shared_ptr<T> pointer() {
    return std::static_pointer_cast<T>(
        find(typeid(T), [] { return std::shared_ptr<void>(std::shared_ptr<T>(new T())); }));
  }
  template <typename T>
  [[nodiscard]] static T& of() {
    return *pointer<T>();
  }

 private:
  using Make = std::function<std::shared_ptr<void>()>;

  static std::shared_ptr<void> find(std::type_index type, const Make& make);
  [[nodiscard]] std::shared_ptr<void> takeLast();

  // Recursive, for one may ask for another while it is made.
  std::recursive_mutex mutex_;
  std::vector<std::pair<std::type_index, std::shared_ptr<void>>> instances_;
  bool isEnding_ = false;
};

}  // namespace veltramoor
