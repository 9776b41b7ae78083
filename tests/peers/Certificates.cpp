#include "peers/Certificates.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace vintrace::test {
namespace {

template <class Thing, void (*free)(Thing*)>
struct Free {
  void operator()(Thing* thing) const { free(thing); }
};
using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY, EVP_PKEY_free>>;
using X509Pointer = std::unique_ptr<X509, Free<X509, X509_free>>;

struct CloseFile {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const std::filesystem::path& path, const char* mode) {
  File file(std::fopen(path.c_str(), mode));
  if (!file) throw std::runtime_error("can't open " + path.native());
  return file;
}

X509Pointer Read(const std::filesystem::path& path) {
  return X509Pointer(PEM_read_X509(Open(path, "r").get(), nullptr, nullptr, nullptr));
}

Key ReadKey(const std::filesystem::path& path) {
  return Key(PEM_read_PrivateKey(Open(path, "r").get(), nullptr, nullptr, nullptr));
}

Certificate Write(const std::filesystem::path& path, X509* certificate, EVP_PKEY* key) {
  Certificate files{.certificate = path.native() + ".pem", .key = path.native() + ".key"};
  PEM_write_X509(Open(files.certificate, "w").get(), certificate);
  PEM_write_PrivateKey(Open(files.key, "w").get(), key, nullptr, nullptr, 0, nullptr, nullptr);
  return files;
}

void Extend(X509* certificate, int kind, const std::string& value) {
  if (value.empty()) return;
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
  X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str());
  if (extension == nullptr) throw std::runtime_error("can't extend by " + value);
  X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

X509Pointer Unsigned(const CertificateDesign& design, EVP_PKEY* key) {
  constexpr long SecondsADay = 86400;
  static long serial = 0;
  X509Pointer certificate(X509_new());
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), ++serial);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), design.fromDay * SecondsADay);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), design.toDay * SecondsADay);
  X509_set_pubkey(certificate.get(), key);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(design.commonName.c_str()), -1,
                             -1, 0);
  return certificate;
}

void Finish(X509* certificate, const X509* issuer, EVP_PKEY* issuersKey) {
  X509_set_issuer_name(certificate, X509_get_subject_name(issuer));
  if (X509_sign(certificate, issuersKey, EVP_sha256()) == 0) {
    throw std::runtime_error("can't sign");
  }
}

}  // namespace

Authority::Authority(std::filesystem::path folder, const std::string& name)
    : folder_(std::move(folder)) {
  const Key key(EVP_EC_gen("P-256"));
  const auto root = Unsigned({.commonName = name}, key.get());
  Extend(root.get(), NID_basic_constraints, "critical,CA:TRUE");
  Extend(root.get(), NID_key_usage, "critical,keyCertSign,cRLSign");
  Finish(root.get(), root.get(), key.get());
  root_ = Write(folder_ / name, root.get(), key.get());
}

Certificate Authority::Sign(const std::string& name, const CertificateDesign& design) const {
  const Key key(EVP_EC_gen("P-256"));
  const auto certificate = Unsigned(design, key.get());
  Extend(certificate.get(), NID_subject_alt_name, design.alternativeNames);
  Extend(certificate.get(), NID_ext_key_usage, design.usage);
  Finish(certificate.get(), Read(root_.certificate).get(), ReadKey(root_.key).get());
  return Write(folder_ / name, certificate.get(), key.get());
}

Certificate Authority::SelfSigned(const std::string& name, const CertificateDesign& design) const {
  const Key key(EVP_EC_gen("P-256"));
  const auto certificate = Unsigned(design, key.get());
  Extend(certificate.get(), NID_subject_alt_name, design.alternativeNames);
  Finish(certificate.get(), certificate.get(), key.get());
  return Write(folder_ / name, certificate.get(), key.get());
}

}  // namespace vintrace::test
