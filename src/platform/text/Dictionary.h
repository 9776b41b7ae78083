#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// A map whose keys are compared ignoring ASCII case. A key keeps its first spelling, and entries
/// are enumerated in the order in which their keys were first set.
template <class Value>
class Dictionary {
 public:
  using Entry = std::pair<String, Value>;

  std::size_t Count() const { return entries_.size(); }

  bool HasKey(std::string_view key) const { return index_.contains(LowerASCII(key)); }

  /// The value of `key`; nil if there is none.
  std::optional<Value> Lookup(std::string_view key) const {
    const auto found = index_.find(LowerASCII(key));
    if (found == index_.end()) return std::nullopt;
    return entries_[found->second].second;
  }

  /// Sets the value of `key`, replacing any other.
  void Set(std::string_view key, Value value) {
    const auto [place, isNew] = index_.try_emplace(LowerASCII(key), entries_.size());
    if (isNew) {
      entries_.emplace_back(String(key), std::move(value));
    } else {
      entries_[place->second].second = std::move(value);
    }
  }

  /// Removes the entry of `key`, if there is one.
  void Remove(std::string_view key) {
    const auto found = index_.find(LowerASCII(key));
    if (found == index_.end()) return;
    const std::size_t removed = found->second;
    index_.erase(found);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(removed));
    if (removed == entries_.size()) return;
    for (auto& indexed : index_) {
      if (indexed.second > removed) --indexed.second;
    }
  }

  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }
  /// The entry at the 0-based `position`, which must exist.
  const Entry& operator[](std::size_t position) const { return entries_[position]; }

 private:
  std::vector<Entry> entries_;
  std::unordered_map<String, std::size_t> index_;  // Positions by lower-case key.
};

}  // namespace vintrace
