#include "platform/posix/StartMessage.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vintrace::posix {
namespace {

constexpr std::string_view Mark = "vintrace start 1";
constexpr std::size_t NumberSize = 4;
constexpr std::size_t HeadSize = Mark.size() + NumberSize;
constexpr std::size_t MaximumBody = 8 << 20;
constexpr std::size_t MaximumText = 256 << 10;  // No system hands a process a longer argument.
constexpr std::size_t MaximumCount = 65536;

void AppendNumber(String& message, std::size_t number) {
  for (const int shift : {24, 16, 8, 0}) {
    message += static_cast<char>(static_cast<unsigned char>(number >> shift));
  }
}

std::size_t NumberAt(std::string_view bytes) {
  std::size_t number = 0;
  for (const char byte : bytes.substr(0, NumberSize)) {
    number = number << 8 | static_cast<unsigned char>(byte);
  }
  return number;
}

bool IsText(std::string_view text) {
  return text.size() <= MaximumText && text.find('\0') == std::string_view::npos;
}

/// False for a path that would name another file in the other program.
bool IsPath(std::string_view text) { return text.empty() || text.front() == '/'; }

/// Takes a body apart from its front. Once something was missing or wrong, everything is.
class BodyReader {
 public:
  explicit BodyReader(std::string_view body) : rest_(body) {}

  std::size_t Number() { return NumberAt(Take(NumberSize)); }

  String Text() {
    const std::string_view text = Take(Number());
    good_ = good_ && IsText(text);
    return String(text);
  }

  String Path() {
    String text = Text();
    good_ = good_ && IsPath(text);
    return text;
  }

  bool Good() const { return good_; }
  bool EndedWell() const { return good_ && rest_.empty(); }

 private:
  std::string_view Take(std::size_t size) {
    good_ = good_ && size <= rest_.size();
    if (!good_) return {};
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }

  std::string_view rest_;
  bool good_ = true;
};

/// False when `text` isn't one, or makes the body too long.
bool AppendText(String& body, std::string_view text) {
  if (!IsText(text) || body.size() + NumberSize + text.size() > MaximumBody) return false;
  AppendNumber(body, text.size());
  body += text;
  return true;
}

}  // namespace

std::optional<String> EncodeStartMessage(const StartRequest& request) {
  if (request.documents.size() > MaximumCount) return std::nullopt;
  String body;
  AppendNumber(body, request.documents.size());
  bool good = AppendText(body, request.activationToken) && AppendText(body, request.startupId);
  for (const auto& document : request.documents) {
    good = good && IsPath(document.NativePath()) && AppendText(body, document.NativePath());
  }
  if (!good) return std::nullopt;
  String message(Mark);
  AppendNumber(message, body.size());
  return message.append(body);
}

bool MayBecomeStartMessage(std::string_view bytes) {
  const std::size_t common = std::min(bytes.size(), Mark.size());
  if (bytes.substr(0, common) != Mark.substr(0, common)) return false;
  if (bytes.size() < HeadSize) return true;
  const std::size_t declared = NumberAt(bytes.substr(Mark.size()));
  return declared <= MaximumBody && bytes.size() - HeadSize <= declared;
}

std::optional<StartRequest> DecodeStartMessage(std::string_view bytes) {
  if (bytes.size() < HeadSize || !MayBecomeStartMessage(bytes)) return std::nullopt;
  const std::string_view body = bytes.substr(HeadSize);
  if (body.size() != NumberAt(bytes.substr(Mark.size()))) return std::nullopt;
  BodyReader reader(body);
  const std::size_t count = reader.Number();
  if (count > MaximumCount) return std::nullopt;
  StartRequest request;
  request.activationToken = reader.Text();
  request.startupId = reader.Text();
  for (std::size_t i = 0; i < count && reader.Good(); ++i) {
    request.documents.emplace_back(reader.Path());
  }
  if (!reader.EndedWell()) return std::nullopt;
  return request;
}

}  // namespace vintrace::posix
