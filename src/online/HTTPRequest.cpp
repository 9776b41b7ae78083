// Requests: what goes out, and to whom.

#include <exception>
#include <utility>

#include "online/HTTPSecureSocket.h"
#include "online/LineEnds.h"
#include "online/RequestText.h"
#include "platform/Exceptions.h"

namespace vintrace::online {
namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Protocol = " HTTP/1.0";
constexpr std::string_view FormType = "application/x-www-form-urlencoded";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

}  // namespace

/// While it lives, no event but a question is raised. The socket may go meanwhile; when an
/// exception ends it, so does the request.
class HTTPSecureSocket::Blocking {
 public:
  explicit Blocking(HTTPSecureSocket& socket)
      : socket_(socket), life_(socket.Life()), before_(std::exchange(socket.synchronous, true)) {}
  Blocking(const Blocking&) = delete;
  Blocking& operator=(const Blocking&) = delete;
  ~Blocking() {
    if (life_.expired()) return;
    if (std::uncaught_exceptions() > exceptions_) socket_.HangUp();
    socket_.synchronous = before_;
  }

 private:
  HTTPSecureSocket& socket_;
  std::weak_ptr<void> life_;
  bool before_;
  int exceptions_ = std::uncaught_exceptions();
};

HTTPSecureSocket::HTTPSecureSocket(Network& network) : SSLSocket(network) {
  _InitializeRequestHeaders();
  SetSecure(true);
}

void HTTPSecureSocket::_InitializeRequestHeaders() {
  requestHeaders = std::make_shared<InternetHeaders>();
  requestHeaders->SetHeader("Accept", "*/*");
  requestHeaders->SetHeader("Accept-Language", "en");
}

void HTTPSecureSocket::ClearRequestHeaders() {
  if (requestHeaders) requestHeaders->DeleteAllHeaders();
}

void HTTPSecureSocket::SetRequestHeader(const String& name, const String& value) {
  if (!requestHeaders) _InitializeRequestHeaders();
  const String key = WithoutLineEnds(name);
  if (value.empty()) {
    requestHeaders->Delete(key);
  } else {
    requestHeaders->SetHeader(key, value);
  }
}

String HTTPSecureSocket::EncodeFormData(const Form& form) const { return EncodeFields(form); }

void HTTPSecureSocket::SetFormData(const std::optional<Form>& form) {
  if (form) SetRequestContent(EncodeFormData(*form), String(FormType));
}

void HTTPSecureSocket::SetPostContent(const String& content, const String& type) {
  SetRequestContent(content, type);
}

void HTTPSecureSocket::SetRequestContent(const String& content, const String& type) {
  _postContent = content;
  _postContentType = type;
}

void HTTPSecureSocket::Get(const String& url) { SendRequest("GET", url); }
void HTTPSecureSocket::Get(const String& url, const FolderItem& file) {
  SendRequest("GET", url, file);
}
bool HTTPSecureSocket::Get(const String& url, const FolderItem& file, std::int64_t timeout) {
  return SendRequest("GET", url, file, timeout);
}
String HTTPSecureSocket::Get(const String& url, std::int64_t timeout) {
  return SendRequest("GET", url, timeout);
}

void HTTPSecureSocket::GetHeaders(const String& url) { SendRequest("HEAD", url); }
HTTPSecureSocket::HeadersPointer HTTPSecureSocket::GetHeaders(const String& url,
                                                              std::int64_t timeout) {
  return SendAndWait("HEAD", url, std::nullopt, timeout) ? _pageHeaders : nullptr;
}

void HTTPSecureSocket::Post(const String& url) { SendRequest("POST", url); }
void HTTPSecureSocket::Post(const String& url, const FolderItem& file) {
  SendRequest("POST", url, file);
}
bool HTTPSecureSocket::Post(const String& url, const FolderItem& file, std::int64_t timeout) {
  return SendRequest("POST", url, file, timeout);
}
String HTTPSecureSocket::Post(const String& url, std::int64_t timeout) {
  return SendRequest("POST", url, timeout);
}

void HTTPSecureSocket::SendRequest(const String& method, const String& url) {
  synchronous = false;
  Begin(method, url, std::nullopt);
}
void HTTPSecureSocket::SendRequest(const String& method, const String& url,
                                   const FolderItem& file) {
  synchronous = false;
  Begin(method, url, file);
}
bool HTTPSecureSocket::SendRequest(const String& method, const String& url, const FolderItem& file,
                                   std::int64_t timeout) {
  return SendAndWait(method, url, file, timeout) && mErrorCode == NoError;
}
String HTTPSecureSocket::SendRequest(const String& method, const String& url,
                                     std::int64_t timeout) {
  return SendAndWait(method, url, std::nullopt, timeout) ? TakePage() : String();
}

bool HTTPSecureSocket::Begin(const String& method, const String& url,
                             const std::optional<FolderItem>& file) {
  // A key that no one has taken was for another request, and maybe for another host.
  _authenticationKey.clear();
  _proxyAuthenticationKey.clear();
  ++request_;
  return _DoConnect(url, method, file);
}

bool HTTPSecureSocket::SendAndWait(const String& method, const String& url,
                                   const std::optional<FolderItem>& file, std::int64_t timeout) {
  const Blocking blocking(*this);
  timeoutSeconds = timeout;
  // Nothing would end the wait for what isn't under way.
  if (!Begin(method, url, file)) return false;
  const auto request = request_;
  const auto life = Life();
  WaitForPage();
  return !life.expired() && request_ == request;
}

String HTTPSecureSocket::TakePage() {
  return _currentLength < 1 ? String() : _pageBuffer.Take(static_cast<std::size_t>(_currentLength));
}

// The arguments may be the socket's own, which change.
bool HTTPSecureSocket::_DoConnect(String url, String method, std::optional<FolderItem> file) {
  HangUp();
  exchange_ = std::make_shared<int>();
  threadProtection = false;
  mErrorCode = NoError;
  _ParseURL(url);
  _processingURL = std::move(url);
  if (!_SetDownloadFile(std::move(file))) return false;
  if (!HTTPProxyAddress.empty()) TurnToProxy();
  _httpAction = std::move(method);
  ReadAll();
  _ResetVariables();
  tunnelMode = 0;
  if (Secure() && !HTTPProxyAddress.empty()) {
    tunnelMode = 1;
    SetSecure(false);
  }
  Connect();
  return true;
}

void HTTPSecureSocket::_ParseURL(const String& url) {
  GiveBackPort();
  const RequestURL parts = SplitURL(url);
  _server = parts.server;
  _path = parts.path;
  _urlPort = parts.port;
  if (_urlPort != 0) {
    Port = _urlPort;
  } else if (Port == 0) {
    _urlPort = Port = _DefaultPort;
  }
  Address = parts.host;
  PeerName = parts.host;
}

void HTTPSecureSocket::GiveBackPort() {
  if (ports_ && Port == ports_->ofProxy) Port = ports_->ofCaller;
  ports_.reset();
}

void HTTPSecureSocket::TurnToProxy() {
  Address = HTTPProxyAddress;
  ports_ = {.ofCaller = Port, .ofProxy = HTTPProxyPort == 0 ? _DefaultPort : HTTPProxyPort};
  Port = ports_->ofProxy;
}

void HTTPSecureSocket::_ResetVariables() {
  _pageBuffer = {};
  _pageHeaders.reset();
  searched_ = 0;
  _httpStatusCode = 0;
  _totalLength = 0;
  _currentLength = 0;
  _pageComplete = false;
}

bool HTTPSecureSocket::_SetDownloadFile(std::optional<FolderItem> file) {
  _KillDownloadStream();
  if (!file) return true;
  try {
    _downloadStream.emplace(BinaryStream::Create(file, true));
  } catch (const IOException&) {
    SetError(TargetError);
    return false;
  }
  _downloadFile = std::move(file);
  return true;
}

void HTTPSecureSocket::_KillDownloadStream() {
  _downloadStream.reset();
  _downloadFile.reset();
}

void HTTPSecureSocket::Event_Connected() {
  _connectionValid = true;
  if (!Raise(Connected)) return;
  if (_httpAction.empty()) _httpAction = "GET";
  _SendRequest(tunnelMode == 1 ? "CONNECT" : _httpAction);
}

void HTTPSecureSocket::_SendRequest(const String& method) {
  if (TextEquals(method, "CONNECT")) return _SendConnect();
  if (!requestHeaders) _InitializeRequestHeaders();
  requestHeaders->SetHeader("Host", _server);
  if (IsHead(method)) SetRequestContent("", "");
  if (!IsBlank(_postContentType)) SetRequestHeader("Content-type", _postContentType);
  if (!_postContent.empty()) {
    SetRequestHeader("Content-length", Str(static_cast<std::int64_t>(_postContent.size())));
  }
  if (tunnelMode == 0 && !HTTPProxyAddress.empty()) _path = _processingURL;
  String text = WithoutLineEnds(method).append(" ").append(WithoutLineEnds(_path));
  text.append(Protocol).append(LineEnd).append(_AuthenticatedHeaders());
  Write(text.append(LineEnd).append(LineEnd).append(_postContent));
  requestHeaders->Delete("Content-Length");
}

String HTTPSecureSocket::_AuthenticatedHeaders() {
  const std::pair<String, String> keys[] = {
      {"Authorization", std::exchange(_authenticationKey, {})},
      {"Proxy-Authorization", std::exchange(_proxyAuthenticationKey, {})}};
  for (const auto& [name, key] : keys) {
    if (!key.empty()) SetRequestHeader(name, key);
  }
  String headers = requestHeaders->_FormatHTTPHeaders();
  for (const auto& [name, key] : keys) {
    if (!key.empty()) requestHeaders->Delete(name);
  }
  return headers;
}

void HTTPSecureSocket::_SendConnect() {
  constexpr std::string_view KeyName = "Proxy-Authorization";
  String key = std::exchange(_proxyAuthenticationKey, {});
  if (key.empty() && requestHeaders) key = requestHeaders->Value(KeyName);
  String text = "CONNECT " + WithoutLineEnds(TunnelTarget());
  text.append(Protocol).append(LineEnd).append("Host: ").append(WithoutLineEnds(_server));
  if (!key.empty()) text.append(LineEnd).append(KeyName).append(": ").append(WithoutLineEnds(key));
  Write(text.append(LineEnd).append(LineEnd));
}

String HTTPSecureSocket::TunnelTarget() const {
  const auto port = _urlPort != 0 ? _urlPort : ports_ ? ports_->ofCaller : Port;
  return PeerName.value_or(Address) + ':' + Str(port);
}

}  // namespace vintrace::online
