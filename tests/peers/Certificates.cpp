#include "peers/Certificates.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <utility>

namespace vintrace::test {
namespace {

using Key = std::shared_ptr<EVP_PKEY>;

Key NewKey() { return {EVP_EC_gen("P-256"), EVP_PKEY_free}; }

void SetName(X509_NAME* name, const std::string& text) {
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(text.c_str()), -1, -1, 0);
}

void Extend(X509* certificate, int kind, const std::string& value) {
  if (value.empty()) return;
  X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str());
  X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

Certificate Make(const std::filesystem::path& path, const std::string& subject,
                 const CertificateDesign& design, const Key& key, const std::string& issuer,
                 const Key& issuersKey) {
  const std::shared_ptr<X509> owned(X509_new(), X509_free);
  X509* certificate = owned.get();
  X509_set_version(certificate, X509_VERSION_3);
  X509_time_adj_ex(X509_getm_notBefore(certificate), -10, 0, nullptr);
  X509_time_adj_ex(X509_getm_notAfter(certificate), design.toDay, 0, nullptr);
  X509_set_pubkey(certificate, key.get());
  SetName(X509_get_subject_name(certificate), subject);
  SetName(X509_get_issuer_name(certificate), issuer);
  Extend(certificate, NID_basic_constraints, design.constraints);
  Extend(certificate, NID_subject_alt_name, design.alternativeNames);
  Extend(certificate, NID_ext_key_usage, design.usage);
  X509_sign(certificate, issuersKey.get(), EVP_sha256());
  const std::shared_ptr<BIO> file(BIO_new_file(path.c_str(), "w"), BIO_free);
  PEM_write_bio_X509(file.get(), certificate);
  PEM_write_bio_PrivateKey(file.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  return path;
}

}  // namespace

Authority::Authority(std::filesystem::path folder, std::string name)
    : folder_(std::move(folder)),
      name_(std::move(name)),
      key_(NewKey()),
      root_(Make(folder_ / name_, name_, {"", "", 1, "critical,CA:TRUE"}, key_, name_, key_)) {}

Certificate Authority::Sign(const std::string& name, const CertificateDesign& design) const {
  return Make(folder_ / name, "localhost", design, NewKey(), name_, key_);
}

}  // namespace vintrace::test
