#include "web/PageReach.h"

#include <QHostAddress>
#include <algorithm>
#include <array>

namespace veltramoor {
namespace {

// Loopback, private, shared by a carrier's customers, link-local, and "this host".
constexpr std::array kPrivateIpv4 = {"127.0.0.0/8",    "10.0.0.0/8",    "172.16.0.0/12",
                                     "192.168.0.0/16", "100.64.0.0/10", "169.254.0.0/16",
                                     "0.0.0.0/8"};
// Loopback and the unspecified address, unique local, link-local, and what site-local once was.
constexpr std::array kPrivateIpv6 = {"::1/128", "::/128", "fc00::/7", "fe80::/10", "fec0::/10"};
// Networks whose last four bytes are an IPv4 address: mapped, compatible, translated.
constexpr std::array kHoldsIpv4 = {"::ffff:0:0/96", "::/96", "64:ff9b::/96"};

template <std::size_t Count>
bool isIn(const QHostAddress& address, const std::array<const char*, Count>& networks) {
  return std::ranges::any_of(networks, [&](const char* network) {
    return address.isInSubnet(QHostAddress::parseSubnet(QLatin1String(network)));
  });
}

bool isPrivate(const QHostAddress& address) {
  if (address.protocol() == QAbstractSocket::IPv4Protocol) {
    return isIn(address, kPrivateIpv4);
  }
  if (isIn(address, kPrivateIpv6)) {
    return true;
  }
  const Q_IPV6ADDR bytes = address.toIPv6Address();
  const quint32 last = static_cast<quint32>(bytes[12]) << 24U |
                       static_cast<quint32>(bytes[13]) << 16U |
                       static_cast<quint32>(bytes[14]) << 8U | bytes[15];
  return isIn(address, kHoldsIpv4) && isIn(QHostAddress(last), kPrivateIpv4);
}

// A host in the one form that all its spellings have in common.
QString normal(QString host) {
  while (host.endsWith(QLatin1Char('.'))) {
    host.chop(1);
  }
  if (const QHostAddress address(host); !address.isNull()) {
    return address.toString();
  }
  return host.toLower();
}

// Names that every system takes for itself, whatever a name server says.
bool isLoopbackName(const QString& host) {
  static constexpr std::array kNames = {"localhost", "localhost.localdomain", "ip6-localhost",
                                        "ip6-loopback"};
  return host.endsWith(QLatin1String(".localhost")) ||
         std::ranges::any_of(kNames, [&](const char* name) { return host == QLatin1String(name); });
}

// Names that are given out in a home or an office and nowhere else (RFC 6762, RFC 8375, and what
// ICANN has set aside), and those without a dot, which only such a network completes.
bool isLocalName(const QString& host) {
  static constexpr std::array kDomains = {".local", ".lan", ".home", ".home.arpa", ".internal"};
  return (!host.contains(QLatin1Char('.')) && !host.contains(QLatin1Char(':'))) ||
         std::ranges::any_of(
             kDomains, [&](const char* domain) { return host.endsWith(QLatin1String(domain)); });
}

bool isEncrypted(const QUrl& url) {
  return url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("wss");
}

struct Place {
  QString host;
  // -1 without one.
  int port;
};

Place placeOf(const QString& written) {
  const QString text = written.trimmed();
  const QUrl url(QStringLiteral("http://") + text);
  // An IPv6 address that was typed without its brackets is no host of a URL.
  return url.isValid() && !url.host().isEmpty() ? Place{normal(url.host()), url.port()}
                                                : Place{normal(text), -1};
}

}  // namespace

bool mayReach(const QUrl& url, const PageReach& reach) {
  const QString scheme = url.scheme();
  if (!scheme.startsWith(QLatin1String("http")) && !scheme.startsWith(QLatin1String("ws"))) {
    return true;
  }
  const QString host = normal(url.host());
  const int usual = isEncrypted(url) ? 443 : 80;
  const bool isOwn = std::ranges::any_of(reach.own, [&](const QString& written) {
    const Place own = placeOf(written);
    return !own.host.isEmpty() && own.host == host &&
           url.port(usual) == (own.port < 0 ? usual : own.port);
  });
  if (isOwn || reach.nothingElse) {
    return isOwn;
  }
  const QHostAddress address(host);
  return !host.isEmpty() && host != placeOf(reach.refused).host && !isLoopbackName(host) &&
         (address.isNull() ? !isLocalName(host) : !isPrivate(address));
}

}  // namespace veltramoor
