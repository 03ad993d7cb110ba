#include "platform/StateFile.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Util/PrintableLine.h"
#include "platform/Preferences.h"
#include "platform/RefusedWrites.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void write(const fs::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

unsigned modeOf(const fs::path& file) {
  struct stat status {};
  return stat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// Main files (not their journals) that were set aside in a folder.
std::vector<fs::path> setAsideIn(const fs::path& folder) {
  std::vector<fs::path> found;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.find(".corrupt-") != std::string::npos && !name.ends_with("-wal") &&
        !name.ends_with("-shm") && !name.ends_with("-journal")) {
      found.push_back(entry.path());
    }
  }
  return found;
}

void storeCookie(SQLite::Database& database, const std::string& line) {
  SQLite::Statement insertion(database, "INSERT INTO cookies (line) VALUES (?)");
  insertion.bind(1, line);
  insertion.exec();
}

std::string storedCookies(SQLite::Database& database) {
  return database.execAndGet("SELECT coalesce(group_concat(line), '') FROM cookies").getString();
}

/// A well-filled state file, as bytes.
std::string filledFile(const TemporaryFolder& folder) {
  const fs::path file = folder / "filled.sqlite";
  {
    const OpenedStateFile opened = openStateFile(file);
    for (int i = 0; i < 50; ++i) {
      storeCookie(*opened.database, std::string(1000, static_cast<char>('a' + i % 26)));
    }
  }
  return contentOf(file);
}

TEST(StateFile, IsPrivateWhateverTheMaskAndWhateverWasThere) {
  const TemporaryFolder folder;
  const fs::path file = folder / "new" / "folders" / "state.sqlite";
  const mode_t mask = umask(0);
  const OpenedStateFile opened = openStateFile(file);
  storeCookie(*opened.database, "one");
  umask(mask);
  EXPECT_FALSE(opened.notice);
  EXPECT_EQ(modeOf(file.parent_path()), 0700U);
  EXPECT_EQ(modeOf(file.parent_path().parent_path()), 0700U);
  std::size_t files = 0;
  for (const auto& entry : fs::directory_iterator(file.parent_path())) {
    EXPECT_EQ(modeOf(entry.path()), 0600U) << entry.path();
    ++files;
  }
  EXPECT_GE(files, 2U) << "the journal is there too while the file is open";

  // What an older file and its journals let others read is closed to them.
  const std::vector<std::string> suffixes = {"", "-wal", "-shm", "-journal"};
  write(file.string() + "-journal", "");
  for (const std::string& suffix : suffixes) {
    ASSERT_EQ(chmod((file.string() + suffix).c_str(), 0644), 0) << suffix;
  }
  const OpenedStateFile again = openStateFile(file);
  EXPECT_EQ(storedCookies(*again.database), "one");
  for (const std::string& suffix : suffixes) {
    EXPECT_EQ(modeOf(file.string() + suffix), 0600U) << suffix;
  }
}

// Closing a descriptor of a file drops the process's locks on it: opening a second time must not
// take the first connection's away. (Connections do not survive a fork, so the child begins
// before.)
TEST(StateFile, OpeningTwiceInOneProcessKeepsTheFirstOnesLocks) {
  const TemporaryFolder folder;
  const fs::path file = folder / "state.sqlite";
  test::Gate gate;
  const pid_t child = test::startChild([&] {
    gate.wait();
    // Were it alone, closing would fold the journal back and delete it.
    storeCookie(*openStateFile(file).database, "two");
    return true;
  });
  const OpenedStateFile first = openStateFile(file);
  storeCookie(*first.database, "one");
  { const OpenedStateFile second = openStateFile(file); }
  gate.open();
  EXPECT_TRUE(test::childSucceeded(child));
  EXPECT_TRUE(fs::exists(file.string() + "-wal"));
  EXPECT_EQ(storedCookies(*first.database), "one,two");
}

TEST(StateFile, ADamagedFileIsSetAsideWhole) {
  const TemporaryFolder folder;
  const std::string good = filledFile(folder);
  std::string flipped = good;
  for (std::size_t at = good.size() / 2; at < good.size() / 2 + 4096; ++at) {
    flipped[at] = static_cast<char>(~flipped[at]);
  }
  {
    SQLite::Database foreign((folder / "foreign.sqlite").string(),
                             SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    foreign.exec("CREATE TABLE notes (text TEXT); INSERT INTO notes VALUES ('mine')");
  }
  std::string foreign = contentOf(folder / "foreign.sqlite");
  std::vector<std::pair<std::string, std::string>> cases{
      {"text", "this is no database, and longer than a hundred bytes: " + std::string(200, '.')},
      {"short text", "x"},
      {"cut off", good.substr(0, good.size() / 2)},
      {"a page changed", flipped},
      {"another program's", foreign}};
  // Of our version, and yet not ours.
  for (const std::string change :
       {"DROP TABLE preferences", "DROP TABLE preference_elements", "DROP TABLE cookies",
        "ALTER TABLE cookies RENAME COLUMN line TO text",
        "PRAGMA writable_schema = ON; UPDATE sqlite_master SET name = 'a\xFF\x1B[31m\nb', sql = "
        "'x' "
        "WHERE name = 'cookies'"}) {
    const fs::path changed = folder / std::to_string(cases.size());
    openStateFile(changed).database->exec(change);
    cases.emplace_back(change, contentOf(changed));
  }
  for (const auto& [name, content] : cases) {
    const TemporaryFolder own;
    const fs::path file = own / "state.sqlite";
    // Twice within the same second: what was kept first must not be overwritten.
    for (std::size_t round = 1; round <= 2; ++round) {
      write(file, content);
      const OpenedStateFile opened = openStateFile(file);
      ASSERT_TRUE(opened.notice) << name;
      EXPECT_EQ(*opened.notice, printableLine(*opened.notice)) << "whatever was in it";
      EXPECT_EQ(storedCookies(*opened.database), "") << name;
      storeCookie(*opened.database, "new");
      const std::vector<fs::path> kept = setAsideIn(own.path());
      ASSERT_EQ(kept.size(), round) << name;
      EXPECT_TRUE(std::ranges::any_of(kept, [&](const fs::path& one) {
        return opened.notice->find(one.string()) != std::string::npos;
      })) << *opened.notice;
    }
    for (const fs::path& kept : setAsideIn(own.path())) {
      EXPECT_TRUE(contentOf(kept) == content) << name << ": kept byte for byte";
    }
  }
}

TEST(StateFile, ADamagedFileTakesItsJournalAlong) {
  const TemporaryFolder folder;
  const fs::path source = folder / "filled.sqlite";
  static_cast<void>(filledFile(folder));
  std::string damaged;
  std::string journal;
  {
    const OpenedStateFile opened = openStateFile(source);
    storeCookie(*opened.database, "only in the journal");
    damaged = contentOf(source).replace(0, 100, std::string(100, 'x'));
    journal = contentOf(source.string() + "-wal");
  }
  ASSERT_FALSE(journal.empty());
  const TemporaryFolder own;
  write(own / "state.sqlite", damaged);
  write(own / "state.sqlite-wal", journal);
  const OpenedStateFile opened = openStateFile(own / "state.sqlite");
  EXPECT_EQ(storedCookies(*opened.database), "");
  const std::vector<fs::path> kept = setAsideIn(own.path());
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_TRUE(contentOf(kept[0]) == damaged);
  EXPECT_TRUE(contentOf(kept[0].string() + "-wal") == journal);
}

TEST(StateFile, AnEmptyOrAbsentFileBesideAFullJournalIsSetAside) {
  for (const bool isAbsent : {false, true}) {
    const TemporaryFolder folder;
    const fs::path file = folder / "state.sqlite";
    const fs::path lost = folder / "lost" / "state.sqlite";
    {
      const OpenedStateFile opened = openStateFile(file);
      storeCookie(*opened.database, "only in the journal");
      fs::create_directory(lost.parent_path());
      fs::copy_file(file.string() + "-wal", lost.string() + "-wal");
    }
    if (!isAbsent) {
      write(lost, "");
    }
    const std::string journal = contentOf(lost.string() + "-wal");
    ASSERT_FALSE(journal.empty());
    const OpenedStateFile opened = openStateFile(lost);
    EXPECT_EQ(storedCookies(*opened.database), "");
    const std::vector<fs::path> kept = setAsideIn(lost.parent_path());
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_NE(opened.notice.value_or("").find(kept[0].string()), std::string::npos);
    EXPECT_TRUE(contentOf(kept[0].string() + "-wal") == journal);
  }
}

TEST(StateFile, ALockedFolderIsNotWaitedForWithoutEnd) {
  const TemporaryFolder folder;
  const fs::path file = folder / "state.sqlite";
  storeCookie(*openStateFile(file).database, "one");
  const int locked = open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(flock(locked, LOCK_EX), 0);
  {
    const OpenedStateFile opened = openStateFile(file);
    EXPECT_NE(opened.notice.value_or("").find("another program"), std::string::npos);
    EXPECT_EQ(storedCookies(*opened.database), "one");
  }
  close(locked);
  EXPECT_FALSE(openStateFile(file).notice);
}

// Its user would otherwise take the new file's journal for the old one's.
TEST(StateFile, ADamagedFileThatIsInUseStaysInPlace) {
  const TemporaryFolder folder;
  const fs::path file = folder / "state.sqlite";
  test::Gate gate;
  const pid_t child = test::startChild([&] {
    gate.wait();
    const OpenedStateFile opened = openStateFile(file);
    storeCookie(*opened.database, "new");
    return opened.notice && opened.notice->find("another program") != std::string::npos;
  });
  static_cast<void>(filledFile(folder));
  fs::rename(folder / "filled.sqlite", file);
  const OpenedStateFile user = openStateFile(file);
  std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(4096)
      << std::string(4096, 'x');
  gate.open();
  EXPECT_TRUE(test::childSucceeded(child));
  EXPECT_TRUE(setAsideIn(folder.path()).empty());
}

// Six at once, five rounds of each: enough for the steps of two to meet.
TEST(StateFile, ManyProcessesMayCreateOneFileAndSetOneAsideOnce) {
  for (int round = 0; round < 10; ++round) {
    const TemporaryFolder folder;
    const bool isDamaged = round % 2 == 0;
    const fs::path file = isDamaged ? folder / "state.sqlite" : folder / "sub" / "state.sqlite";
    if (isDamaged) {
      write(file, std::string(5000, 'x'));
    }
    test::Gate gate;
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i) {
      children.push_back(test::startChild([&] {
        gate.wait();
        const OpenedStateFile opened = openStateFile(file);
        storeCookie(*opened.database, "c");
        return isDamaged || !opened.notice;
      }));
    }
    gate.open();
    for (const pid_t child : children) {
      EXPECT_TRUE(test::childSucceeded(child));
    }
    EXPECT_EQ(setAsideIn(file.parent_path()).size(), isDamaged ? 1U : 0U);
    EXPECT_EQ(storedCookies(*openStateFile(file).database), "c,c,c,c,c,c");
  }
}

TEST(StateFile, ANewerSchemaIsRefusedAndLeftAlone) {
  const TemporaryFolder folder;
  const fs::path file = folder / "state.sqlite";
  {
    const OpenedStateFile opened = openStateFile(file);
    storeCookie(*opened.database, "kept");
    opened.database->exec("PRAGMA user_version = 99");
  }
  const std::string before = contentOf(file);
  try {
    static_cast<void>(openStateFile(file));
    FAIL() << "a newer file was opened";
  } catch (const StateFileError& error) {
    const std::string text = error.what();
    EXPECT_NE(text.find(file.string()), std::string::npos) << text;
    EXPECT_NE(text.find("newer version"), std::string::npos) << text;
  }
  EXPECT_EQ(contentOf(file), before);
  EXPECT_TRUE(setAsideIn(folder.path()).empty());
}

TEST(StateFile, WithoutAPlaceForAFileMemoryTakesItsPlace) {
  const TemporaryFolder folder;
  write(folder / "file", "no folder");
  fs::create_directory(folder / "folder");
  for (const fs::path& path :
       {folder / "file" / "state.sqlite", folder / "file" / "a" / "b.sqlite", folder / "folder"}) {
    const OpenedStateFile opened = openStateFile(path);
    ASSERT_TRUE(opened.notice) << path;
    EXPECT_NE(opened.notice->find(path.string()), std::string::npos) << *opened.notice;
    EXPECT_NE(opened.notice->find("until Veltramoor closes"), std::string::npos) << *opened.notice;
    EXPECT_FALSE(opened.isPersistent);
    storeCookie(*opened.database, "one");
    EXPECT_EQ(storedCookies(*opened.database), "one");
  }
  EXPECT_EQ(contentOf(folder / "file"), "no folder");
}

// Root may write everywhere, so the child becomes nobody first where it is root.
TEST(StateFile, AWriteProtectedFileIsReadAsItIs) {
  const TemporaryFolder folder;
  const fs::path home = folder / "home";
  const fs::path file = home / "state#1?%41.sqlite";
  storeCookie(*openStateFile(file).database, "kept");
  const fs::path damaged = home / "damaged.sqlite";
  write(damaged, std::string(500, 'x'));
  const bool isRoot = geteuid() == 0;
  constexpr uid_t kNobody = 65534;
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  for (const fs::path& path : {file, damaged, home}) {
    ASSERT_EQ(chmod(path.c_str(), path == home ? 0500 : 0400), 0);
    ASSERT_TRUE(!isRoot || chown(path.c_str(), kNobody, kNobody) == 0);
  }
  const auto inChild = [&](const std::function<bool()>& body) {
    return test::childSucceeded(test::startChild(
        [&] { return (!isRoot || setresuid(kNobody, kNobody, kNobody) == 0) && body(); }));
  };
  EXPECT_TRUE(inChild([&] {
    const OpenedStateFile opened = openStateFile(file);
    bool refused = false;
    try {
      storeCookie(*opened.database, "new");
    } catch (const SQLite::Exception&) {
      refused = true;
    }
    Preferences preferences(file);
    std::vector<std::string> told;
    RefusedWrites::setListener([&](const std::string& sentence) { told.push_back(sentence); });
    refused = refused && !preferences.setString("key", "a") && !preferences.setNumber("key", 1) &&
              told == std::vector{*opened.notice};
    return opened.notice && opened.notice->find("will not be kept") != std::string::npos &&
           storedCookies(*opened.database) == "kept" && refused;
  }));
  EXPECT_TRUE(inChild([&] {
    const OpenedStateFile opened = openStateFile(damaged);
    storeCookie(*opened.database, "new");
    return opened.notice && opened.notice->find("until Veltramoor closes") != std::string::npos;
  }));
  EXPECT_TRUE(setAsideIn(home).empty());
  ASSERT_EQ(chmod(home.c_str(), 0700), 0);
}

}  // namespace
}  // namespace veltramoor
