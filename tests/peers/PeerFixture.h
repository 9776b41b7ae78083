#pragma once

#include <gtest/gtest.h>

#include <QSslConfiguration>

#include "peers/TlsServer.h"
#include "platform/net/qt/QtNetwork.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

inline const String Headers = "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n\r\n";

/// Tests with a real network that trusts `authority`.
class PeerTest : public testing::Test {
 protected:
  PeerTest() {
    static const auto before = QSslConfiguration::defaultConfiguration();
    auto configuration = before;
    configuration.addCaCertificates(QString::fromStdString(authority.Root()));
    QSslConfiguration::setDefaultConfiguration(configuration);
  }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", folder.Path().c_str()};
  const Authority authority{folder.Path(), "Root"};
  const Certificate valid = authority.Sign("valid");
  qt::QtNetwork network;
};

}  // namespace vintrace::test
