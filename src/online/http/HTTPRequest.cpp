// The public operations of the socket.

#include <exception>
#include <utility>

#include "online/http/HTTPSecureSocket.h"
#include "online/http/RequestText.h"

namespace vintrace::http {
namespace {

constexpr std::string_view FormType = "application/x-www-form-urlencoded";

}  // namespace

/// Suppresses all events except the two questions during its lifetime. Ends the request if an
/// exception leaves the scope. The socket may be destroyed first.
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
  // An unused key belongs to an earlier request, perhaps to another host.
  _authenticationKey.clear();
  _proxyAuthenticationKey.clear();
  ++request_;
  return _DoConnect(url, method, file);
}

bool HTTPSecureSocket::SendAndWait(const String& method, const String& url,
                                   const std::optional<FolderItem>& file, std::int64_t timeout) {
  const Blocking blocking(*this);
  timeoutSeconds = timeout;
  // Without a request, the wait might never end.
  if (!Begin(method, url, file)) return false;
  const auto request = request_;
  const auto life = Life();
  WaitForPage();
  return !life.expired() && request_ == request;
}

String HTTPSecureSocket::TakePage() {
  return _currentLength < 1 ? String() : _pageBuffer.Take(static_cast<std::size_t>(_currentLength));
}

}  // namespace vintrace::http
