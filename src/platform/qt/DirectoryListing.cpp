#include "platform/qt/DirectoryListing.h"

#include <QCollator>
#include <QLocale>
#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "platform/String.h"
#include "platform/qt/DisplayText.h"

namespace vintrace::qt {
namespace {

// Each question is answered from what the directory itself tells of the entry; only a link, and an
// entry on a file system that tells nothing, costs a look at the file.
std::optional<DirectoryItem> ItemOf(const std::filesystem::directory_entry& entry) {
  std::error_code error;
  const bool isDirectory = entry.is_directory(error);
  if (!isDirectory && !entry.is_regular_file(error)) return std::nullopt;
  return DirectoryItem{entry.path().filename().native(), isDirectory};
}

std::vector<DirectoryItem> ReadDirectory(const std::filesystem::path& folder,
                                         std::error_code& error) {
  std::vector<DirectoryItem> items;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (auto item = ItemOf(*entry)) items.push_back(*std::move(item));
  }
  if (error) items.clear();
  return items;
}

struct SortedItem {
  QCollatorSortKey key;
  DirectoryItem item;
};

// Names that look alike still need an order that is the same each time: their bytes.
bool StandsBefore(const SortedItem& a, const SortedItem& b) {
  if (a.item.isDirectory != b.item.isDirectory) return a.item.isDirectory;
  const int order = a.key.compare(b.key);
  return order != 0 ? order < 0 : a.item.name < b.item.name;
}

// The program's texts are Japanese, and so is its order of names. It doesn't follow the session's
// locale, because the plain "C" one knows no natural order.
QCollator NaturalOrder() {
  QCollator collator{QLocale(QLocale::Japanese)};
  collator.setNumericMode(true);
  return collator;
}

void Sort(std::vector<DirectoryItem>& items) {
  const QCollator collator = NaturalOrder();
  std::vector<SortedItem> sorted;
  sorted.reserve(items.size());
  for (auto& item : items) {
    sorted.push_back({collator.sortKey(DisplayText(item.name)), std::move(item)});
  }
  std::sort(sorted.begin(), sorted.end(), StandsBefore);
  std::transform(sorted.begin(), sorted.end(), items.begin(),
                 [](SortedItem& each) { return std::move(each.item); });
}

bool EndsIn(std::string_view name, std::string_view suffix) {
  return name.size() >= suffix.size() &&
         TextEquals(name.substr(name.size() - suffix.size()), suffix);
}

}  // namespace

std::vector<DirectoryItem> ListDirectory(const std::filesystem::path& folder,
                                         std::error_code& error) {
  std::vector<DirectoryItem> items = ReadDirectory(folder, error);
  Sort(items);
  return items;
}

bool ItemFilter::Passes(const DirectoryItem& item) const {
  if (!withHidden && item.name.front() == '.') return false;
  if (item.isDirectory || suffixes.empty()) return true;
  return std::any_of(suffixes.begin(), suffixes.end(),
                     [&](const std::string& suffix) { return EndsIn(item.name, suffix); });
}

ItemDetails ReadDetails(const std::filesystem::path& path) {
  ItemDetails details;
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  if (!error) details.size = size;
  // Whole seconds, before the change of clock: a file can be dated so far off that its nanoseconds
  // overflow on the system's clock.
  const auto modified = std::filesystem::last_write_time(path, error);
  if (!error) {
    details.modified =
        std::chrono::file_clock::to_sys(std::chrono::floor<std::chrono::seconds>(modified));
  }
  return details;
}

}  // namespace vintrace::qt
