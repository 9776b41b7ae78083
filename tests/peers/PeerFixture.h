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
 protected:
  void SetUp() override {
    auto configuration = before;
    configuration.addCaCertificates(QString::fromStdString(authority.Root()));
    QSslConfiguration::setDefaultConfiguration(configuration);
  }
  void TearDown() override { QSslConfiguration::setDefaultConfiguration(before); }

  const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
  const TemporaryFolder folder;
  const Authority authority{folder.Path(), "Root"};
  const Certificate valid = authority.Sign("valid");
  qt::QtNetwork network;
};

}  // namespace vintrace::test
