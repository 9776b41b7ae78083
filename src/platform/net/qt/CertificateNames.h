#pragma once

#include <QString>

class QSslCertificate;

namespace vintrace::qt {

/// True if a subject alternative name of `certificate` matches the host `name`, a DNS name or an
/// address (RFC 6125, section 6.4). The common name is ignored. A wildcard matches one whole label,
/// the leftmost of at least three.
bool HoldsFor(const QSslCertificate& certificate, const QString& name);

/// True if the DNS name `pattern` from a certificate matches `name`.
bool MatchesName(const QString& pattern, const QString& name);

}  // namespace vintrace::qt
