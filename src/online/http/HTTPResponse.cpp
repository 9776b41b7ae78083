// Receives replies, and waits for them.

#include <algorithm>
#include <limits>
#include <utility>

#include "online/http/HTTPSecureSocket.h"
#include "online/http/ReplyText.h"
#include "platform/text/Exceptions.h"

namespace vintrace::http {
namespace {

/// More than any server sends, and short enough to search again after each piece.
constexpr std::size_t LongestHeaders = 65536;

/// The most bytes that a Content-length may reserve for a page in advance.
constexpr std::int64_t MostExpected = 64 << 20;

constexpr std::int64_t StatusOK = 200;
constexpr std::int64_t StatusUnauthorized = 401;
constexpr std::int64_t StatusProxyUnauthorized = 407;

constexpr std::int64_t TicksPerSecond = 60;
constexpr std::int64_t LongestWait = std::numeric_limits<std::int32_t>::max();

}  // namespace

HTTPSecureSocket::HeadersPointer HTTPSecureSocket::PageHeaders() const {
  return _pageHeaders && _pageHeaders->Count() > 0 ? _pageHeaders : nullptr;
}

void HTTPSecureSocket::Event_DataAvailable() { _HandleNewData(); }

void HTTPSecureSocket::_HandleNewData() {
  if (_pageHeaders) {
    _ProcessData(ReadAll());
  } else {
    _ReceiveHeaders();
  }
}

void HTTPSecureSocket::_ReceiveHeaders() {
  const auto bytes = Lookahead();
  const auto end = FindHeaderEnd(bytes, std::exchange(searched_, bytes.size()));
  if ((end ? end->position : bytes.size()) > LongestHeaders) return Fail(HeadersTooLong);
  if (!end) return;
  _ParseHeaders(Read(end->position));
  if (tunnelMode == 1 && _httpStatusCode == StatusOK) return _OpenTunnel();
  if (_AnswerChallenge()) return;
  Read(end->blankLine);
  if (Raise(HeadersReceived, _pageHeaders, _httpStatusCode)) _ProcessData(ReadAll());
}

void HTTPSecureSocket::_ParseHeaders(const String& text) {
  _pageHeaders = std::make_shared<InternetHeaders>();
  _httpStatusCode = StatusIn(text);
  _pageHeaders->_ParseHeaders(text);
  if (_pageHeaders->_HasHeader("Content-length")) {
    _totalLength = Val(_pageHeaders->Value("Content-length"));
    if (!_downloadStream) {
      const auto length = static_cast<std::size_t>(std::min(_totalLength, MostExpected));
      _pageBuffer.Expect(LongestPage == 0 ? length : std::min(length, LongestPage));
    }
  }
}

void HTTPSecureSocket::_OpenTunnel() {
  ReadAll();
  _ResetVariables();
  _connectionValid = false;  // An end before TLS is up counts as a failed connection.
  SetSecure(true);
  tunnelMode = 2;
}

bool HTTPSecureSocket::_AnswerChallenge() {
  const bool server = _httpStatusCode == StatusUnauthorized;
  if (!server && _httpStatusCode != StatusProxyUnauthorized) return false;
  const auto exchange = Exchange();
  const bool answers = _SetAuthentication(server ? "WWW" : "Proxy");
  if (exchange.expired()) return true;
  if (answers) _DoConnect(_processingURL, _httpAction, _downloadFile);
  return answers;
}

void HTTPSecureSocket::_ProcessData(const String& data) {
  if (IsHead(_httpAction)) return;
  _currentLength += static_cast<std::int64_t>(data.size());
  if (!_Store(data)) return;
  if (!Raise(ReceiveProgress, _currentLength, _totalLength, data)) return;
  const bool refused =
      _httpStatusCode == StatusUnauthorized || _httpStatusCode == StatusProxyUnauthorized;
  if (refused && !IsConnected()) return _ProcessPage();
  if (_totalLength < 1 || _currentLength < _totalLength) return;
  HangUp();
  _ProcessPage();
}

bool HTTPSecureSocket::_Store(const String& data) {
  if (!_downloadStream) {
    const bool fits = LongestPage == 0 || _pageBuffer.Size() + data.size() <= LongestPage;
    if (fits) {
      _pageBuffer.Append(data);
    } else {
      _pageBuffer = {};
      _currentLength = 0;
      Fail(PageTooLong);
    }
    return fits;
  }
  try {
    _downloadStream->Write(data);
    return true;
  } catch (const IOException&) {
    Fail(TargetError);
    return false;
  }
}

bool HTTPSecureSocket::_CloseDownload() {
  if (!_downloadStream) return true;
  try {
    _downloadStream->Close();
    return true;
  } catch (const IOException&) {
    Fail(TargetError);
    return false;
  }
}

void HTTPSecureSocket::_ProcessPage() {
  if (std::exchange(_pageComplete, true)) return;
  if (!_Store(ReadAll()) || !_CloseDownload()) return;
  const auto file = _downloadFile;
  _KillDownloadStream();
  if (IsHead(_httpAction) || synchronous) return;
  if (file) {
    Raise(DownloadComplete, _processingURL, _httpStatusCode, _pageHeaders, *file);
  } else {
    Raise(PageReceived, _processingURL, _httpStatusCode, _pageHeaders, TakePage());
  }
}

void HTTPSecureSocket::Event_Error() {
  const bool wasMade = _connectionValid;
  const auto exchange = Exchange();
  HangUp();
  if (!wasMade) return Fail(LastErrorCode());
  if (!Lookahead().empty()) _ProcessData(ReadAll());
  if (!exchange.expired()) _ProcessPage();
}

void HTTPSecureSocket::HangUp() {
  Close();
  GiveBackPort();
  _connectionValid = false;
  // `Secure` is off until a tunnel is open, but the next request needs it.
  if (std::exchange(tunnelMode, 0) != 0) SetSecure(true);
}

void HTTPSecureSocket::Fail(int code) {
  HangUp();
  _KillDownloadStream();
  _pageComplete = true;
  exchange_ = std::make_shared<int>();  // Nothing is raised after the error.
  SetError(code);
}

void HTTPSecureSocket::SetError(int code) {
  mErrorCode = code;
  Raise(Error, code);
}

void HTTPSecureSocket::WaitForPage() {
  if (!HasConnection()) return;
  _pageComplete = false;
  mErrorCode = NoError;
  const auto life = Life();
  const auto deadline = [this] {
    return TheNetwork().Ticks() + std::min(timeoutSeconds, LongestWait) * TicksPerSecond;
  };
  auto end = deadline();
  bool knownState = false;
  std::size_t knownSize = 0;
  TheNetwork().WaitUntil([&] {
    if (!life.expired()) Poll();
    if (!life.expired() && Yield) TheNetwork().DoEvents();
    if (life.expired() || _pageComplete || mErrorCode != NoError || !HasConnection()) return true;
    if (std::exchange(knownState, _connectionValid) != _connectionValid ||
        std::exchange(knownSize, _pageBuffer.Size()) != _pageBuffer.Size()) {
      end = deadline();
    }
    const bool silent = timeoutSeconds > 0 && end < TheNetwork().Ticks();
    if (silent) Fail(TimedOut);
    return silent;
  });
}

}  // namespace vintrace::http
