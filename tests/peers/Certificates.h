#pragma once

#include <openssl/types.h>

#include <filesystem>
#include <memory>
#include <string>

namespace vintrace::test {

/// What a certificate says.
struct CertificateDesign {
  std::string alternativeNames = "DNS:localhost,IP:127.0.0.1";
  std::string usage = "serverAuth";
  int toDay = 1;  ///< How many days from now its validity ends.
  std::string constraints = {};
};

/// A file in PEM form, with a certificate and its key.
using Certificate = std::filesystem::path;

/// An authority that signs certificates, made on the spot.
class Authority {
 public:
  /// Keeps everything in `folder`, under names that begin with `name`.
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
