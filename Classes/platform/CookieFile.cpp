#include "platform/CookieFile.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <map>

#include "platform/CookieLine.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

using Lines = std::vector<std::string>;

std::map<std::string, std::string> byIdentity(const Lines& lines) {
  std::map<std::string, std::string> result;
  for (const std::string& line : lines) {
    if (const auto cookie = cookieOfLine(line)) {
      result[identityOf(*cookie)] = line;
    }
  }
  return result;
}

/// Whether a cookie that went because its time was over is there anew.
bool isRenewed(const std::string& known, const std::string& stored) {
  const auto cookie = cookieOfLine(known);
  return known != stored && cookie && isExpired(*cookie);
}

/// What was stored meanwhile, with the changes that lead from `known` to `lines`.
Lines merged(const Lines& stored, const Lines& known, const Lines& lines) {
  if (stored == known) {
    return lines;
  }
  const auto before = byIdentity(known);
  const auto now = byIdentity(lines);
  const auto there = byIdentity(stored);
  const auto isChanged = [&](const std::string& identity) {
    const auto old = before.find(identity);
    const auto current = now.find(identity);
    const bool isKnown = old != before.end();
    return current == now.end() ? isKnown : !isKnown || old->second != current->second;
  };
  Lines result;
  for (const std::string& line : stored) {
    const auto cookie = cookieOfLine(line);
    const std::string identity = cookie ? identityOf(*cookie) : std::string();
    const bool isOurs = cookie && isChanged(identity);
    if (const auto current = now.find(identity); isOurs && current != now.end()) {
      result.push_back(current->second);
    } else if (!isOurs || isRenewed(before.at(identity), line)) {
      result.push_back(line);
    }
  }
  for (const std::string& line : lines) {
    const std::string identity = identityOf(*cookieOfLine(line));
    if (!there.contains(identity) && isChanged(identity)) {
      result.push_back(line);
    }
  }
  return result;
}

Lines linesIn(SQLite::Database& database) {
  Lines lines;
  SQLite::Statement query(database, "SELECT line FROM cookies ORDER BY position");
  while (query.executeStep()) {
    lines.push_back(query.getColumn(0).getString());
  }
  return lines;
}

}  // namespace

CookieFile::CookieFile(const std::filesystem::path& stateFile) {
  try {
    OpenedStateFile opened = openStateFile(stateFile);
    lock_ = std::move(opened.lock);
    database_ = std::move(opened.database);
  } catch (const std::exception&) {
    // Preferences open the same file and tell the person, also of a damaged one set aside here.
  }
}

CookieFile::~CookieFile() = default;

std::vector<std::string> CookieFile::read() {
  try {
    return database_ != nullptr ? linesIn(*database_) : Lines();
  } catch (const SQLite::Exception&) {
    return {};
  }
}

bool CookieFile::write(const std::vector<std::string>& known,
                       const std::vector<std::string>& lines) {
  if (database_ == nullptr) {
    return false;
  }
  try {
    // Takes the write lock at once: a read lock could not be raised while the other process writes.
    SQLite::Transaction transaction(*database_, SQLite::TransactionBehavior::IMMEDIATE);
    const Lines all = merged(linesIn(*database_), known, lines);
    database_->exec("DELETE FROM cookies");
    SQLite::Statement insertion(*database_, "INSERT INTO cookies(position, line) VALUES(?, ?)");
    for (std::size_t i = 0; i < all.size(); ++i) {
      insertion.bind(1, static_cast<std::int64_t>(i));
      insertion.bind(2, all[i]);
      insertion.exec();
      insertion.reset();
    }
    transaction.commit();
    return true;
  } catch (const SQLite::Exception&) {
    return false;
  }
}

}  // namespace veltramoor
