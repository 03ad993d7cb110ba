#include "platform/SiteConfiguration.h"

#include <fmt/format.h>
#include <toml++/toml.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <list>
#include <mutex>
#include <string_view>
#include <system_error>

#include "platform/AtomicFile.h"
#include "platform/Bundle.h"
#include "platform/Url.h"

namespace veltramoor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSiteHostKey = "site-host";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Workers may still read a configuration that was replaced, so none is ever destroyed: there are as
// many as a person chooses sites in one run.
struct Configurations {
  std::mutex mutex;
  std::list<SiteConfiguration> all{SiteConfiguration{}};
  std::atomic<const SiteConfiguration*> inForce{&all.back()};
};

Configurations& configurations() {
  static Configurations instance;
  return instance;
}

/// A host, with or without a port, and nothing else.
bool isHost(const std::string& text) {
  if (text.find_first_of("/?#@") != std::string::npos) {
    return false;
  }
  const std::optional<Url> url = Url::parse("http://" + text + "/");
  return url && !url->host().empty();
}

std::string SiteConfiguration::*fieldOf(std::string_view key) {
  for (const auto& [name, field] : SiteConfiguration::keys()) {
    if (name == key) {
      return field;
    }
  }
  return nullptr;
}

/// Collects what is wrong with a file, one line each.
class Problems {
 public:
  explicit Problems(const fs::path& file) : file_(file.string()) {}

  void add(const toml::source_position& where, std::string_view what) {
    append(fmt::format("{}:{}: {}", file_, where.line, what));
  }
  void add(std::string_view what) { append(fmt::format("{}: {}", file_, what)); }

  [[nodiscard]] std::optional<std::string> text() const {
    return text_.empty() ? std::nullopt : std::optional(text_);
  }

 private:
  void append(const std::string& line) { text_.append(text_.empty() ? "" : "\n").append(line); }

  std::string file_;
  std::string text_;
};

void apply(const toml::table& table, SiteConfiguration& configuration, Problems& problems) {
  for (const auto& [key, node] : table) {
    const auto field = fieldOf(key.str());
    const std::optional<std::string> value = node.value_exact<std::string>();
    if (field == nullptr) {
      problems.add(key.source().begin, fmt::format("\"{}\" is no setting", key.str()));
    } else if (!value) {
      problems.add(node.source().begin, fmt::format("\"{}\" must be a text in quotes", key.str()));
    } else if (const auto wrong = SiteConfiguration::validationError(key.str(), *value);
               !wrong.empty()) {
      problems.add(node.source().begin, fmt::format("\"{}\" {}", key.str(), wrong));
    } else {
      configuration.*field = *value;
    }
  }
}

/// The file's text; empty for a missing file. Throws std::system_error.
std::string readText(const fs::path& file) {
  if (!fs::exists(file)) {
    return {};
  }
  if (fs::is_directory(file)) {
    throw std::system_error(std::make_error_code(std::errc::is_a_directory));
  }
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  if (!stream.is_open() || stream.bad()) {
    throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  }
  return text;
}

/// Index in `text` of a position as toml++ counts it: lines and columns from 1, columns in
/// characters.
std::size_t indexOf(std::string_view text, const toml::source_position& position) {
  std::size_t index = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  for (toml::source_index line = 1; line < position.line; ++line) {
    index = std::min(text.find('\n', index), text.size() - 1) + 1;
  }
  for (toml::source_index column = 1; column < position.column && index < text.size(); ++column) {
    do {
      ++index;
    } while (index < text.size() && (static_cast<unsigned char>(text[index]) & 0xC0U) == 0x80U);
  }
  return index;
}

/// Where a top-level key may be added: before the first table, else at the end.
std::size_t endOfTopLevel(std::string_view text, const toml::table& table) {
  std::size_t end = text.size();
  for (const auto& [key, node] : table) {
    if (node.is_table() || node.is_array_of_tables()) {
      const toml::source_position first = std::min(key.source().begin, node.source().begin);
      end = std::min(end, indexOf(text, {first.line, 1}));
    }
  }
  return end;
}

std::string withSiteHost(std::string text, const std::string& siteHost) {
  const toml::table table = toml::parse(text);
  const std::string value = "\"" + siteHost + "\"";
  if (const toml::node* present = table.get(kSiteHostKey); present != nullptr) {
    const std::size_t begin = indexOf(text, present->source().begin);
    return text.replace(begin, indexOf(text, present->source().end) - begin, value);
  }
  const std::size_t at = endOfTopLevel(text, table);
  const bool endsLine = at == 0 || text[at - 1] == '\n';
  return text.insert(at, fmt::format("{}{} = {}\n", endsLine ? "" : "\n", kSiteHostKey, value));
}

}  // namespace

std::string SiteConfiguration::siteAddress(std::string_view path) const {
  return ("http://" + siteHost).append(path);
}

std::optional<Url> SiteConfiguration::siteUrl(std::string_view path) const {
  return Url::parse(siteAddress(path));
}

std::string SiteConfiguration::hostWithoutPort(const std::string& host) {
  const std::size_t colon = host.rfind(':');
  const std::size_t bracket = host.rfind(']');
  const bool isPort = colon != std::string::npos &&
                      (bracket == std::string::npos ? host.find(':') == colon : bracket < colon);
  return isPort ? host.substr(0, colon) : host;
}

std::vector<std::pair<std::string, std::string SiteConfiguration::*>> SiteConfiguration::keys() {
  return {{std::string(kSiteHostKey), &SiteConfiguration::siteHost},
          {"default-site-host", &SiteConfiguration::defaultSiteHost},
          {"forum-host", &SiteConfiguration::forumHost},
          {"captcha-host", &SiteConfiguration::captchaHost},
          {"movie-database-host", &SiteConfiguration::movieDatabaseHost},
          {"sponsored-download-host", &SiteConfiguration::sponsoredDownloadHost},
          {"notice-host", &SiteConfiguration::noticeHost},
          {"donation-url", &SiteConfiguration::donationUrl}};
}

SiteConfiguration SiteConfiguration::load(const fs::path& file,
                                          std::optional<std::string>* problem) {
  SiteConfiguration configuration;
  Problems problems(file);
  try {
    apply(toml::parse(readText(file)), configuration, problems);
  } catch (const toml::parse_error& error) {
    problems.add(error.source().begin, error.description());
  } catch (const std::system_error& error) {
    problems.add("cannot be read: " + error.code().message());
  }
  if (problem != nullptr) {
    *problem = problems.text();
  }
  return configuration;
}

fs::path SiteConfiguration::defaultFile() {
  return Bundle::configurationFolder() / "veltramoor.toml";
}

bool SiteConfiguration::saveSiteHost(const fs::path& file, const std::string& siteHost) {
  if (!validationError(kSiteHostKey, siteHost).empty()) {
    return false;
  }
  try {
    const std::string text = withSiteHost(readText(file), siteHost);
    // A file edited as text is only believed when it reads back as meant.
    if (toml::parse(text)[kSiteHostKey].value_exact<std::string>() != siteHost) {
      return false;
    }
    replaceFile(file, text);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

std::string_view SiteConfiguration::validationError(std::string_view key,
                                                    const std::string& value) {
  if (key == "donation-url") {
    const std::optional<Url> url = Url::parse(value);
    return url && url->isHttp() ? "" : "must be an address that begins with http:// or https://";
  }
  // The one that may be a folder of another site: it only ever begins addresses.
  const std::string host = key == "forum-host" && value.find("//") == value.npos
                               ? value.substr(0, value.find('/'))
                               : value;
  if ((key == kSiteHostKey && value.empty()) ||
      (isHost(host) && Url::parse("http://" + value + "/"))) {
    return "";
  }
  return "must be a host name, with a port if need be, without http:// and without a path";
}

bool SiteConfiguration::isHost(const std::string& text) { return veltramoor::isHost(text); }

const SiteConfiguration& SiteConfiguration::current() { return *configurations().inForce; }

void SiteConfiguration::setCurrent(SiteConfiguration configuration) {
  Configurations& kept = configurations();
  const std::lock_guard lock(kept.mutex);
  kept.all.push_back(std::move(configuration));
  kept.inForce = &kept.all.back();
}

}  // namespace veltramoor
