#include "platform/Preferences.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <mutex>

#include "platform/RefusedWrites.h"
#include "platform/StateAccess.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

constexpr const char* kString = "string";
constexpr const char* kNumber = "number";
constexpr const char* kArray = "array";

using Strings = std::vector<std::string>;

/// Where `value` is: at `index`, else as near to it as can be. What others remove or drop stands
/// before it as a rule, so that of two at one distance it is the earlier.
std::optional<std::size_t> indexNearest(const Strings& elements, std::size_t index,
                                        const std::string& value) {
  const auto distance = [index](std::size_t i) { return i < index ? index - i : i - index; };
  std::optional<std::size_t> nearest;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (elements[i] == value && (!nearest || distance(i) < distance(*nearest))) {
      nearest = i;
    }
  }
  return nearest;
}

/// Without the oldest elements over `maximum`.
Strings newest(Strings elements, std::size_t maximum) {
  const auto excess = elements.size() - std::min(maximum, elements.size());
  elements.erase(elements.begin(), elements.begin() + static_cast<std::ptrdiff_t>(excess));
  return elements;
}

/// Ends a statement's read when the scope ends: an unfinished one would keep the write-ahead file
/// from being folded back.
class ScopedStatement {
 public:
  explicit ScopedStatement(SQLite::Statement& statement) : statement_(statement) {}
  ~ScopedStatement() { statement_.tryReset(); }
  ScopedStatement(const ScopedStatement&) = delete;
  ScopedStatement& operator=(const ScopedStatement&) = delete;

  template <typename... Values>
  SQLite::Statement& with(const Values&... values) {
    int index = 0;
    (statement_.bind(++index, values), ...);
    return statement_;
  }

 private:
  SQLite::Statement& statement_;
};

std::atomic<Preferences*> chosenInstance{nullptr};

}  // namespace

class Preferences::Impl {
 public:
  explicit Impl(OpenedStateFile opened)
      : lock_(std::move(opened.lock)),
        database_(std::move(opened.database)),
        notice_(std::move(opened.notice)),
        isPersistent_(opened.isPersistent),
        isWritable_(opened.isWritable) {
    waitForNobody(*database_);
  }

  std::optional<std::string> value(std::string_view key, const char* type) {
    return guarded<std::optional<std::string>>([&] { return storedValue(key, type); });
  }

  std::optional<Strings> elements(std::string_view key) {
    return guarded<std::optional<Strings>>([&] { return storedElements(key); });
  }

  bool setValue(std::string_view key, const char* type, const std::string& value) {
    return write(
        [&] { return storedValue(key, type) == value; },
        [&] {
          ScopedStatement(deleteElements_).with(std::string(key)).exec();
          ScopedStatement(replaceValue_).with(std::string(key), std::string(type), value).exec();
        });
  }

  bool setElements(std::string_view key, const Strings& elements) {
    return write([&] { return storedElements(key) == elements; }, [&] { store(key, elements); });
  }

  bool appendElement(std::string_view key, const std::string& value, std::size_t maximum,
                     Refusal refusal) {
    return write([] { return false; },
                 [&] {
                   Strings elements = storedElements(key).value_or(Strings());
                   elements.push_back(value);
                   store(key, newest(std::move(elements), maximum));
                 },
                 refusal);
  }

  bool insertElement(std::string_view key, const ArrayPlace& place, const std::string& value,
                     std::size_t maximum) {
    return write([] { return false; },
                 [&] {
                   Strings elements = storedElements(key).value_or(Strings());
                   const auto at = static_cast<std::ptrdiff_t>(place.in(elements));
                   elements.insert(elements.begin() + at, value);
                   store(key, newest(std::move(elements), maximum));
                 });
  }

  bool removeElement(std::string_view key, std::size_t index, const std::string& value) {
    const auto find = [&] {
      return indexNearest(storedElements(key).value_or(Strings()), index, value);
    };
    return write([&] { return !find(); },
                 [&] {
                   Strings elements = storedElements(key).value_or(Strings());
                   elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(*find()));
                   store(key, elements);
                 });
  }

  bool isPersistent() const { return isPersistent_; }

  std::optional<std::string> openingNotice() const { return notice_; }

  std::optional<std::string> lastProblem() {
    const std::lock_guard lock(mutex_);
    return writeProblem_ ? writeProblem_ : notice_;
  }

  std::uint64_t writeCount() {
    const std::lock_guard lock(mutex_);
    return writeCount_;
  }

 private:
  std::optional<std::string> storedValue(std::string_view key, const char* type) {
    ScopedStatement use(selectValue_);
    SQLite::Statement& row = use.with(std::string(key), std::string(type));
    return row.executeStep() ? std::optional(row.getColumn(0).getString()) : std::nullopt;
  }

  /// One statement, so that another process's write cannot come between the key and its elements.
  std::optional<Strings> storedElements(std::string_view key) {
    ScopedStatement use(selectElements_);
    SQLite::Statement& row = use.with(std::string(key));
    std::optional<Strings> elements;
    while (row.executeStep()) {
      elements = elements ? std::move(elements) : Strings();
      if (const SQLite::Column element = row.getColumn(0); !element.isNull()) {
        elements->push_back(element.getString());
      }
    }
    return elements;
  }

  void store(std::string_view key, const Strings& elements) {
    const std::string name(key);
    ScopedStatement(deleteElements_).with(name).exec();
    ScopedStatement(replaceValue_).with(name, std::string(kArray), std::string()).exec();
    for (std::size_t i = 0; i < elements.size(); ++i) {
      ScopedStatement(insertElement_).with(name, static_cast<std::int64_t>(i), elements[i]).exec();
    }
  }

  /// A file that fails to be read has no value to give.
  template <typename Result>
  Result guarded(const std::function<Result()>& read) {
    Result result;
    try {
      withPatience([&] {
        const std::lock_guard lock(mutex_);
        result = read();
      });
    } catch (const SQLite::Exception& error) {
      const std::lock_guard lock(mutex_);
      writeProblem_ = fmt::format("The settings could not be read: {}.", refusalWords(error));
    }
    return result;
  }

  bool write(const std::function<bool()>& isStored, const std::function<void()>& change,
             Refusal refusal = Refusal::Reported) {
    bool isWritten = false;
    try {
      withPatience([&] {
        const std::lock_guard lock(mutex_);
        if (!isStored()) {
          SQLite::Transaction transaction(*database_, SQLite::TransactionBehavior::IMMEDIATE);
          // Another process may have written the same while this one waited for its turn.
          if (!isStored()) {
            change();
            transaction.commit();
            ++writeCount_;
            isWritten = true;
          }
        }
        writeProblem_.reset();
      });
    } catch (const std::exception& error) {
      const std::string reason = isWritable_ ? refusalWords(error) : notice_.value_or("");
      const std::string sentence =
          isWritable_ ? fmt::format("The change could not be saved: {}.", reason) : reason;
      {
        const std::lock_guard lock(mutex_);
        writeProblem_ = sentence;
      }
      if (refusal == Refusal::Reported) {
        RefusedWrites::report(reason, sentence);
      }
      return false;
    }
    if (isWritten) {
      reportWritten();
    }
    return true;
  }

  void reportWritten() {
    if (isPersistent_) {
      RefusedWrites::succeeded();
    } else if (notice_ && !saysItIsInMemory_.exchange(true)) {
      RefusedWrites::report(*notice_, *notice_);
    }
  }

  std::mutex mutex_;
  std::unique_ptr<StateFolderLock> lock_;
  std::unique_ptr<SQLite::Database> database_;
  const std::optional<std::string> notice_;
  const bool isPersistent_;
  const bool isWritable_;
  std::atomic<bool> saysItIsInMemory_ = false;
  std::optional<std::string> writeProblem_;
  std::uint64_t writeCount_ = 0;
  SQLite::Statement selectValue_{*database_,
                                 "SELECT value FROM preferences WHERE key = ? AND type = ?"};
  SQLite::Statement selectElements_{
      *database_,
      "SELECT e.value FROM preferences p LEFT JOIN preference_elements e ON e.key = p.key "
      "WHERE p.key = ? AND p.type = 'array' ORDER BY e.position"};
  SQLite::Statement replaceValue_{
      *database_, "INSERT OR REPLACE INTO preferences (key, type, value) VALUES (?, ?, ?)"};
  SQLite::Statement deleteElements_{*database_, "DELETE FROM preference_elements WHERE key = ?"};
  SQLite::Statement insertElement_{
      *database_, "INSERT INTO preference_elements (key, position, value) VALUES (?, ?, ?)"};
};

Preferences::Preferences(const std::optional<std::filesystem::path>& stateFile)
    : impl_(std::make_unique<Impl>(openStateFile(stateFile))) {}

Preferences::~Preferences() = default;

Preferences& Preferences::sharedInstance() {
  if (Preferences* chosen = chosenInstance.load(); chosen != nullptr) {
    return *chosen;
  }
  static Preferences standard(defaultStateFile());
  return standard;
}

void Preferences::setSharedInstance(Preferences* preferences) { chosenInstance = preferences; }

std::optional<std::string> Preferences::string(std::string_view key) const {
  return impl_->value(key, kString);
}

std::optional<Strings> Preferences::array(std::string_view key) const {
  return impl_->elements(key);
}

std::optional<std::int64_t> Preferences::number(std::string_view key) const {
  const std::optional<std::string> digits = impl_->value(key, kNumber);
  return digits ? std::optional<std::int64_t>(std::strtoll(digits->c_str(), nullptr, 10))
                : std::nullopt;
}

bool Preferences::setString(std::string_view key, std::string_view value) {
  return impl_->setValue(key, kString, std::string(value));
}

bool Preferences::setArray(std::string_view key, const std::vector<std::string>& value) {
  return impl_->setElements(key, value);
}

bool Preferences::setNumber(std::string_view key, std::int64_t value) {
  return impl_->setValue(key, kNumber, std::to_string(value));
}

bool Preferences::appendToArray(std::string_view key, const std::string& value, std::size_t maximum,
                                Refusal refusal) {
  return impl_->appendElement(key, value, maximum, refusal);
}

bool Preferences::removeFromArray(std::string_view key, std::size_t index,
                                  const std::string& value) {
  return impl_->removeElement(key, index, value);
}

bool Preferences::insertIntoArray(std::string_view key, const ArrayPlace& place,
                                  const std::string& value, std::size_t maximum) {
  return impl_->insertElement(key, place, value, maximum);
}

bool Preferences::isPersistent() const { return impl_->isPersistent(); }

std::optional<std::string> Preferences::openingNotice() const { return impl_->openingNotice(); }

std::optional<std::string> Preferences::lastProblem() const { return impl_->lastProblem(); }

std::uint64_t Preferences::writeCount() const { return impl_->writeCount(); }

}  // namespace veltramoor
