#include "peers/Servers.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <csignal>
#include <fstream>
#include <stdexcept>

#include "online/Authentication.h"
#include "platform/qt/QtNetwork.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 15'000;  // Milliseconds.

std::string Listen(std::uint16_t port) { return "127.0.0.1:" + std::to_string(port); }

/// What a Digest's password file has for user:secret.
std::string DigestLine(const std::string& realm) {
  const std::string secret = "user:" + realm + ":secret";
  return "user:" + realm + ':' + online::EncodeHex(qt::QtNetwork().MD5(secret)) + '\n';
}

bool Listens(std::uint16_t port) {
  QTcpSocket socket;
  socket.connectToHost(QHostAddress::LocalHost, port);
  return socket.waitForConnected(100);
}

/// For the servers that don't run as the superuser.
const char* UserLines() { return geteuid() == 0 ? "User www-data\nGroup www-data\n" : ""; }

}  // namespace

std::uint16_t FreePort() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return server.serverPort();
}

Server::Server(const QString& program, const QStringList& arguments, std::uint16_t port) {
  process_.setProcessChannelMode(QProcess::ForwardedChannels);
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(program, arguments);
  if (!process_.waitForStarted(Patience)) {
    throw std::runtime_error("can't start " + program.toStdString());
  }
  for (int turns = 0; !Listens(port); ++turns) {
    if (turns > 1000 || process_.waitForFinished(10)) {
      throw std::runtime_error(program.toStdString() + " doesn't listen");
    }
  }
}

Server::~Server() {
  process_.terminate();
  if (!process_.waitForFinished(Patience)) process_.kill();
}

ServerFolder::ServerFolder(const fs::path& folder, const std::string& name) : path_(folder / name) {
  fs::create_directory(path_);
  fs::permissions(folder, fs::perms(0755));
  fs::permissions(path_, fs::perms(0777));
}

fs::path ServerFolder::File(const std::string& name, const std::string& content) const {
  std::ofstream(path_ / name) << content;
  return path_ / name;
}

Nginx::Nginx(const fs::path& folder, const Certificate& certificate)
    : folder_(folder, "nginx"),
      server_("/usr/sbin/nginx",
              {"-p", folder_.Path().c_str(), "-e", "errors", "-c",
               folder_.File("nginx.conf", Configuration(certificate)).c_str()},
              plain_) {
  folder_.File("page", "a page");
  fs::resize_file(folder_.File("large", ""), 50 << 20);
  folder_.File("slow", std::string(4000, 'x'));
}

std::string Nginx::Configuration(const Certificate& certificate) const {
  folder_.File("passwords", "user:{PLAIN}secret\n");
  folder_.File("pages",
               "location /basic { auth_basic nginx; auth_basic_user_file passwords;"
               " try_files /page =404; }\n"
               "location /closed { ssi on; ssi_types *; try_files /page =404; }\n"
               "location /slow { limit_rate 1k; }\n"
               "location /moved { return 301 /page; }\n"
               "location /broken { return 500 broken; }\n"
               "location /echo { proxy_pass http://" +
                   Listen(plain_) +
                   "/said;"
                   " proxy_set_header X-Body $request_body; }\n"
                   "location /said { return 200 \"$http_content_type|$http_x|$http_x_body\"; }\n");
  return "daemon off; master_process off; pid pid; events {}\n"
         "http { access_log off; root .; client_body_temp_path body; proxy_temp_path proxy;\n"
         "fastcgi_temp_path f; uwsgi_temp_path u; scgi_temp_path s; default_type text/plain;\n"
         "ssl_certificate " +
         certificate.certificate.native() + "; ssl_certificate_key " + certificate.key.native() +
         ";\n"
         "server { listen " +
         Listen(tls12_) +
         " ssl; ssl_protocols TLSv1.2; include pages; }\n"
         "server { listen " +
         Listen(tls13_) +
         " ssl; ssl_protocols TLSv1.3; include pages; }\n"
         "server { listen " +
         Listen(plain_) + "; include pages; } }\n";
}

Apache::Apache(const fs::path& folder, const Certificate& certificate)
    : folder_(folder, "apache"),
      server_("/usr/sbin/apache2",
              {"-X", "-f", folder_.File("apache.conf", Configuration(certificate)).c_str()},
              port_) {}

std::string Apache::Configuration(const Certificate& certificate) const {
  const std::string path = folder_.Path().native();
  folder_.File("page", "a page");
  // The password is "secret".
  folder_.File("basic", "user:$1$abcdefgh$cHJi5PXp/ki/ktXzqlk6I1\n");
  folder_.File("digest", DigestLine("apache"));
  std::string modules;
  for (const char* name : {"mpm_event", "authn_core", "authn_file", "authz_core", "authz_user",
                           "auth_basic", "auth_digest", "alias", "ssl"}) {
    modules += std::string("LoadModule ") + name + "_module /usr/lib/apache2/modules/mod_" + name +
               ".so\n";
  }
  const std::string file = "AuthUserFile " + path;
  return "ServerRoot " + path +
         "\nServerName localhost\nPidFile pid\nErrorLog errors\n"
         "DefaultRuntimeDir " +
         path + "\nListen " + Listen(port_) + '\n' + modules + UserLines() + "DocumentRoot " +
         path + "\nAlias /basic " + path + "/page\nAlias /digest " + path +
         "/page\n"
         "SSLEngine on\nSSLCertificateFile " +
         certificate.certificate.native() + "\nSSLCertificateKeyFile " + certificate.key.native() +
         "\n<Location /basic>\nAuthType Basic\nAuthName apache\n" + file +
         "/basic\nRequire valid-user\n</Location>\n"
         "<Location /digest>\nAuthType Digest\nAuthName apache\n" +
         file + "/digest\nRequire valid-user\n</Location>\n";
}

Squid::Squid(const fs::path& folder, const std::string& name, Demand demand)
    : folder_(folder, name),
      server_("/usr/sbin/squid",
              {"-N", "-f", folder_.File("squid.conf", Configuration(demand)).c_str()}, port_) {}

std::string Squid::Configuration(Demand demand) const {
  const std::string path = folder_.Path().native();
  const std::string common = "http_port " + Listen(port_) +
                             "\npid_filename none\ncache deny all\n"
                             "access_log none\nnetdb_filename none\ncache_log " +
                             path + "/log\ncoredump_dir " + path +
                             "\nshutdown_lifetime 0 seconds\n";
  const std::string helpers = "/usr/lib/squid/";
  const std::string known = "acl known proxy_auth REQUIRED\nhttp_access allow known\n";
  switch (demand) {
    case Demand::Nothing:
      return common + "http_access allow all\n";
    case Demand::TheImpossible:
      return common + "http_access deny all\n";
    case Demand::Basic:
      return common + "auth_param basic program " + helpers + "basic_ncsa_auth " +
             folder_.File("passwords", "user:$1$abcdefgh$cHJi5PXp/ki/ktXzqlk6I1\n").native() +
             "\nauth_param basic realm squid\n" + known;
    case Demand::Digest:
      return common + "auth_param digest program " + helpers + "digest_file_auth -c " +
             folder_.File("passwords", DigestLine("squid")).native() +
             "\nauth_param digest realm squid\n" + known;
  }
  return {};
}

}  // namespace vintrace::test
