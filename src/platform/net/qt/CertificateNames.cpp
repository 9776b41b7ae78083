#include "platform/net/qt/CertificateNames.h"

#include <QHostAddress>
#include <QSslCertificate>
#include <QUrl>
#include <algorithm>

namespace vintrace::qt {
namespace {

/// The name in the form for comparison: ASCII in lower case, without a final dot.
QString Ascii(const QString& name) {
  QString ascii = QString::fromLatin1(QUrl::toAce(name)).toLower();
  if (ascii.endsWith('.')) ascii.chop(1);
  return ascii;
}

}  // namespace

bool MatchesName(const QString& pattern, const QString& name) {
  const QString host = Ascii(name);
  const bool isAscii =
      std::ranges::all_of(pattern, [](QChar each) { return each.unicode() < 0x80; });
  if (host.isEmpty() || !isAscii) return false;
  if (!pattern.startsWith(QLatin1String("*."))) return Ascii(pattern) == host;
  const QString domain = Ascii(pattern.mid(2));
  const auto dot = host.indexOf('.');
  return dot > 0 && domain.contains('.') && host.mid(dot + 1) == domain;
}

bool HoldsFor(const QSslCertificate& certificate, const QString& name) {
  const auto names = certificate.subjectAlternativeNames();
  const QHostAddress address(name);
  if (!address.isNull()) {
    const auto addresses = names.values(QSsl::IpAddressEntry);
    return std::ranges::any_of(addresses,
                               [&](const QString& each) { return QHostAddress(each) == address; });
  }
  const auto patterns = names.values(QSsl::DnsEntry);
  return std::ranges::any_of(patterns,
                             [&](const QString& each) { return MatchesName(each, name); });
}

}  // namespace vintrace::qt
