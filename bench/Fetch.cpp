// Fetches pages over TLS from nginx on this machine, in turn with curl.

#include <QCoreApplication>
#include <QProcess>
#include <QSslConfiguration>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <stdexcept>
#include <vector>

#include "online/http/HTTPSecureSocket.h"
#include "peers/Servers.h"
#include "peers/TlsServer.h"
#include "platform/net/qt/QtNetwork.h"
#include "support/TemporaryFolder.h"

namespace vintrace::bench {
namespace {

using Seconds = std::chrono::duration<double>;
using http::HTTPSecureSocket;

constexpr std::int64_t Patience = 60;

/// The time that curl reports, from the host lookup to the last byte.
Seconds Curl(const QString& root, const QStringList& arguments) {
  QProcess process;
  process.start("curl", QStringList{"--silent", "--fail", "--noproxy", "*", "--http1.0", "--cacert",
                                    root, "--write-out", "%{stderr}%{time_total}"} +
                            arguments);
  if (!process.waitForFinished() || process.exitCode() != 0) throw std::runtime_error("curl fails");
  return Seconds(process.readAllStandardError().toDouble());
}

Seconds Timed(const std::function<bool()>& operation) {
  const auto begin = std::chrono::steady_clock::now();
  if (!operation()) throw std::runtime_error("a page is incomplete");
  return std::chrono::steady_clock::now() - begin;
}

Seconds Median(std::vector<Seconds> times) {
  std::ranges::sort(times);
  return times[times.size() / 2];
}

/// Runs both in turn, so that other load on the machine affects both.
void Compare(const char* name, int rounds, const std::function<bool()>& ours,
             const std::function<Seconds()>& curls) {
  std::vector<Seconds> our;
  std::vector<Seconds> their;
  for (int round = 0; round < rounds; ++round) {
    our.push_back(Timed(ours));
    their.push_back(curls());
  }
  const auto us = Median(our);
  const auto them = Median(their);
  std::printf("%-36s %8.2f ms   curl %8.2f ms   ratio %.2f\n", name, us.count() * 1000,
              them.count() * 1000, us / them);
}

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void Run() {
  const test::TemporaryFolder folder;
  const test::Authority authority(folder.Path(), "Root");
  const test::Certificate certificate = authority.Sign("localhost");
  const auto root = QString::fromStdString(authority.Root());
  auto configuration = QSslConfiguration::defaultConfiguration();
  configuration.addCaCertificates(root);
  QSslConfiguration::setDefaultConfiguration(configuration);
  const test::Server nginx(folder.Path(), certificate);
  qt::QtNetwork network;

  const String large = nginx.Tls13("/large");
  const auto largeUrl = QString::fromStdString(large);
  const FolderItem file = folder.Item("ours");
  const auto curlsFile = QString::fromStdString(folder.Path() / "curls");
  constexpr std::size_t Whole = 50 << 20;
  const auto toMemory = [&] {
    return HTTPSecureSocket(network).Get(large, Patience).size() == Whole;
  };
  const auto toFile = [&] { return HTTPSecureSocket(network).Get(large, file, Patience); };
  const auto curl = [&](const QStringList& output) {
    return [&, output] { return Curl(root, output + QStringList{largeUrl}); };
  };
  Compare("50 MB to a file", 15, toFile, curl({"--output", curlsFile}));
  Compare("50 MB to memory, curl through a pipe", 15, toMemory, curl({}));
  Compare("50 MB to memory, curl to /dev/null", 15, toMemory, curl({"--output", "/dev/null"}));

  const String echo = nginx.Tls13("/echo");
  const std::string form = "app%5Fid=3&ver=120&regi=Vintrace";
  Compare(
      "POST of three fields", 101,
      [&] {
        HTTPSecureSocket socket(network);
        socket.SetRequestContent(form, "application/x-www-form-urlencoded");
        return !socket.Post(echo, Patience).empty();
      },
      [&] {
        return Curl(root, {"--output", "/dev/null", "--data", QString::fromStdString(form),
                           QString::fromStdString(echo)});
      });

  test::TlsServer silent(certificate);
  silent.Expect({.pieces = {"late"}, .pause = std::chrono::seconds(10)});
  const double before = ProcessorSeconds();
  const auto waited = Timed([&] { return HTTPSecureSocket(network).Get(silent.URL(), 5).empty(); });
  std::printf("%-36s %8.2f %% of a core\n", "waiting for 5 s",
              100 * (ProcessorSeconds() - before) / waited.count());
}

}  // namespace
}  // namespace vintrace::bench

int main(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  try {
    vintrace::bench::Run();
    return 0;
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "fetch: %s\n", exception.what());
    return 1;
  }
}
