#pragma once

#include <openssl/types.h>

#include <filesystem>
#include <memory>
#include <string>

namespace vintrace::test {

/// The contents of a certificate; extensions in the syntax of OpenSSL.
struct CertificateDesign {
  std::string alternativeNames = "DNS:localhost,IP:127.0.0.1";
  std::string usage = "serverAuth";
  int toDay = 1;  ///< Expiry in days from now.
  std::string constraints = {};
};

/// The path of a PEM file with a certificate and its private key.
using Certificate = std::filesystem::path;

/// A new certificate authority.
class Authority {
 public:
  /// Writes the root certificate to the file `name` in `folder`. `Sign` writes its files there too.
  Authority(std::filesystem::path folder, std::string name);

  const Certificate& Root() const { return root_; }

  Certificate Sign(const std::string& name, const CertificateDesign& design = {}) const;

 private:
  const std::filesystem::path folder_;
  const std::string name_;
  const std::shared_ptr<EVP_PKEY> key_;
  const Certificate root_;
};

}  // namespace vintrace::test
