#include "platform/linux/PropertyList.h"

#include <expat.h>

#include <cstdint>
#include <memory>

namespace vintrace::open {
namespace {

/// Listens to the XML form: <plist><dict><key>…</key><string>…</string>…</dict></plist>.
class XmlList {
 public:
  explicit XmlList(std::string_view key) : key_(key) {}

  String TextIn(std::string_view bytes) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetUserData(parser.get(), this);
    XML_SetElementHandler(parser.get(), Begin, End);
    XML_SetCharacterDataHandler(parser.get(), Text);
    const auto status =
        XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
    return status == XML_STATUS_OK && isDictionary_ ? found_ : String();
  }

 private:
  enum Depth { Root = 1, Dictionary, Entry };

  static void Begin(void* self, const char* name, const char** /*attributes*/) {
    auto& list = *static_cast<XmlList*>(self);
    ++list.depth_;
    if (list.depth_ == Dictionary) list.isDictionary_ = std::string_view(name) == "dict";
    if (list.depth_ == Entry) list.text_.clear();
  }

  static void End(void* self, const char* name) {
    auto& list = *static_cast<XmlList*>(self);
    if (list.depth_-- == Entry) list.EndEntry(name);
  }

  static void Text(void* self, const char* text, int size) {
    auto& list = *static_cast<XmlList*>(self);
    if (list.depth_ == Entry) list.text_.append(text, static_cast<std::size_t>(size));
  }

  void EndEntry(std::string_view name) {
    if (isNext_ && name == "string") found_ = text_;
    isNext_ = name == "key" && text_ == key_;
  }

  std::string_view key_;
  int depth_ = 0;
  bool isDictionary_ = false;
  bool isNext_ = false;
  String text_;
  String found_;
};

/// Reads the binary form: a signature, objects, a table of their places, and a trailer that tells
/// where the table is. Objects name each other by their indices in the table. Numbers have their
/// highest byte first.
class BinaryList {
 public:
  /// Something stands or leads outside the bytes.
  struct Malformed {};

  static constexpr std::string_view Signature = "bplist00";

  explicit BinaryList(std::string_view bytes) : bytes_(bytes) {
    constexpr std::size_t TrailerSize = 32;
    const std::uint64_t trailer = bytes.size() < TrailerSize ? 0 : bytes.size() - TrailerSize;
    placeSize_ = Number(trailer + 6, 1);
    indexSize_ = Number(trailer + 7, 1);
    root_ = Number(trailer + 16, 8);
    table_ = Number(trailer + 24, 8);
  }

  String TextUnder(std::string_view key) const {
    const Object root = ObjectAt(root_);
    if (root.type != Dictionary) return {};
    for (std::uint64_t entry = 0; entry < root.count; ++entry) {
      if (TextOf(IndexIn(root, entry)) == key) {
        return String(TextOf(IndexIn(root, root.count + entry)));
      }
    }
    return {};
  }

 private:
  enum Type { Integer = 0x1, Ascii = 0x5, Dictionary = 0xD };
  struct Object {
    std::uint64_t type;
    std::uint64_t count;    // Of what it holds.
    std::uint64_t content;  // The place of its first.
  };

  std::string_view Bytes(std::uint64_t place, std::uint64_t size) const {
    if (place > bytes_.size() || size > bytes_.size() - place) throw Malformed();
    return bytes_.substr(place, size);
  }

  std::uint64_t Number(std::uint64_t place, std::uint64_t size) const {
    if (size > sizeof(std::uint64_t)) throw Malformed();
    std::uint64_t number = 0;
    for (const char byte : Bytes(place, size)) {
      number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
  }

  /// The object number `index`. A count of 15 stands for a number that follows.
  Object ObjectAt(std::uint64_t index) const {
    if (index > bytes_.size()) throw Malformed();
    const auto place = Number(table_ + index * placeSize_, placeSize_);
    const auto marker = Number(place, 1);
    Object object{.type = marker >> 4, .count = marker & 0xF, .content = place + 1};
    if (object.count != 0xF) return object;
    const auto size = Number(object.content, 1);
    if (size >> 4 != Integer) throw Malformed();
    object.count = Number(object.content + 1, std::uint64_t{1} << (size & 0xF));
    object.content += 1 + (std::uint64_t{1} << (size & 0xF));
    return object;
  }

  /// The number of an object that `dictionary` holds: first stand its keys, and then their values.
  std::uint64_t IndexIn(const Object& dictionary, std::uint64_t position) const {
    if (position > bytes_.size()) throw Malformed();
    return Number(dictionary.content + position * indexSize_, indexSize_);
  }

  std::string_view TextOf(std::uint64_t index) const {
    const Object object = ObjectAt(index);
    return object.type == Ascii ? Bytes(object.content, object.count) : std::string_view();
  }

  std::string_view bytes_;
  std::uint64_t placeSize_ = 0;
  std::uint64_t indexSize_ = 0;
  std::uint64_t root_ = 0;
  std::uint64_t table_ = 0;
};

String TextInBinaryList(std::string_view bytes, std::string_view key) {
  try {
    return BinaryList(bytes).TextUnder(key);
  } catch (const BinaryList::Malformed&) {
    return {};
  }
}

}  // namespace

String TextInPropertyList(std::string_view bytes, std::string_view key) {
  return bytes.starts_with(BinaryList::Signature) ? TextInBinaryList(bytes, key)
                                                  : XmlList(key).TextIn(bytes);
}

}  // namespace vintrace::open
