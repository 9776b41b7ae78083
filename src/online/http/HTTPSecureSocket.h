#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <tuple>

#include "online/http/InternetHeaders.h"
#include "platform/files/BinaryStream.h"
#include "platform/files/FolderItem.h"
#include "platform/net/SSLSocket.h"
#include "platform/text/Dictionary.h"
#include "platform/text/MemoryBlock.h"
#include "platform/text/String.h"

namespace vintrace::http {

/// A client of HTTP/1.0 (RFC 1945). Each request has its own connection, which uses TLS unless
/// `Secure` is set to false; the scheme of a URL is ignored. A reply of any status is a page:
/// redirects are not followed, and bodies not decoded. A page ends with the piece that completes
/// its Content-length, if that is above 0, or when the connection ends, however early. A caller
/// that needs a complete page must compare its size.
///
/// A blocking request returns when the page is complete, after an error or a timeout, or when the
/// program quits, which leaves the request unfinished. The timeout starts again whenever the
/// connection's state or the size of a page in memory changes; a download or a HEAD request must
/// finish within one timeout after connecting. All other requests return at once and raise events
/// from the event loop; only `TargetError` can be raised before they return. A new request abandons
/// the previous one. A socket may be reused or destroyed at any time, even in its own events.
class HTTPSecureSocket : public SSLSocket {
 public:
  using HeadersPointer = std::shared_ptr<InternetHeaders>;
  using Form = Dictionary<String>;

  /// Values of `mErrorCode` besides those of `SocketError`.
  static constexpr int NoError = 0;
  static constexpr int TargetError = 1;     ///< The download's file can't be created or written.
  static constexpr int HeadersTooLong = 2;  ///< More than 64 KB.
  static constexpr int PageTooLong = 3;     ///< More than `LongestPage` bytes.
  static constexpr int TimedOut = -1;

  /// `network` must outlive this object.
  explicit HTTPSecureSocket(Network& network);

  /// The port for URLs that name none, 443 at first; used only while `Port` is 0. Each request
  /// keeps its port in `Port`, so that a later URL without one uses it again.
  std::int64_t DefaultPort() const { return _DefaultPort; }
  void SetDefaultPort(std::int64_t port) { _DefaultPort = port; }
  /// The proxy's host, empty for no proxy, and its port, 0 for `DefaultPort`.
  String HTTPProxyAddress;
  std::int64_t HTTPProxyPort = 0;
  int mErrorCode = NoError;
  /// The headers of the next request; if nil, those of a new socket: `Accept: */*` and
  /// `Accept-Language: en`.
  HeadersPointer requestHeaders;
  bool synchronous = false;
  /// The timeout of blocking requests in seconds; 0 or less for none.
  std::int64_t timeoutSeconds = 0;
  /// 0: no tunnel through a proxy; 1: a tunnel has been requested; 2: it is open.
  int tunnelMode = 0;
  /// The maximum size in bytes of a page in memory; 0 for no limit. A longer page is an error, and
  /// empty.
  std::size_t LongestPage = 0;
  /// True: blocking requests handle pending events, input of the user included.
  bool Yield = false;

  // Events. Blocking requests raise only the two authentication questions.
  /// Asks for the user name and password for `realm`; true to send the request again with them. A
  /// status of 407 raises the proxy's question, even if the server sent it.
  using Question = std::function<bool(const String& realm, const HeadersPointer& headers,
                                      String& userName, String& password)>;
  Question AuthenticationRequired;
  Question ProxyAuthenticationRequired;
  std::function<void()> Connected;
  std::function<void(const String& url, std::int64_t status, const HeadersPointer& headers,
                     const FolderItem& file)>
      DownloadComplete;
  std::function<void(int code)> Error;
  std::function<void(const HeadersPointer& headers, std::int64_t status)> HeadersReceived;
  std::function<void(const String& url, std::int64_t status, const HeadersPointer& headers,
                     const String& content)>
      PageReceived;
  /// `bytes` have arrived of `total`, 0 if that is unknown; `data` is the latest piece.
  std::function<void(std::int64_t bytes, std::int64_t total, const String& data)> ReceiveProgress;

  virtual void ClearRequestHeaders();
  /// The fields of `form`, in order, as application/x-www-form-urlencoded.
  virtual String EncodeFormData(const Form& form) const;
  virtual int ErrorCode() const { return mErrorCode; }
  HeadersPointer GetRequestHeaders() const { return requestHeaders; }

  // Requests. Those with a timeout, in seconds, block. With a file, the page replaces the file's
  // contents; otherwise it is kept in memory. A page that is cut off is delivered in part. A `bool`
  // result is true if there was no error.
  virtual void Get(const String& url);
  virtual void Get(const String& url, const FolderItem& file);
  virtual bool Get(const String& url, const FolderItem& file, std::int64_t timeout);
  virtual String Get(const String& url, std::int64_t timeout);
  virtual void GetHeaders(const String& url);
  virtual HeadersPointer GetHeaders(const String& url, std::int64_t timeout);
  /// The status of the current reply; 0 if there is none yet.
  virtual std::int64_t HTTPStatusCode() const { return _httpStatusCode; }
  /// The headers of the current reply; nil if it has none.
  virtual HeadersPointer PageHeaders() const;
  virtual void Post(const String& url);
  virtual void Post(const String& url, const FolderItem& file);
  virtual bool Post(const String& url, const FolderItem& file, std::int64_t timeout);
  virtual String Post(const String& url, std::int64_t timeout);
  virtual void SendRequest(const String& method, const String& url);
  virtual void SendRequest(const String& method, const String& url, const FolderItem& file);
  virtual bool SendRequest(const String& method, const String& url, const FolderItem& file,
                           std::int64_t timeout);
  virtual String SendRequest(const String& method, const String& url, std::int64_t timeout);
  /// These set the body of all later requests, until a HEAD request clears it. A nil form changes
  /// nothing.
  virtual void SetFormData(const std::optional<Form>& form);
  virtual void SetPostContent(const String& content, const String& type);
  virtual void SetRequestContent(const String& content, const String& type);
  /// An empty value removes the headers of that name. Carriage returns and line feeds are not sent.
  /// All headers go to the server, through a tunnel too; a CONNECT request carries only
  /// `Proxy-Authorization` of them.
  virtual void SetRequestHeader(const String& name, const String& value);
  /// Waits for the current request. Returns at once if the connection has ended. In an event of
  /// this socket, no data is handled until the event returns, so that only the connection's end,
  /// the timeout or the program's end ends the wait.
  virtual void WaitForPage();

 protected:
  void Event_Connected() override;
  void Event_DataAvailable() override;
  void Event_Error() override;

 private:
  class Blocking;

  // The request.
  void _InitializeRequestHeaders();
  void _ParseURL(const String& url);
  /// False if the file can't be created; no request is running then.
  bool _DoConnect(String url, String method, std::optional<FolderItem> file);
  void TurnToProxy();
  /// Restores the port that `TurnToProxy` replaced.
  void GiveBackPort();
  void _ResetVariables();
  bool _SetDownloadFile(std::optional<FolderItem> file);
  void _KillDownloadStream();
  void _SendRequest(const String& method);
  void _SendConnect();
  String _AuthenticatedHeaders();
  /// HOST:PORT of the tunnel's far end.
  String TunnelTarget() const;
  /// Starts a new request, not a retry. False if its file can't be created.
  bool Begin(const String& method, const String& url, const std::optional<FolderItem>& file);
  /// False if the request didn't start, was replaced by another, or the socket was destroyed.
  bool SendAndWait(const String& method, const String& url, const std::optional<FolderItem>& file,
                   std::int64_t timeout);
  /// Returns the page in memory, and clears it.
  String TakePage();

  // The reply.
  static bool IsHead(std::string_view method) { return TextEquals(method, "HEAD"); }
  void _HandleNewData();
  void _ReceiveHeaders();
  void _ParseHeaders(const String& text);
  void _OpenTunnel();
  /// True if this reply is obsolete, as the request was sent again or abandoned.
  bool _AnswerChallenge();
  void _ProcessData(const String& data);
  /// False if that failed, which ends the request.
  bool _Store(const String& data);
  /// False if the file may be incomplete, which ends the request.
  bool _CloseDownload();
  void _ProcessPage();
  void HangUp();
  /// Ends the request with the error `code`.
  void Fail(int code);
  void SetError(int code);
  /// Expires when the socket connects again or is destroyed, which event handlers may cause.
  std::weak_ptr<int> Exchange() const { return exchange_; }
  /// Raises an event unless the request blocks. False if its handler ended the request.
  template <class Event, class... Arguments>
  bool Raise(const Event& event, const Arguments&... arguments) {
    if (synchronous || !event) return true;
    const auto exchange = Exchange();
    // Uses copies, as the handler may destroy the socket.
    const Event handler = event;
    const std::tuple<Arguments...> copies(arguments...);
    std::apply(handler, copies);
    return !exchange.expired() && !_pageComplete;
  }

  // The authentication.
  bool _SetAuthentication(std::string_view kind);
  String _CreateAuthenticationData(std::string_view scheme, const String& userName,
                                   const String& password, const Dictionary<String>& parameters);
  String _CreateNonce();

  String _authenticationKey;
  bool _connectionValid = false;
  std::int64_t _currentLength = 0;
  std::int64_t _DefaultPort = 443;
  std::optional<FolderItem> _downloadFile;
  std::optional<BinaryStream> _downloadStream;
  String _httpAction;
  std::int64_t _httpStatusCode = 0;
  String _lastServerNonce;
  Dictionary<std::int64_t> _Nonces;
  MemoryBlock _pageBuffer;
  bool _pageComplete = false;
  HeadersPointer _pageHeaders;
  String _path;
  String _postContent;
  String _postContentType;
  String _processingURL;
  String _proxyAuthenticationKey;
  String _server;
  std::int64_t _totalLength = 0;
  std::int64_t _urlPort = 0;
  struct Ports {
    std::int64_t ofCaller = 0;
    std::int64_t ofProxy = 0;
  };
  std::optional<Ports> ports_;  // Set while `Port` may be the proxy's.
  std::size_t searched_ = 0;    // Bytes searched for the end of the headers so far.
  // A request of the caller may take several connections: an answered challenge starts another.
  std::int64_t request_ = 0;                                 // Counts the requests of the caller.
  std::shared_ptr<int> exchange_ = std::make_shared<int>();  // Renewed by connecting and failing.
};

}  // namespace vintrace::http
