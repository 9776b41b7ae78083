#pragma once

#include <QString>

class QSslCertificate;

namespace vintrace::qt {

/// True when `certificate` is for the host `name`, a DNS name or an address: one of its subject
/// alternative names says so (RFC 6125, 6.4; the common name never counts). A wildcard stands for
/// the whole of the leftmost label of a name of three or more.
bool HoldsFor(const QSslCertificate& certificate, const QString& name);

/// True when the DNS name `pattern` of a certificate stands for `name`.
bool MatchesName(const QString& pattern, const QString& name);

}  // namespace vintrace::qt
