#include "platform/files/FolderItem.h"

namespace vintrace {
namespace {

/// True for the bytes that stand for themselves in a word of any shell. Shells don't interpret
/// bytes above ASCII.
bool IsPlainInShell(char byte) {
  constexpr std::string_view Plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-+,:@";
  return static_cast<unsigned char>(byte) >= 0x80 || Plain.find(byte) != std::string_view::npos;
}

/// True for a line feed, which a shell drops after a backslash, and for a carriage return, which a
/// reader of text would take for a part of the line's end.
bool IsPartOfLineEnd(char byte) { return byte == '\n' || byte == '\r'; }

/// The bytes that a shell reads from a word; nil if a backslash or a quotation is unfinished.
std::optional<String> Unquoted(std::string_view word) {
  String bytes;
  while (!word.empty()) {
    const char first = word.front();
    word.remove_prefix(1);
    if (first == '\\') {
      if (word.empty()) return std::nullopt;
      bytes += word.front();
      word.remove_prefix(1);
    } else if (first == '\'') {
      const auto end = word.find('\'');
      if (end == std::string_view::npos) return std::nullopt;
      bytes += word.substr(0, end);
      word.remove_prefix(end + 1);
    } else {
      bytes += first;
    }
  }
  return bytes;
}

}  // namespace

String FolderItem::Name() const {
  const auto last = path_.find_last_not_of('/');
  if (last == String::npos) return {};
  const auto slash = path_.find_last_of('/', last);
  const auto first = slash == String::npos ? 0 : slash + 1;
  return path_.substr(first, last + 1 - first);
}

FolderItem FolderItem::Child(std::string_view name) const {
  return ItemRelativeTo(path_.empty() ? "/" : path_, name);
}

String FolderItem::ShellPath() const {
  String form;
  for (const char byte : path_) {
    if (IsPartOfLineEnd(byte)) {
      form.append(1, '\'').append(1, byte).append(1, '\'');
      continue;
    }
    if (!IsPlainInShell(byte)) form += '\\';
    form += byte;
  }
  return form;
}

std::optional<FolderItem> GetFolderItem(std::string_view path, PathMode mode) {
  const auto native = mode == PathMode::Shell ? Unquoted(path) : std::optional(String(path));
  if (!native || !native->starts_with('/')) return std::nullopt;
  FolderItem item(*native);
  return item.IsPossible() ? std::optional(std::move(item)) : std::nullopt;
}

FolderItem ItemRelativeTo(std::string_view folder, std::string_view path) {
  if (folder.empty() || path.empty() || path.starts_with('/')) return FolderItem(String(path));
  String whole(folder);
  if (!whole.ends_with('/')) whole += '/';
  return FolderItem(whole.append(path));
}

}  // namespace vintrace
