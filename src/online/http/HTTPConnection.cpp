// Connects, and sends the request.

#include <utility>

#include "online/http/HTTPSecureSocket.h"
#include "online/http/RequestText.h"
#include "platform/text/Exceptions.h"

namespace vintrace::http {
namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Protocol = " HTTP/1.0";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

}  // namespace

// Takes copies, as callers pass members that change here.
bool HTTPSecureSocket::_DoConnect(String url, String method, std::optional<FolderItem> file) {
  HangUp();
  exchange_ = std::make_shared<int>();
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

}  // namespace vintrace::http
