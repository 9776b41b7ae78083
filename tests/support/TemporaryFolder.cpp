#include "support/TemporaryFolder.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp

#include <fstream>
#include <stdexcept>

namespace vintrace::test {

TemporaryFolder::TemporaryFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "vintrace-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

FolderItem TemporaryFolder::Item(std::string_view name) const {
  return ItemRelativeTo(path_.native(), name);
}

FolderItem TemporaryFolder::File(std::string_view name, std::string_view bytes) const {
  FolderItem item = Item(name);
  std::ofstream stream(item.NativePath(), std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) throw std::runtime_error("can't write " + item.NativePath());
  return item;
}

}  // namespace vintrace::test
