#pragma once

#include <filesystem>
#include <string>

namespace vintrace::test {

/// What a certificate says.
struct CertificateDesign {
  std::string commonName = "localhost";
  std::string alternativeNames = "DNS:localhost,IP:127.0.0.1";
  std::string usage = "serverAuth";
  int fromDay = -1;  ///< Days from now on which it begins and ends to be valid.
  int toDay = 1;
};

/// A certificate with its key, as files in PEM form.
struct Certificate {
  std::filesystem::path certificate;
  std::filesystem::path key;
};

/// An authority that signs certificates, made on the spot.
class Authority {
 public:
  /// Keeps everything in `folder`, under names that begin with `name`.
  Authority(std::filesystem::path folder, const std::string& name);

  const std::filesystem::path& Root() const { return root_.certificate; }

  Certificate Sign(const std::string& name, const CertificateDesign& design = {}) const;
  /// One that nobody but itself vouches for.
  Certificate SelfSigned(const std::string& name, const CertificateDesign& design = {}) const;

 private:
  std::filesystem::path folder_;
  Certificate root_;
};

}  // namespace vintrace::test
