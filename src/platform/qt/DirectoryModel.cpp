#include "platform/qt/DirectoryModel.h"

#include <QDateTime>
#include <QFileIconProvider>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "platform/qt/DisplayText.h"

namespace vintrace::qt {
namespace {

QString SizeText(const ItemDetails& details) {
  if (!details.size) return {};
  return QLocale(QLocale::Japanese)
      .formattedDataSize(static_cast<qint64>(*details.size), 1, QLocale::DataSizeTraditionalFormat);
}

QString ModifiedText(const ItemDetails& details) {
  if (!details.modified) return {};
  return QDateTime::fromSecsSinceEpoch(details.modified->time_since_epoch().count())
      .toString(QStringLiteral("yyyy/MM/dd HH:mm"));
}

QVariant Alignment(int column) {
  return QVariant::fromValue(Qt::AlignVCenter |
                             (column == DirectoryModel::Size ? Qt::AlignRight : Qt::AlignLeft));
}

// A tool tip reads what looks like markup as markup, and a name may look like it.
QString ToolTip(std::string_view name) { return ToolTipText(DisplayText(name)); }

}  // namespace

DirectoryModel::DirectoryModel(QObject* parent) : QAbstractTableModel(parent) {
  const QFileIconProvider icons;
  folderIcon_ = icons.icon(QFileIconProvider::Folder);
  fileIcon_ = icons.icon(QFileIconProvider::File);
}

void DirectoryModel::Show(std::filesystem::path folder, std::vector<DirectoryItem> items) {
  beginResetModel();
  folder_ = std::move(folder);
  items_ = std::move(items);
  details_.clear();
  FindShown();
  endResetModel();
}

void DirectoryModel::SetFilter(ItemFilter filter) {
  beginResetModel();
  filter_ = std::move(filter);
  FindShown();
  endResetModel();
}

void DirectoryModel::FindShown() {
  shown_.clear();
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (filter_.Passes(items_[i])) shown_.push_back(i);
  }
}

int DirectoryModel::RowOf(std::string_view name) const {
  const auto found = std::find_if(shown_.begin(), shown_.end(),
                                  [&](std::size_t index) { return items_[index].name == name; });
  return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

int DirectoryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int DirectoryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant DirectoryModel::data(const QModelIndex& index, int role) const {
  const bool isName = index.column() == Name;
  switch (role) {
    case Qt::DisplayRole:
      return Text(index.row(), index.column());
    case Qt::DecorationRole:
      if (!isName) return {};
      return Item(index.row()).isDirectory ? folderIcon_ : fileIcon_;
    case Qt::ToolTipRole:
      return isName ? ToolTip(Item(index.row()).name) : QVariant();
    case Qt::TextAlignmentRole:
      return Alignment(index.column());
    default:
      return {};
  }
}

QString DirectoryModel::Text(int row, int column) const {
  switch (column) {
    case Name:
      return DisplayText(Item(row).name);
    case Size:
      return SizeText(Details(row));
    default:
      return ModifiedText(Details(row));
  }
}

const ItemDetails& DirectoryModel::Details(int row) const {
  const auto [entry, isNew] = details_.try_emplace(shown_[static_cast<std::size_t>(row)]);
  if (isNew) entry->second = ReadDetails(folder_ / Item(row).name);
  return entry->second;
}

QVariant DirectoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return Alignment(section);
  if (role != Qt::DisplayRole) return {};
  static const QString titles[] = {QStringLiteral("名前"), QStringLiteral("サイズ"),
                                   QStringLiteral("更新日時")};
  return titles[section];
}

QModelIndexList DirectoryModel::match(const QModelIndex& start, int role, const QVariant& value,
                                      int hits, Qt::MatchFlags flags) const {
  return QAbstractTableModel::match(start.siblingAtColumn(Name), role, value, hits, flags);
}

}  // namespace vintrace::qt
