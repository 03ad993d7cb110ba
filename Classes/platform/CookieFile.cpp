#include "platform/CookieFile.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <map>
#include <stdexcept>

#include "platform/CookieLine.h"
#include "platform/StateAccess.h"
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
    // Preferences open the same file and tell the person of a damaged one that was set aside here.
    if (!opened.isPersistent || !opened.isWritable) {
      problem_ = std::move(opened.notice);
    }
    lock_ = std::move(opened.lock);
    database_ = std::move(opened.database);
    waitForNobody(*database_);
  } catch (const std::exception& error) {
    problem_ = error.what();
  }
}

CookieFile::~CookieFile() = default;

std::vector<std::string> CookieFile::read() {
  Lines lines;
  if (database_ != nullptr) {
    try {
      withPatience([&] { lines = linesIn(*database_); });
    } catch (const SQLite::Exception&) {
      return {};
    }
  }
  return lines;
}

void CookieFile::write(const std::vector<std::string>& known,
                       const std::vector<std::string>& lines) {
  if (database_ == nullptr) {
    throw std::runtime_error(problem_.value_or(""));
  }
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
}

}  // namespace veltramoor
