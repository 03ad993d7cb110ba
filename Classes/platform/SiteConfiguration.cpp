#include "platform/SiteConfiguration.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <toml++/toml.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <list>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "Util/Ascii.h"
#include "Util/PrintableLine.h"
#include "platform/AtomicFile.h"
#include "platform/Bundle.h"
#include "platform/Url.h"

namespace veltramoor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSiteHostKey = "site-host";
constexpr const char* kMagnetEntitiesKey = "magnet-entities";
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
    lines_.push_back(printableLine(fmt::format("{}:{}: {}", file_, where.line, what)));
  }
  void add(std::string_view what) {
    lines_.push_back(printableLine(fmt::format("{}: {}", file_, what)));
  }

  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::string file_;
  std::vector<std::string> lines_;
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

/// What may not be read: `what()` says why.
class UnfitFile : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// An open file; closed when it goes.
class OpenFile {
 public:
  /// Does not wait for the other end of a pipe.
  explicit OpenFile(const fs::path& file)
      : descriptor_(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}
  ~OpenFile() {
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

void require(bool done) {
  if (!done) {
    throw std::system_error(errno, std::generic_category());
  }
}

/// The file's text; empty for a missing file. Throws std::system_error and UnfitFile.
std::string readText(const fs::path& file) {
  const OpenFile opened(file);
  if (opened.descriptor() < 0 && (errno == ENOENT || errno == ENOTDIR)) {
    return {};
  }
  require(opened.descriptor() >= 0);
  struct stat status {};
  require(fstat(opened.descriptor(), &status) == 0);
  if (S_ISDIR(status.st_mode)) {
    throw std::system_error(std::make_error_code(std::errc::is_a_directory));
  }
  if (!S_ISREG(status.st_mode)) {
    throw UnfitFile("it is no ordinary file");
  }
  if (static_cast<std::size_t>(status.st_size) > SiteConfiguration::kLargestFile) {
    throw UnfitFile("it is larger than 1 MiB");
  }
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t size = 0;
  while (size < text.size()) {
    const ssize_t got = read(opened.descriptor(), text.data() + size, text.size() - size);
    require(got >= 0 || errno == EINTR);
    if (got == 0) {
      break;
    }
    size += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
  }
  text.resize(size);
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

bool SiteConfiguration::hasDonationPage() const {
  const std::optional<Url> url = Url::parse(donationUrl);
  return url && url->isHttp() && !("." + url->host()).ends_with(".example");
}

std::vector<std::pair<std::string, std::string SiteConfiguration::*>> SiteConfiguration::keys() {
  return {{std::string(kSiteHostKey), &SiteConfiguration::siteHost},
          {"default-site-host", &SiteConfiguration::defaultSiteHost},
          {"forum-host", &SiteConfiguration::forumHost},
          {"captcha-host", &SiteConfiguration::captchaHost},
          {"movie-database-host", &SiteConfiguration::movieDatabaseHost},
          {"sponsored-download-host", &SiteConfiguration::sponsoredDownloadHost},
          {"notice-host", &SiteConfiguration::noticeHost},
          {"donation-url", &SiteConfiguration::donationUrl},
          {kMagnetEntitiesKey, &SiteConfiguration::magnetEntities}};
}

SiteConfiguration SiteConfiguration::load(const fs::path& file,
                                          std::vector<std::string>* problems) {
  SiteConfiguration configuration;
  Problems found(file);
  try {
    apply(toml::parse(readText(file)), configuration, found);
  } catch (const toml::parse_error& error) {
    found.add(error.source().begin, error.description());
  } catch (const std::system_error& error) {
    found.add("cannot be read: " + error.code().message());
  } catch (const UnfitFile& error) {
    found.add(std::string("cannot be read: ") + error.what());
  }
  if (problems != nullptr) {
    problems->insert(problems->end(), found.lines().begin(), found.lines().end());
  }
  configuration.normalize();
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
  if (key == kMagnetEntitiesKey) {
    return value == "keep" || value == "decode" ? "" : "must be keep or decode";
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

std::string SiteConfiguration::normalizedHost(std::string_view host) {
  const std::size_t end = std::min(host.find('/'), host.size());
  std::string name = lowerCase(host.substr(0, end));
  const std::string withoutPort = hostWithoutPort(name);
  const std::string port = name.substr(withoutPort.size());
  const std::size_t significant = port.find_first_not_of(":0");
  if (port == ":" || (significant != port.npos && port.substr(significant) == "80")) {
    name = withoutPort;
  }
  return name.append(host.substr(end));
}

void SiteConfiguration::normalize() {
  for (std::string SiteConfiguration::*host :
       {&SiteConfiguration::siteHost, &SiteConfiguration::defaultSiteHost,
        &SiteConfiguration::forumHost, &SiteConfiguration::captchaHost,
        &SiteConfiguration::noticeHost}) {
    this->*host = normalizedHost(this->*host);
  }
}

const SiteConfiguration& SiteConfiguration::current() { return *configurations().inForce; }

void SiteConfiguration::setCurrent(SiteConfiguration configuration) {
  Configurations& kept = configurations();
  const std::lock_guard lock(kept.mutex);
  configuration.normalize();
  kept.all.push_back(std::move(configuration));
  kept.inForce = &kept.all.back();
}

}  // namespace veltramoor
