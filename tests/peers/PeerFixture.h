#pragma once

#include <gtest/gtest.h>

#include <QSslConfiguration>

#include "online/HTTPSecureSocket.h"
#include "peers/Certificates.h"
#include "platform/qt/QtNetwork.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {

using online::HTTPSecureSocket;

constexpr std::int64_t Patience = 15;  // Seconds; what is awaited comes within one.

/// A network whose root authority is trusted.
class PeerTest : public testing::Test {
 public:
  PeerTest(const PeerTest&) = delete;
  PeerTest& operator=(const PeerTest&) = delete;

 protected:
  PeerTest() {
    auto configuration = before_;
    configuration.addCaCertificates(QString::fromStdString(authority.Root()));
    QSslConfiguration::setDefaultConfiguration(configuration);
  }
  ~PeerTest() override { QSslConfiguration::setDefaultConfiguration(before_); }

 private:
  const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();

 protected:
  const TemporaryFolder folder;
  const Authority authority{folder.Path(), "Root"};
  const Certificate valid = authority.Sign("valid");
  qt::QtNetwork network;
};

}  // namespace vintrace::test
