#include "platform/qt/OpenFileDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

#include "platform/FileRequest.h"
#include "platform/String.h"
#include "platform/qt/DirectoryModel.h"
#include "platform/qt/DisplayText.h"
#include "platform/qt/FilterLabel.h"
#include "platform/qt/Places.h"

namespace vintrace::qt {
namespace {

namespace fs = std::filesystem;

std::string& LastFolder() {
  static std::string folder;
  return folder;
}

fs::file_type TypeOf(const fs::path& path, std::error_code& error) {
  // The system reads a path up to its first zero byte, which would be another path.
  if (path.native().find('\0') != std::string::npos) return fs::file_type::not_found;
  return fs::status(path, error).type();
}

QByteArray Bytes(const fs::path& path) { return QByteArray::fromStdString(path.native()); }

// Background and text together, so that a message is legible on any theme.
QPalette MessageColors() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xFF, 0xF1, 0xC9));
  palette.setColor(QPalette::WindowText, QColor(0x4A, 0x2E, 0x00));
  return palette;
}

}  // namespace

OpenFileDialog::OpenFileDialog(const FileRequest& request, QWidget* parent)
    : QDialog(parent),
      anyItem_(!request.filter),
      remembersFolder_(!request.initialDirectory),
      suffixes_(request.filter ? request.filter->Suffixes() : std::vector<std::string>()),
      model_(new DirectoryModel(this)),
      places_(new QComboBox(this)),
      path_(new QLineEdit(this)),
      up_(new QToolButton(this)),
      list_(new QTreeView(this)),
      status_(new QLabel(this)),
      name_(new QLineEdit(this)),
      filter_(new QComboBox(this)),
      hidden_(new QCheckBox(QStringLiteral("隠しファイルを表示"), this)),
      open_(new QPushButton(QStringLiteral("開く"), this)) {
  setWindowTitle(request.title.empty() ? QStringLiteral("開く") : DisplayText(request.title));
  resize(560, 400);
  SetUpPlaces();
  SetUpList();
  SetUpLines();
  SetUpFilter(request);
  LayOut();
  ConnectNavigation();
  ConnectChoice();
  Begin(request);
}

void OpenFileDialog::SetUpPlaces() {
  static const struct {
    QString label;
    QStyle::StandardPixmap icon;
  } looks[] = {
      {QStringLiteral("ホーム"), QStyle::SP_DirHomeIcon},
      {QStringLiteral("デスクトップ"), QStyle::SP_DesktopIcon},
      {QStringLiteral("ドキュメント"), QStyle::SP_DirIcon},
      {QStringLiteral("ファイルシステム"), QStyle::SP_DriveHDIcon},
  };
  places_->setObjectName(QStringLiteral("places"));
  places_->setPlaceholderText(QStringLiteral("場所"));
  for (const Place& place : UsualPlaces()) {
    const auto& [label, icon] = looks[place.kind];
    places_->addItem(style()->standardIcon(icon), label, Bytes(place.folder));
  }
}

void OpenFileDialog::SetUpList() {
  list_->setModel(model_);
  list_->setRootIsDecorated(false);
  list_->setItemsExpandable(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setTextElideMode(Qt::ElideMiddle);
  list_->installEventFilter(this);
  QHeaderView* header = list_->header();
  const QFontMetrics metrics = list_->fontMetrics();
  const int margin = metrics.horizontalAdvance(QStringLiteral("0000"));
  header->setStretchLastSection(false);
  header->setSectionsMovable(false);
  header->setSectionResizeMode(DirectoryModel::Name, QHeaderView::Stretch);
  header->resizeSection(DirectoryModel::Size,
                        metrics.horizontalAdvance(QStringLiteral("0,000.0 MB")) + margin);
  header->resizeSection(DirectoryModel::Modified,
                        metrics.horizontalAdvance(QStringLiteral("0000/00/00 00:00")) + margin);
}

void OpenFileDialog::SetUpFilter(const FileRequest& request) {
  filter_->setObjectName(QStringLiteral("filter"));
  if (!suffixes_.empty()) filter_->addItem(FilterLabel(*request.filter));
  filter_->addItem(QStringLiteral("すべてのファイル"));
  filter_->setVisible(!suffixes_.empty());
  model_->SetFilter({suffixes_, false});
}

void OpenFileDialog::LayOut() {
  auto* top = new QHBoxLayout;
  top->addWidget(places_);
  top->addWidget(path_, 1);
  top->addWidget(up_);
  auto* nameLabel = new QLabel(QStringLiteral("名前:"), this);
  auto* nameRow = new QHBoxLayout;
  nameRow->addWidget(nameLabel);
  nameRow->addWidget(name_, 1);
  nameRow->addWidget(filter_);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(hidden_);
  bottom->addStretch();
  bottom->addWidget(MakeButtons());
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(top);
  rows->addWidget(list_, 1);
  rows->addWidget(status_);
  rows->addLayout(nameRow);
  rows->addLayout(bottom);
  list_->setFocus();
}

QWidget* OpenFileDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox(this);
  open_->setDefault(true);
  buttons->addButton(open_, QDialogButtonBox::AcceptRole);
  buttons->addButton(QStringLiteral("キャンセル"), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { Confirm(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

void OpenFileDialog::SetUpLines() {
  path_->setObjectName(QStringLiteral("path"));
  path_->setReadOnly(true);
  path_->setFocusPolicy(Qt::ClickFocus);
  path_->setAccessibleName(QStringLiteral("表示中のフォルダ"));
  up_->setIcon(style()->standardIcon(QStyle::SP_FileDialogToParent));
  up_->setToolTip(QStringLiteral("上のフォルダへ (Alt+↑)"));
  up_->setAccessibleName(QStringLiteral("上のフォルダへ"));
  status_->setObjectName(QStringLiteral("status"));
  status_->setTextFormat(Qt::PlainText);
  // A long message must not widen the dialog.
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  status_->setMargin(2);
  name_->setObjectName(QStringLiteral("name"));
  name_->setAccessibleName(QStringLiteral("名前"));
  hidden_->setToolTip(QStringLiteral("Ctrl+H"));
}

void OpenFileDialog::ConnectNavigation() {
  connect(places_, &QComboBox::activated, this,
          [this](int index) { Enter(places_->itemData(index).toByteArray().toStdString()); });
  connect(up_, &QToolButton::clicked, this, [this] { GoUp(); });
  connect(filter_, &QComboBox::activated, this, [this] { Refilter(); });
  connect(hidden_, &QCheckBox::toggled, this, [this] { Refilter(); });
  new QShortcut(Qt::ALT | Qt::Key_Up, this, [this] { GoUp(); });
  new QShortcut(Qt::CTRL | Qt::Key_H, this, [this] { hidden_->toggle(); });
}

void OpenFileDialog::ConnectChoice() {
  connect(list_, &QTreeView::doubleClicked, this,
          [this](const QModelIndex& index) { Choose(folder_ / model_->Item(index.row()).name); });
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { ShowSelection(); });
  connect(name_, &QLineEdit::textEdited, this, [this] {
    list_->clearSelection();
    ShowSelection();
  });
}

// Return needs no handling: the list leaves it to the dialog, whose default button is "open".
bool OpenFileDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched != list_ || event->type() != QEvent::KeyPress) {
    return QDialog::eventFilter(watched, event);
  }
  const auto* keyPress = static_cast<const QKeyEvent*>(event);
  // A path begins, unless the sign is a part of a name that is being searched.
  if (keyPress->text() == '/' || (keyPress->text() == '~' && SelectedItem() == nullptr)) {
    name_->setFocus();
    name_->selectAll();
    return QCoreApplication::sendEvent(name_, event);
  }
  const int key = keyPress->key();
  if (key == Qt::Key_Backspace) {
    GoUp();
    return true;
  }
  // With the focus the list gets a current row that no one chose, and none in the next folder. From
  // such a row, Down and type-ahead would skip it; without any, End would take the first.
  if (SelectedItem() == nullptr) {
    const auto start = key == Qt::Key_End ? model_->index(0, DirectoryModel::Name) : QModelIndex();
    list_->selectionModel()->setCurrentIndex(start, QItemSelectionModel::NoUpdate);
  }
  return false;
}

void OpenFileDialog::Begin(const FileRequest& request) {
  std::error_code error;
  const fs::path wanted =
      request.initialDirectory ? request.initialDirectory->NativePath() : LastFolder();
  for (const fs::path& folder : {NormalPath(wanted), NormalPath(HomeFolder()), fs::path("/")}) {
    if (fs::is_directory(folder, error) && Enter(folder)) return;
  }
}

bool OpenFileDialog::Enter(const fs::path& folder) {
  std::error_code error;
  auto items = ListDirectory(folder, error);
  if (error) {
    ShowFolder();
    Complain(QStringLiteral("「%1」を表示できません"), folder, error);
    return false;
  }
  folder_ = folder;
  model_->Show(folder, std::move(items));
  name_->setText({});
  list_->scrollToTop();
  ShowFolder();
  ShowSelection();
  return true;
}

void OpenFileDialog::GoUp() {
  const fs::path left = folder_;
  if (left.has_relative_path() && Enter(left.parent_path())) Select(left.filename().native());
}

void OpenFileDialog::Refilter() {
  const DirectoryItem* item = SelectedItem();
  const std::string selected = item == nullptr ? std::string() : item->name;
  const bool all = filter_->currentIndex() + 1 == filter_->count();
  model_->SetFilter({all ? std::vector<std::string>() : suffixes_, hidden_->isChecked()});
  Select(selected);
}

void OpenFileDialog::Select(const std::string& name) {
  list_->setCurrentIndex(model_->index(model_->RowOf(name), DirectoryModel::Name));
  ShowSelection();
}

const DirectoryItem* OpenFileDialog::SelectedItem() const {
  const QModelIndexList rows = list_->selectionModel()->selectedRows();
  return rows.isEmpty() ? nullptr : &model_->Item(rows.front().row());
}

void OpenFileDialog::Confirm() {
  const DirectoryItem* item = SelectedItem();
  Choose(item != nullptr ? folder_ / item->name : TypedPath(name_->text().toStdString(), folder_));
}

void OpenFileDialog::Choose(const fs::path& path) {
  std::error_code error;
  switch (TypeOf(path, error)) {
    case fs::file_type::directory:
      if (IsBundle(path)) {
        Accept(path);
      } else {
        Enter(path);
      }
      break;
    case fs::file_type::regular:
      Accept(path);
      break;
    case fs::file_type::not_found:
      Complain(QStringLiteral("「%1」は見つかりません"), path);
      break;
    case fs::file_type::none:
      Complain(QStringLiteral("「%1」を開けません"), path, error);
      break;
    default:
      Complain(QStringLiteral("「%1」は通常のファイルではないため開けません"), path);
  }
}

bool OpenFileDialog::IsBundle(const fs::path& folder) const {
  constexpr std::string_view BundleSuffix = ".app";
  std::error_code error;
  return anyItem_ && TextEquals(folder.extension().native(), BundleSuffix) &&
         fs::is_directory(folder / "Contents", error);
}

void OpenFileDialog::Accept(const fs::path& item) {
  chosenPath_ = item.native();
  if (remembersFolder_) LastFolder() = item.parent_path().native();
  accept();
}

void OpenFileDialog::ShowFolder() {
  path_->setText(DisplayText(folder_.native()));
  places_->setCurrentIndex(places_->findData(Bytes(folder_)));
  up_->setEnabled(folder_.has_relative_path());
}

void OpenFileDialog::ShowSelection() {
  const DirectoryItem* item = SelectedItem();
  const bool isTyped = item == nullptr && name_->isModified();
  if (!isTyped) {
    const bool isEntered =
        item == nullptr || (item->isDirectory && !IsBundle(folder_ / item->name));
    name_->setText(isEntered ? QString() : DisplayText(item->name));
  }
  open_->setEnabled(item != nullptr || !name_->text().isEmpty());
  ShowCount();
}

void OpenFileDialog::ShowCount() {
  status_->setText(
      QStringLiteral("%1 項目").arg(QLocale(QLocale::Japanese).toString(model_->rowCount())));
  status_->setAutoFillBackground(false);
  status_->setPalette({});
}

void OpenFileDialog::Complain(const QString& text, const fs::path& path, std::error_code error) {
  const fs::path shown = path.parent_path() == folder_ ? path.filename() : path;
  const QString name =
      status_->fontMetrics().elidedText(DisplayText(shown.native()), Qt::ElideMiddle, width() / 2);
  const QString reason = error ? QStringLiteral(": ") + DisplayText(error.message()) : QString();
  status_->setText(text.arg(name) + reason);
  status_->setPalette(MessageColors());
  status_->setAutoFillBackground(true);
}

}  // namespace vintrace::qt
