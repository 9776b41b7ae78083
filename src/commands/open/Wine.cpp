#include "commands/open/Wine.h"

#include <langinfo.h>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <system_error>

#include "platform/files/BinaryStream.h"

namespace vintrace::open {
namespace {

namespace fs = std::filesystem;

/// The real path of the command `name`; empty if it isn't on `searchPath`.
fs::path OnSearchPath(std::string_view name, const String& searchPath) {
  for (std::size_t begin = 0, end = 0; end != String::npos; begin = end + 1) {
    end = searchPath.find(':', begin);
    const fs::path command = fs::path(searchPath.substr(begin, end - begin)) / name;
    std::error_code error;
    if (access(command.c_str(), X_OK) == 0) return fs::canonical(command, error);
  }
  return {};
}

/// True if the locale `name` is installed and has UTF-8 characters. If it is empty, the locale of
/// this process's environment.
bool IsUTF8(const String& name) {
  const locale_t locale = newlocale(LC_CTYPE_MASK, name.c_str(), locale_t{});
  if (locale == locale_t{}) return false;
  const bool isUTF8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
  freelocale(locale);
  return isUTF8;
}

/// The folder of a prefix's drives: links named like drives, in lower case, such as "c:".
fs::path DrivesOf(const fs::path& prefix) { return prefix / "dosdevices"; }

/// The drive, such as "C:", whose root is `folder`; empty if there is none.
String DriveAt(const fs::path& folder, const fs::path& drives) {
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    std::error_code error;
    const bool same = fs::equivalent(drives / String{letter, ':'}, folder, error);
    if (same && !error) return {static_cast<char>(letter - 'a' + 'A'), ':'};
  }
  return {};
}

/// True if Windows takes `name`, any component of a path, for something else or refuses it ("Naming
/// Files, Paths, and Namespaces").
bool IsRefused(const String& name) {
  constexpr std::string_view Refused = "\"*:<>?|";
  const bool isDots = name == "." || name == "..";
  const String stem = name.substr(0, name.find('.'));
  const bool isDevice =
      std::ranges::any_of(std::initializer_list<std::string_view>{"CON", "PRN", "AUX", "NUL"},
                          [&](std::string_view device) { return TextEquals(stem, device); });
  const bool isPort =
      stem.size() == 4 && stem[3] >= '0' && stem[3] <= '9' &&
      (TextEquals(stem.substr(0, 3), "COM") || TextEquals(stem.substr(0, 3), "LPT"));
  return isDevice || isPort || (!isDots && (name.ends_with('.') || name.ends_with(' '))) ||
         std::ranges::any_of(name, [&](char c) {
           return static_cast<unsigned char>(c) < ' ' || Refused.find(c) != std::string_view::npos;
         });
}

String WithBackslashes(String path) {
  std::ranges::replace(path, '/', '\\');
  return path;
}

/// `path` relative to `folder`, a folder above it, with a leading slash.
String Below(const fs::path& folder, const fs::path& path) {
  const auto length = folder == folder.root_path() ? 0 : folder.native().size();
  return path.native().substr(length);
}

}  // namespace

fs::path PrefixOf(const fs::path& program) {
  for (fs::path folder = program.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    std::error_code error;
    if (folder.filename() == "drive_c" && fs::is_directory(DrivesOf(folder.parent_path()), error)) {
      return folder.parent_path();
    }
  }
  return {};
}

std::optional<String> WindowsPath(const fs::path& path, const fs::path& prefix) {
  if (path.native().find('\\') != String::npos) return std::nullopt;
  const String whole = "\\\\?\\unix" + WithBackslashes(path.native());
  if (std::any_of(path.begin(), path.end(), IsRefused)) return whole;
  const fs::path drives = DrivesOf(prefix);
  std::error_code error;
  if (prefix.empty() || !fs::is_directory(drives, error))
    return "Z:" + WithBackslashes(path.native());
  fs::path folder = path;
  do {
    folder = folder.parent_path();
    const String drive = DriveAt(folder, drives);
    if (!drive.empty()) return drive + WithBackslashes(Below(folder, path));
  } while (folder.has_relative_path());
  return whole;
}

std::optional<std::string_view> ProcessorOf(const FolderItem& program) {
  constexpr std::uint64_t PlaceOfOffset = 0x3C;
  constexpr std::string_view DOSSignature = "MZ";
  constexpr std::string_view Signature("PE\0\0", 4);
  auto stream = BinaryStream::Open(program, false);
  if (stream.Read(DOSSignature.size(), nullptr) != DOSSignature) return std::nullopt;
  // A number of `size` bytes, the lowest first.
  const auto number = [&](std::size_t size) {
    const String bytes = stream.Read(size, nullptr);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    return value;
  };
  stream.SetPosition(PlaceOfOffset);
  stream.SetPosition(number(4));
  if (stream.Read(Signature.size(), nullptr) != Signature) return "";
  switch (number(2)) {
    case 0x14C:
      return "i386";
    case 0x8664:
      return "x86_64";
    case 0xAA64:
      return "aarch64";
    default:
      return "";
  }
}

bool WineRuns(std::string_view processor, const posix::ProcessEnvironment& environment) {
  const fs::path wine = OnSearchPath("wine", environment.Value("PATH"));
  if (processor.empty() || wine.empty()) return true;
  const fs::path root = wine.parent_path().parent_path();
  bool isAnyThere = false;
  for (const char* folder : {"lib/wine", "lib64/wine", "lib32/wine", "lib/x86_64-linux-gnu/wine",
                             "lib/i386-linux-gnu/wine", "lib/aarch64-linux-gnu/wine"}) {
    for (const std::string_view each : {"i386", "x86_64", "aarch64"}) {
      std::error_code error;
      const String libraries = String(each) + "-windows";
      if (!fs::exists(root / folder / libraries / "ntdll.dll", error)) continue;
      if (each == processor) return true;
      isAnyThere = true;
    }
  }
  return !isAnyThere;
}

void UseUTF8(posix::ProcessEnvironment& environment) {
  if (IsUTF8("")) return;
  const String all = environment.Value("LC_ALL");
  String name = all.empty() ? environment.Value("LC_CTYPE") : all;
  if (name.empty()) name = environment.Value("LANG");
  const String sameLanguage = name.substr(0, name.find('.')) + ".UTF-8";
  environment.Set("LC_CTYPE", IsUTF8(sameLanguage) ? sameLanguage : "C.UTF-8");
  if (all.empty()) return;
  environment.Set("LANG", all);
  environment.Set("LC_ALL", "");  // It would override the others.
}

}  // namespace vintrace::open
