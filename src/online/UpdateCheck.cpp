#include "online/UpdateCheck.h"

#include <cstdlib>

#include "online/http/HTTPSecureSocket.h"
#include "platform/text/Exceptions.h"
#include "platform/ui/Host.h"
#include "resources/Endpoints.h"

namespace vintrace::online {
namespace {

constexpr int AnyTLS = 3;
constexpr std::int64_t SecondsOfSilence = 5;
constexpr std::size_t LongestReply = 65536;  // Room for an error page; a reply is one word.

bool IsOffline() {
  const char* offline = std::getenv("VINTRACE_OFFLINE");
  return offline != nullptr && *offline != '\0';
}

/// Nil if a bundled part that the network needs is missing.
Network* NetworkIfAny() {
  try {
    return &Host::Current().Network();
  } catch (const RuntimeException&) {
    return nullptr;
  }
}

}  // namespace

String PostToService(std::string_view path, const String& app_id, const String& ver,
                     const String& regi) {
  if (IsOffline() || endpoints::ServiceHost().empty()) return {};
  Network* network = NetworkIfAny();
  if (network == nullptr) return {};
  http::HTTPSecureSocket socket(*network);
  socket.SetSecure(true);
  socket.ConnectionType = AnyTLS;
  socket.LongestPage = LongestReply;
  http::HTTPSecureSocket::Form form;
  form.Set("app_id", app_id);
  form.Set("ver", ver);
  form.Set("regi", regi);
  socket.SetFormData(form);
  const String url = String("https://").append(endpoints::ServiceHost()).append(path);
  String reply = socket.Post(url, SecondsOfSilence);
  socket.Close();
  return reply;
}

}  // namespace vintrace::online
