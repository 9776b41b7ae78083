#include "peers/Servers.h"

#include <sys/prctl.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <fstream>
#include <stdexcept>

#include "platform/String.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

const char* const NginxConfiguration = R"(
daemon off; master_process off; pid FOLDER/pid; events {}
http {
  access_log off; root FOLDER; default_type text/plain; client_body_temp_path FOLDER/body;
  proxy_temp_path FOLDER/proxy; fastcgi_temp_path FOLDER/f; uwsgi_temp_path FOLDER/u;
  scgi_temp_path FOLDER/s; ssl_certificate PEM; ssl_certificate_key PEM; ssl_protocols TLSv1.3;
  server {
    listen 127.0.0.1:PORT ssl; listen unix:FOLDER/clear;
    location /basic { auth_basic test; auth_basic_user_file basic; try_files /page =404; }
    location /closed { ssi on; ssi_types *; try_files /page =404; }
    location /moved { return 301 /page; }
    location /echo { proxy_pass http://unix:FOLDER/clear:/said; proxy_set_header X-Body $request_body; }
    location /www/ssl { return 200 true; }
    location /said { return 200 "$http_content_type|$http_x|$http_x_body"; }
  }
})";

const char* const ApacheConfiguration =
    "ServerRoot FOLDER\nDefaultRuntimeDir FOLDER\nDocumentRoot FOLDER\nServerName localhost\n"
    "PidFile pid\nErrorLog errors\nUser www-data\nGroup www-data\nListen 127.0.0.1:PORT\n"
    "SSLEngine on\nSSLCertificateFile PEM\n"
    "<Location />\nAuthType Digest\nAuthName test\nAuthUserFile digest\nRequire valid-user\n"
    "</Location>\n";

const char* const SquidConfiguration =
    "http_port 127.0.0.1:PORT\npid_filename none\naccess_log none\ncache_log FOLDER/log\n"
    "shutdown_lifetime 0 seconds\n"
    "auth_param SCHEME program /usr/lib/squid/HELPER FOLDER/SCHEME\nauth_param SCHEME realm test\n"
    "acl known proxy_auth REQUIRED\nhttp_access allow known\n";

/// Its path, its arguments but for the configuration's path, and the configuration.
using Program = std::tuple<QString, QStringList, std::string>;

Program ProgramFor(const std::string& name) {
  if (name == "nginx") return {"/usr/sbin/nginx", {"-e", "stderr", "-c"}, NginxConfiguration};
  if (name != "apache") return {"/usr/sbin/squid", {"-N", "-f"}, SquidConfiguration};
  std::string modules;
  for (const std::string each : {"mpm_event", "authn_core", "authn_file", "authz_core",
                                 "authz_user", "auth_digest", "ssl"}) {
    modules.append("LoadModule ").append(each).append("_module /usr/lib/apache2/modules/mod_");
    modules.append(each).append(".so\n");
  }
  return {"/usr/sbin/apache2", {"-X", "-f"}, modules + ApacheConfiguration};
}

std::uint16_t FreePort() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return server.serverPort();
}

}  // namespace

Server::Server(const fs::path& folder, const Certificate& certificate, const std::string& name)
    : port_(FreePort()) {
  const fs::path own = folder / name;
  fs::create_directory(own);
  fs::permissions(folder, fs::perms(0755));
  fs::permissions(own, fs::perms(0777));
  std::ofstream(own / "page") << "a page";
  std::ofstream(own / "large") << "";
  fs::resize_file(own / "large", 50 << 20);
  // The password as crypt(3) has it and as a Digest does.
  std::ofstream(own / "basic") << "user:$1$abcdefgh$cHJi5PXp/ki/ktXzqlk6I1\n";
  std::ofstream(own / "digest") << "user:test:eb6bcbb0c2554806d2927bb62248105a\n";

  const std::string helper = name == "basic" ? "basic_ncsa_auth" : "digest_file_auth -c";
  auto [path, arguments, text] = ProgramFor(name);
  const std::pair<std::string, std::string> words[] = {{"FOLDER", own},
                                                       {"PORT", Str(port_)},
                                                       {"PEM", certificate},
                                                       {"SCHEME", name},
                                                       {"HELPER", helper}};
  for (const auto& [word, value] : words) text = ReplaceAll(text, word, value);
  std::ofstream(own / "configuration") << text;
  process_.setProcessChannelMode(QProcess::ForwardedChannels);
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(path, arguments << (own / "configuration").c_str());
  for (int turns = 0; turns < 1000 && !process_.waitForFinished(10); ++turns) {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port_);
    if (socket.waitForConnected(100)) return;
  }
  throw std::runtime_error(name + " doesn't listen");
}

Server::~Server() {
  process_.terminate();
  process_.waitForFinished();
}

}  // namespace vintrace::test
