// What users see of the windows, and what assistive technology presents.

#include <QAccessible>
#include <QFontDatabase>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <map>

#include "online/UpdateWin.h"
#include "platform/ui/QtHostFixture.h"
#include "platform/ui/qt/widgets/PictureIcon.h"
#include "resources/Pictures.h"
#include "shell/Window1.h"
#include "shell/Window2.h"

namespace vintrace::test {
namespace {

using online::UpdateWin;
using AppearanceTest = QtHostTest;

TEST_F(AppearanceTest, TextsArePlainSanitizedAndElided) {
  const auto window = NewWindow<Window1>();
  window->SetDocumentName("<b>[*]&\n\xFF.indd");
  EXPECT_EQ(Widget(*window).windowHandle()->title(), "<b>[*]&\uFFFD\uFFFD.indd");
  EXPECT_FALSE(Child(*window, "Label1").isVisible());

  window->SetBuildText(String("8.\0\n<b>\xFF\x1B", 9));
  const auto& label = Child<QLabel>(*window, "StaticText5");
  EXPECT_EQ(label.text(), "8.\uFFFD\uFFFD<b>\uFFFD\uFFFD");
  EXPECT_EQ(label.textFormat(), Qt::PlainText);

  window->SetProductText(String(200, 'w') + "<i>");
  const auto& tooLong = Child<QLabel>(*window, "StaticText2");
  EXPECT_TRUE(tooLong.text().endsWith(QChar(0x2026)));
  EXPECT_LE(tooLong.fontMetrics().horizontalAdvance(tooLong.text()), tooLong.width());
  EXPECT_TRUE(tooLong.toolTip().contains("&lt;i&gt;"));
}

TEST_F(AppearanceTest, PicturesAreDrawnUnscaledOnNormalAndHighDpiScreens) {
  const auto window = NewWindow<Window1>();
  const auto decoded = [](std::string_view png, QImage::Format format) {
    return QImage::fromData(QByteArrayView(png)).convertToFormat(format);
  };
  const auto picture = pictures::und();
  window->SetPicture("und");
  QImage drawn(48, 48, QImage::Format_ARGB32_Premultiplied);
  drawn.fill(Qt::transparent);
  Child(*window, "Canvas1").render(&drawn, {}, {}, {});
  EXPECT_EQ(drawn, decoded(picture->Png(), drawn.format()));
  const QImage dense = qt::IconOf(*picture).pixmap({48, 48}, 2.0).toImage();
  EXPECT_EQ(dense, decoded(picture->PngAt2x(), dense.format()));
}

/// The accessible tree below `item`, an item a line: its depth, role, name, and what can be done
/// with it.
std::string TreeOf(QAccessibleInterface& item, int depth = 0) {
  static const std::map<QAccessible::Role, std::string> Roles = {
      {QAccessible::Window, "window"},    {QAccessible::Dialog, "dialog"},
      {QAccessible::MenuBar, "menu bar"}, {QAccessible::MenuItem, "item"},
      {QAccessible::PopupMenu, "menu"},   {QAccessible::Separator, "separator"},
      {QAccessible::StaticText, "text"},  {QAccessible::Button, "button"},
      {QAccessible::Link, "link"},        {QAccessible::Graphic, "picture"},
      {QAccessible::Client, "content"}};
  const auto role = Roles.find(item.role());
  std::string tree(static_cast<std::size_t>(depth), ' ');
  tree += role == Roles.end() ? "other" : role->second;
  tree += ' ' + item.text(QAccessible::Name).toStdString();
  const QString shortcut = item.text(QAccessible::Accelerator);
  if (!shortcut.isEmpty()) tree += " (" + shortcut.toStdString() + ')';
  auto* actions = item.actionInterface();
  const bool isPressable = actions && actions->actionNames().contains(actions->pressAction());
  if (isPressable) tree += " *";
  tree += '\n';
  for (int i = 0; i < item.childCount(); ++i) tree += TreeOf(*item.child(i), depth + 1);
  return tree;
}

TEST_F(AppearanceTest, AssistiveTechnologySeesAndPressesWhatTheUserDoes) {
  const auto tree = [&](const Window& window) {
    return TreeOf(*QAccessible::queryAccessibleInterface(&Widget(window)));
  };
  const std::string site = page.front().substr(0, page.front().size() - 1);
  const std::string openable = "  link " + site + "/\n  button 該当バージョンで開く *\n";
  const std::string unknown = "  link " + site + "/ *\n  button 該当バージョンで開く\n";
  const std::string documentTree =
      "window a.indd\n content \n  button 閉じる *\n  text Vintrace CS\n  text Adobe InDesign CS3\n"
      "  text Macintosh Edition\n  text サブバージョン不明\n  text a.indd\n"
      "  picture 製品のアイコン\n" +
      openable +
      " menu bar メニューバー\n  item ファイル\n   menu \n    item 開く (Ctrl+O) *\n"
      "    item 終了 (Ctrl+Q) *\n  item 編集\n   menu \n    item コピー (Ctrl+C) *\n"
      "    item 全てコピー (Ctrl+Alt+C) *\n    item 閉じる (Ctrl+W) *\n"
      "    item 全て閉じる (Ctrl+Alt+W) *\n    item Update Check (Ctrl+R) *\n    separator \n"
      "    item Vintrace ... *\n";
  const auto document = NewWindow<Window1>();
  document->SetDocumentName("a.indd");
  EXPECT_EQ(tree(*document), documentTree);
  document->SetOpenable(false);
  EXPECT_EQ(tree(*document), ReplaceAll(documentTree, openable, unknown));
  EXPECT_EQ(tree(*NewWindow<UpdateWin>()),
            "window Vintrace CS Ver.1.20\n content \n  text 新しいバージョンが公開されています。\n"
            "  button 閉じる *\n  button 最新版をダウンロード (Enter) *\n"
            "  link サイトを見に行く " +
                site + "/ *\n  picture Vintraceのアイコン\n");
  const auto other = NewWindow<Window1>();
  other->SetDocumentName("a.indd");
  const auto about = NewWindow<Window2>();
  EXPECT_EQ(tree(*about),
            "dialog Vintrace CS\n content \n  link " + site + " *\n  link " +
                std::string(endpoints::Mail) +
                " *\n  text Ver. 1.20\n  text I check the last making application version of "
                "documents made after InDesign CS.\n");
  about->Close();
  document->Close();
  EXPECT_EQ(tree(*other), documentTree) << "a closed window takes no menu with it";
  auto* link = QAccessible::queryAccessibleInterface(&Child(*other, "StaticText4"));
  link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(host.urls, Lines{}) << "a button covers the link";
  other->SetOpenable(false);
  link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(host.urls, page);
}

TEST_F(AppearanceTest, WindowsHaveTheirSizesAndTextsCanBeRead) {
  const std::tuple<std::shared_ptr<Window>, QSize, QSize, QSize> rows[] = {
      {NewWindow<Window1>(), {280, 150}, {280, 150}, {280, 150}},
      {NewWindow<UpdateWin>(), {337, 115}, {64, 64}, {32000, 32000}},
      {NewWindow<Window2>(), {460, 300}, {460, 300}, {460, 300}},
  };
  for (const auto& [window, size, least, most] : rows) {
    const QWidget& widget = Widget(*window);
    const QSize bar(0, window->MenuBar() ? widget.findChild<QMenuBar*>()->height() : 0);
    EXPECT_EQ(widget.size() - bar, size);
    EXPECT_EQ(widget.minimumSize() - bar, least);
    EXPECT_EQ(widget.maximumSize() - bar, most);
    for (const auto* label : widget.findChildren<QLabel*>()) {
      EXPECT_GE(label->font().pixelSize(), 10) << label->text().toStdString();
    }
  }
}

/// Shows the controls of `window` in another font, those in Osaka only in a Japanese one, and
/// returns the texts that don't fit then.
Lines TextsCutIn(const qt::WindowWidget& widget, const QString& family, bool isJapanese) {
  Lines cut;
  for (const auto& control : widget.Shown().Controls()) {
    const auto& design = control->Design();
    auto* shown = widget.findChild<QWidget*>(QString::fromStdString(String(design.Name)));
    if (shown->isHidden() || (design.TextFont == "Osaka" && !isJapanese)) continue;
    QFont font = shown->font();
    font.setFamily(family);
    shown->setFont(font);
    shown->hide();
    shown->show();  // Measures the text of a label again.
    if (!shown->toolTip().isEmpty()) cut.push_back(shown->toolTip().toStdString());
    constexpr int Frame = 4;
    const auto* button = qobject_cast<const QPushButton*>(shown);
    if (button != nullptr &&
        button->fontMetrics().horizontalAdvance(button->text()) > button->width() - 2 * Frame) {
      cut.push_back(button->text().toStdString());
    }
  }
  return cut;
}

TEST_F(AppearanceTest, NoFixedTextIsCutInAnyFontOfTheDesktop) {
  // The fonts that satisfy the package's dependency, others that the program prefers to them, and
  // defaults of desktops, which have no Japanese.
  const std::pair<QString, bool> families[] = {
      {"IPAexGothic", true},      {"IPAPGothic", true},   {"VL PGothic", true},
      {"TakaoPGothic", true},     {"IPAGothic", true},    {"VL Gothic", true},
      {"Noto Sans CJK JP", true}, {"DejaVu Sans", false}, {"Cantarell", false}};
  int installed = 0;
  for (const auto& [family, isJapanese] : families) {
    if (!QFontDatabase::hasFamily(family)) continue;
    ++installed;
    for (const int points : {9, 10, 11, 24}) {
      QApplication::setFont(QFont(family, points));
      const auto document = NewWindow<Window1>();
      const auto expectWhole = [&, japanese = isJapanese](const Window& window) {
        EXPECT_EQ(TextsCutIn(Widget(window), family, japanese), Lines{})
            << family.toStdString() << ' ' << points;
      };
      for (const char* product : {"Adobe InDesign CS5.5", "Adobe InDesign CC 2019",
                                  "InDesign CSより下位", "Ver.15 CC2019より新しい"}) {
        document->SetProductText(product);
        expectWhole(*document);
      }
      document->SetOpenable(false);
      expectWhole(*document);
      document->Close();
      const auto notice = NewWindow<UpdateWin>();
      expectWhole(*notice);
      notice->Close();
      const auto about = NewWindow<Window2>();
      expectWhole(*about);
      about->Close();
    }
  }
  EXPECT_GE(installed, 4) << "too few of the fonts are installed";
}

}  // namespace
}  // namespace vintrace::test
