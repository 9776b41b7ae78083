#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/qt/DirectoryListing.h"

namespace vintrace::qt {

/// The items of a folder that pass a filter, as rows to be drawn. The system is asked for a row's
/// size and date when they are first drawn.
class DirectoryModel : public QAbstractTableModel {
 public:
  enum Column { Name, Size, Modified, ColumnCount };

  explicit DirectoryModel(QObject* parent = nullptr);

  /// Turns to `folder`, whose items are `items`, in their order. The filter stays.
  void Show(std::filesystem::path folder, std::vector<DirectoryItem> items);
  void SetFilter(ItemFilter filter);

  const DirectoryItem& Item(int row) const { return items_[shown_[static_cast<std::size_t>(row)]]; }
  /// The row of the item with just these bytes as its name, or -1.
  int RowOf(std::string_view name) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Searches names, whichever column the search starts in.
  QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                        Qt::MatchFlags flags) const override;

 private:
  void FindShown();
  QString Text(int row, int column) const;
  const ItemDetails& Details(int row) const;

  std::filesystem::path folder_;
  std::vector<DirectoryItem> items_;
  std::vector<std::size_t> shown_;  // Indices of items_.
  ItemFilter filter_;
  mutable std::unordered_map<std::size_t, ItemDetails> details_;  // By index of items_.
  QIcon folderIcon_;
  QIcon fileIcon_;
};

}  // namespace vintrace::qt
