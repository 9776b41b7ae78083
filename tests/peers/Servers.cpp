#include "peers/Servers.h"

#include <sys/prctl.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <fstream>
#include <stdexcept>

#include "platform/text/String.h"

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
    location /echo { proxy_pass http://unix:FOLDER/clear:/said; proxy_set_header X-Body $request_body; }
    location /www/ssl { return 200 true; }
    location /said { return 200 "$http_content_type|$http_x_body"; }
  }
})";

const char* const SquidConfiguration =
    "http_port 127.0.0.1:PORT\npid_filename none\naccess_log none\ncache_log FOLDER/log\n"
    "shutdown_lifetime 0 seconds\n"
    "auth_param digest program /usr/lib/squid/digest_file_auth -c FOLDER/digest\n"
    "auth_param digest realm test\nacl known proxy_auth REQUIRED\nhttp_access allow known\n";

}  // namespace

Server::Server(const fs::path& folder, const Certificate& certificate, const std::string& name) {
  QTcpServer free;
  free.listen(QHostAddress::LocalHost);
  port_ = free.serverPort();
  free.close();
  const fs::path own = folder / name;
  fs::create_directory(own);
  fs::permissions(folder, fs::perms(0755));
  fs::permissions(own, fs::perms(0777));
  std::ofstream(own / "page") << "a page";
  std::ofstream(own / "large") << "";
  fs::resize_file(own / "large", 50 << 20);
  // The password in crypt(3) form, and the Digest hash of user, realm and password (RFC 7616).
  std::ofstream(own / "basic") << "user:$1$abcdefgh$cHJi5PXp/ki/ktXzqlk6I1\n";
  std::ofstream(own / "digest") << "user:test:eb6bcbb0c2554806d2927bb62248105a\n";

  const bool isProxy = name == "squid";
  std::string text = isProxy ? SquidConfiguration : NginxConfiguration;
  const std::pair<std::string, std::string> words[] = {
      {"FOLDER", own}, {"PORT", Str(port_)}, {"PEM", certificate}};
  for (const auto& [word, value] : words) text = ReplaceAll(text, word, value);
  std::ofstream(own / "configuration") << text;
  const QStringList arguments =
      isProxy ? QStringList{"-N", "-f"} : QStringList{"-e", "stderr", "-c"};
  process_.setProcessChannelMode(QProcess::ForwardedChannels);
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(QString::fromStdString("/usr/sbin/" + name),
                 arguments + QStringList{(own / "configuration").c_str()});
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
