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

/// A client of HTTP/1.0 (RFC 1945). Each request has a connection of its own, which is secure
/// unless `Secure` is made false; the scheme of a URL doesn't count. A reply of any status is a
/// page: no redirect is followed, and no body decoded. A page ends with the piece that completes
/// its Content-length, if that is above 0, or else with the connection, wherever that comes:
/// whoever needs a whole page compares its size.
///
/// What blocks returns when the page is complete, with an error, when the program ends, with the
/// request still under way, or when for a time neither the connection nor a page in memory has
/// moved on; a download or a HEAD request has to be over within that time from the connection on.
/// Everything else returns at once and raises events, from the event loop, but for the error of a
/// file that can't be made. There is one request at a time: the next one abandons what is under
/// way. A socket may be used again and destroyed at any time, in its own events too.
class HTTPSecureSocket : public SSLSocket {
 public:
  using HeadersPointer = std::shared_ptr<InternetHeaders>;
  using Form = Dictionary<String>;

  /// Values of `mErrorCode` beside those of `SocketError`.
  static constexpr int NoError = 0;
  static constexpr int TargetError = 1;     ///< The download's file can't be made or written.
  static constexpr int HeadersTooLong = 2;  ///< More than 64 KB without an end.
  static constexpr int PageTooLong = 3;     ///< More than `LongestPage`.
  static constexpr int TimedOut = -1;

  /// `network` lives longer.
  explicit HTTPSecureSocket(Network& network);

  /// The port of a URL that names none, on a socket whose `Port` isn't set. A URL that names one
  /// sets it, for those that follow too.
  std::int64_t DefaultPort() const { return _DefaultPort; }
  void SetDefaultPort(std::int64_t port) { _DefaultPort = port; }
  /// Empty: no proxy. Its port is the default port if 0.
  String HTTPProxyAddress;
  std::int64_t HTTPProxyPort = 0;
  int mErrorCode = NoError;
  /// The headers of the next request; nil: those of a new socket.
  HeadersPointer requestHeaders;
  bool synchronous = false;
  /// Seconds of silence that end a blocking request; none do if 0 or less.
  std::int64_t timeoutSeconds = 0;
  /// Through a proxy: 0 without a tunnel, 1 while one is asked for, 2 in it.
  int tunnelMode = 0;
  /// Bytes of a page in memory; 0: as many as come.
  std::size_t LongestPage = 0;
  /// A blocking request lets the event loop run.
  bool Yield = false;

  // Events. Those but the two questions come only if the request doesn't block.
  /// A user name and a password, for a realm of the server's or the proxy's. True to try again. Who
  /// asks is told by the status alone: a 407 counts as the proxy's, whoever sent it.
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
  /// `total`: 0 if the reply doesn't tell.
  std::function<void(std::int64_t bytes, std::int64_t total, const String& data)> ReceiveProgress;

  virtual void ClearRequestHeaders();
  /// `form` as application/x-www-form-urlencoded, in its order.
  virtual String EncodeFormData(const Form& form) const;
  virtual int ErrorCode() const { return mErrorCode; }
  HeadersPointer GetRequestHeaders() const { return requestHeaders; }

  // Requests. Those with a time-out in seconds block. A page comes in memory or, with a file, goes
  // there; what was there is replaced. One that was cut off is given as far as it came. What gives
  // a `bool` tells whether there was no error.
  virtual void Get(const String& url);
  virtual void Get(const String& url, const FolderItem& file);
  virtual bool Get(const String& url, const FolderItem& file, std::int64_t timeout);
  virtual String Get(const String& url, std::int64_t timeout);
  virtual void GetHeaders(const String& url);
  virtual HeadersPointer GetHeaders(const String& url, std::int64_t timeout);
  /// The status of the last reply; 0 as long as there is none.
  virtual std::int64_t HTTPStatusCode() const { return _httpStatusCode; }
  /// The headers of the last reply; nil when it has none.
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
  /// The body of this request and those that follow, until a HEAD request. A nil form changes
  /// nothing.
  virtual void SetFormData(const std::optional<Form>& form);
  virtual void SetPostContent(const String& content, const String& type);
  virtual void SetRequestContent(const String& content, const String& type);
  /// An empty value takes the headers of that name out. Carriage returns and line feeds in either
  /// don't go out. Each header goes to the server, through a tunnel too; to ask for the tunnel,
  /// only `Proxy-Authorization` does.
  virtual void SetRequestHeader(const String& name, const String& value);
  /// Waits for the page that is under way; for ever, if none is and silence doesn't end it.
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
  /// False when the file can't be made, and then nothing is under way.
  bool _DoConnect(String url, String method, std::optional<FolderItem> file);
  void TurnToProxy();
  /// Ends that.
  void GiveBackPort();
  void _ResetVariables();
  bool _SetDownloadFile(std::optional<FolderItem> file);
  void _KillDownloadStream();
  void _SendRequest(const String& method);
  void _SendConnect();
  String _AuthenticatedHeaders();
  /// Host and port of the tunnel's other end.
  String TunnelTarget() const;
  /// Begins a request of the caller's. False when its file can't be made.
  bool Begin(const String& method, const String& url, const std::optional<FolderItem>& file);
  /// False when there is no page that could be looked at.
  bool SendAndWait(const String& method, const String& url, const std::optional<FolderItem>& file,
                   std::int64_t timeout);
  /// The page in memory, which is given once.
  String TakePage();

  // The reply.
  static bool IsHead(std::string_view method) { return TextEquals(method, "HEAD"); }
  void _HandleNewData();
  void _ReceiveHeaders();
  void _ParseHeaders(const String& text);
  void _OpenTunnel();
  /// True when the request goes out again, and the reply is of no further interest.
  bool _AnswerChallenge();
  void _ProcessData(const String& data);
  /// False when that has failed, and the request with it.
  bool _Store(const String& data);
  /// False when the file can't have been written whole, and the request has failed with it.
  bool _CloseDownload();
  void _ProcessPage();
  void HangUp();
  /// Ends the request with that error.
  void Fail(int code);
  void SetError(int code);
  /// Expires when the socket begins another request or is destroyed, which an event may do.
  std::weak_ptr<int> Exchange() const { return exchange_; }
  /// Raises an event of a request that doesn't block. False when `Exchange` has expired with it.
  template <class Event, class... Arguments>
  bool Raise(const Event& event, const Arguments&... arguments) {
    if (synchronous || !event) return true;
    const auto exchange = Exchange();
    // What belongs to the socket may go while the handler runs.
    const Event handler = event;
    const std::tuple<Arguments...> copies(arguments...);
    std::apply(handler, copies);
    return !exchange.expired();
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
  std::optional<Ports> ports_;  // While `Port` may be the proxy's.
  std::size_t searched_ = 0;    // So many bytes have been searched for the headers' end.
  std::int64_t request_ = 0;    // The number of requests that were begun.
  std::shared_ptr<int> exchange_ = std::make_shared<int>();
};

}  // namespace vintrace::http
