// A whole session on an X server, with a window manager, a shell, a clipboard manager and an update
// service.

#include <QWidget>
#include <algorithm>

#include "desktop/DesktopFixture.h"
#include "peers/Servers.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"
#include "support/RecordingApplication.h"

namespace vintrace::test {
namespace {

/// A clipboard manager, which is asked to save the clipboard when its owner exits.
class ClipboardManager : public QAbstractNativeEventFilter {
 public:
  explicit ClipboardManager(WId window) {
    xcb_set_selection_owner(server_, static_cast<xcb_window_t>(window), Atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    xcb_flush(server_);
    qApp->installNativeEventFilter(this);
  }

  bool IsAsked() const { return request_.target == Atom("SAVE_TARGETS"); }

  void Answer() {
    // Every X11 event is 32 bytes long.
    union {
      xcb_selection_notify_event_t event;
      char bytes[32];
    } answer{};
    answer.event.response_type = XCB_SELECTION_NOTIFY;
    answer.event.time = request_.time;
    answer.event.requestor = request_.requestor;
    answer.event.selection = request_.selection;
    answer.event.target = request_.target;
    answer.event.property = request_.property;
    xcb_send_event(server_, 0, request_.requestor, XCB_EVENT_MASK_NO_EVENT, answer.bytes);
    xcb_flush(server_);
  }

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto& event = *static_cast<const xcb_selection_request_event_t*>(message);
    if ((event.response_type & 0x7F) != XCB_SELECTION_REQUEST) return false;
    request_ = event;
    return true;
  }

 private:
  xcb_atom_t Atom(std::string_view name) const {
    const auto cookie =
        xcb_intern_atom(server_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(server_, cookie, nullptr), &std::free);
    return reply->atom;
  }

  xcb_connection_t* server_ =
      qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  xcb_selection_request_event_t request_{};
};

class StoryOnDesktop : public ProgramOnDesktop {
 protected:
  /// Waits for the next address that the browser is given.
  void ExpectOpened(std::string_view address) const {
    EXPECT_TRUE(Comes([&] { return Opened() == address; })) << Opened();
    std::filesystem::remove(folder.Path() / "opened");
  }

  /// Enters a path in a file dialog.
  static void ChooseIn(WId dialog, const std::string& path) {
    OutputOf("xdotool", {"windowactivate", "--sync", QString::number(dialog), "type",
                         QString::fromStdString(path)});
    Press(dialog, {"Return"});
  }

  const Authority authority{folder.Path(), "Root"};
  const Server nginx{folder.Path(), authority.Sign("service")};
  const std::string host = "localhost:" + std::to_string(nginx.Port());
  const Environment root{"VINTRACE_TEST_ROOT", authority.Root().c_str()};
  const Environment service{"VINTRACE_TEST_SERVICE", host.c_str()};
};

TEST_F(StoryOnDesktop, DocumentsAreShownCopiedOpenedClosedAndDropped) {
  StartWith({PathOfDocument("the first.indd"), PathOfDocument("二つ目.indd", 15)});
  const WId notice = WindowNamed("Vintrace CS Ver.1.20");
  const WId first = WindowNamed("the first.indd");
  const WId second = WindowNamed("二つ目.indd");
  ASSERT_TRUE(HasWindows({"Vintrace CS Ver.1.20", "the first.indd", "二つ目.indd"}));

  // Move the update notice off the documents, and read them.
  OutputOf("xdotool", {"windowmove", QString::number(notice), "600", "600"});
  const QSize product(161, 20);
  EXPECT_NE(Drawn("閉", product, 12, Qt::black), Drawn("該", product, 12, Qt::black))
      << "the font has no Japanese glyphs";
  EXPECT_TRUE(Shows(first, {104, 38}, Drawn("Adobe InDesign CS6", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 57}, Drawn("Windows Edition", {137, 18}, 10, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 78}, Drawn("8.0.0.397", {160, 25}, 14, Qt::black)));
  EXPECT_TRUE(Shows(second, {104, 38}, Drawn("Ver.15 CC2019より新しい", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(second, {105, 78}, Drawn("サブバージョン不明", {160, 25}, 14, Qt::black)));
  const QPoint link(20, 114);
  const QString address = QString::fromUtf8(endpoints::WebPage.data(), endpoints::WebPage.size());
  EXPECT_TRUE(Shows(second, link, Drawn(address, {114, 20}, 12, Qt::blue)));
  Click(second, Place(second, link + QPoint(50, 8)));
  EXPECT_TRUE(Shows(second, link, Drawn(address, {114, 20}, 12, Qt::red)));
  ExpectOpened(endpoints::WebPage);

  Press(first, {"ctrl+c"});
  DismissMessage();
  const std::string row = "the first.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397";
  EXPECT_EQ(Clipboard(), row);
  Press(second, {"ctrl+alt+c"});
  DismissMessage();
  const std::string rows =
      "二つ目.indd\tVer.15 CC2019より新しい\t\tサブバージョン不明\n" + row + '\n';
  EXPECT_EQ(Clipboard(), rows);

  const RecordingApplication application(
      folder.Item("prefix/drive_c/Program Files/Adobe InDesign CS6/app"));
  Click(first, Place(first, {90, 121}));
  const WId dialog = WindowNamed("Adobe InDesign CS6を選択して下さい。");
  ASSERT_NE(dialog, 0U);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("later.indd")})));
  ChooseIn(dialog, application.Item().NativePath());
  EXPECT_EQ(application.AwaitStart(), Lines{folder.Item("the first.indd").NativePath()});
  ASSERT_TRUE(HasWindows({"Vintrace CS Ver.1.20", "later.indd", "二つ目.indd"}));

  Press(notice, {"Return"});
  ASSERT_TRUE(HasWindows({"later.indd", "二つ目.indd"}));
  ExpectOpened(endpoints::DownloadPage);
  const WId about = OpenAboutWindow(second);
  const QImage picture = QImage::fromData(QByteArrayView(pictures::splash()->Png()));
  ASSERT_EQ(Screenshot(about).size(), picture.size());
  const QRect bare(0, 0, 200, 90);  // The window has no text there.
  const QImage expected = picture.copy(bare).convertToFormat(QImage::Format_RGB32);
  EXPECT_TRUE(Comes([&] { return Screenshot(about).copy(bare) == expected; }));
  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"later.indd", "二つ目.indd"}));
  Press(second, {"ctrl+alt+w"});
  ASSERT_TRUE(HasWindows({"Vintrace"}));

  const WId standIn = WindowNamed("Vintrace");
  EXPECT_TRUE(IsTakenBy(standIn, AddressOf("the third.indd")));
  ASSERT_TRUE(HasWindows({"the third.indd"}));
  const WId third = WindowNamed("the third.indd");
  Press(third, {"ctrl+o"});
  const WId question = WindowNamed("(Open|開く).*");
  ASSERT_NE(question, 0U);
  ChooseIn(question, folder.Item("the first.indd").NativePath());
  ASSERT_TRUE(HasWindows({"the first.indd", "the third.indd"}));
  Click(third, Place(third, {200, 120}));
  ASSERT_TRUE(HasWindows({"the first.indd"}));

  // Quit by a click on the last item of the first menu.
  const WId bar = WindowNamed("the first.indd");
  Click(bar, {20, 10});
  QStringList windows;
  ASSERT_TRUE(Comes([&] {
    windows = OutputOf("xdotool", {"search", "--onlyvisible", "--class", "^vintrace$"}).split('\n');
    return windows.removeOne(QString::number(bar)) && windows.front().toULongLong() != 0;
  }));
  const WId menu = windows.front().toULongLong();
  const QRect area = Screenshot(menu).rect();
  const QWidget keeper;
  ClipboardManager manager(keeper.winId());
  Click(menu, {area.center().x(), area.bottom() - 10});
  EXPECT_TRUE(Comes([&] { return manager.IsAsked(); }));
  EXPECT_EQ(Clipboard(), rows) << "the clipboard is lost before the manager has saved it";
  manager.Answer();
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
