// The program as its user meets it: on an X server with a window manager.

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <fstream>

#include "platform/qt/Fonts.h"
#include "resources/Endpoints.h"
#include "support/DocumentBuilder.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

constexpr int Patience = 15'000;  // Milliseconds; what is awaited comes within one second.

/// The standard output of a command that ends by itself.
QString OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(Patience)) << program.toStdString();
  return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

/// `text` as it looks on the windows' light ground.
QImage Drawn(const QString& text, QSize size, int pixelSize, QColor color) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(0xEC, 0xEC, 0xEC));
  QPainter painter(&image);
  painter.setFont(qt::FontOf("Osaka", pixelSize, false));
  painter.setPen(color);
  painter.drawText(QRect({}, size), Qt::AlignLeft | Qt::AlignTop, text);
  return image;
}

class DesktopTest : public testing::Test {
 protected:
  DesktopTest() {
    // A browser that notes the address which it is given.
    folder.File("xdg-open", "#!/bin/sh\necho \"$1\" >>\"${0%/*}/opened\"\n");
    std::filesystem::permissions(folder.Path() / "xdg-open", std::filesystem::perms::owner_all);
  }

  void TearDown() override {
    program.terminate();
    program.waitForFinished(Patience);
  }

  void StartWith(const QStringList& documents) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH",
                       QString::fromStdString(folder.Path()) + ':' + environment.value("PATH"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(VINTRACE, documents);
    ASSERT_TRUE(program.waitForStarted(Patience));
  }

  QString Document(const std::string& name, std::uint8_t version) const {
    return QString::fromStdString(folder
                                      .File(name, DocumentBuilder(BodyStart + 500)
                                                      .Release(version)
                                                      .Saved(BodyStart, 1, "0.0.397x")
                                                      .Bytes())
                                      .NativePath());
  }

  /// The visible windows with that title, a line each.
  static QString VisibleWindows(const QString& title) {
    return OutputOf("xdotool", {"search", "--onlyvisible", "--name", '^' + title + '$'});
  }

  static bool IsVisible(const QString& title) { return !VisibleWindows(title).isEmpty(); }

  /// Waits for a visible window with that title; 0 when none comes.
  static WId WindowNamed(const QString& title) {
    const bool came = QTest::qWaitFor([&] { return IsVisible(title); }, Patience);
    return came ? VisibleWindows(title).section('\n', 0, 0).toULongLong() : 0;
  }

  static QImage Screenshot(WId window) {
    return QApplication::primaryScreen()->grabWindow(window).toImage().convertToFormat(
        QImage::Format_RGB32);
  }

  /// A place of a document's content as a place of its window, which carries the menu bar above it.
  static QPoint Place(WId window, QPoint place) {
    return place + QPoint(0, Screenshot(window).height() - 150);
  }

  /// Waits until that part of the window's content looks like `image`.
  static bool Shows(WId window, QPoint place, const QImage& image) {
    return QTest::qWaitFor(
        [&] {
          return Screenshot(window).copy({Place(window, place), image.size()}) == image;
        },
        Patience);
  }

  /// Clicks at a place of the window's content.
  static void Click(WId window, QPoint place) {
    const QPoint point = Place(window, place);
    OutputOf("xdotool", {"mousemove", "--window", QString::number(window),
                         QString::number(point.x()), QString::number(point.y()), "click", "1"});
  }

  const TemporaryFolder folder;
  QProcess program;
};

TEST_F(DesktopTest, TwoDocumentsAreToldInTheirWindows) {
  StartWith({Document("first document.indd", 8), Document("二つ目.indd", 15)});
  const WId first = WindowNamed("first document.indd");
  const WId second = WindowNamed("二つ目.indd");
  ASSERT_NE(first, 0U);
  ASSERT_NE(second, 0U);
  EXPECT_EQ(Screenshot(first).width(), 280);
  EXPECT_EQ(Screenshot(second).width(), 280);

  const QSize product(161, 20);
  EXPECT_NE(Drawn("閉", product, 12, Qt::black), Drawn("該", product, 12, Qt::black))
      << "boxes instead of Japanese";
  EXPECT_TRUE(Shows(first, {104, 38}, Drawn("Adobe InDesign CS6", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 57}, Drawn("Windows Edition", {137, 18}, 10, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 78}, Drawn("8.0.0.397", {160, 25}, 14, Qt::black)));
  EXPECT_TRUE(Shows(second, {104, 38}, Drawn("Ver.15 CC2019より新しい", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(second, {105, 78}, Drawn("サブバージョン不明", {160, 25}, 14, Qt::black)));
}

TEST_F(DesktopTest, TheLinkOpensThePageAndTheButtonClosesTheWindow) {
  StartWith({Document("a.indd", 15)});
  const WId window = WindowNamed("a.indd");
  ASSERT_NE(window, 0U);
  const QPoint link(20, 114);
  const QString address = QString::fromUtf8(endpoints::WebPage.data(), endpoints::WebPage.size());
  EXPECT_TRUE(Shows(window, link, Drawn(address, {114, 20}, 12, Qt::blue)));
  Click(window, link + QPoint(50, 8));
  EXPECT_TRUE(Shows(window, link, Drawn(address, {114, 20}, 12, Qt::red)));
  const auto opened = [this] {
    std::string line;
    std::getline(std::ifstream(folder.Path() / "opened") >> std::ws, line);
    return line;
  };
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened() == endpoints::WebPage; }, Patience))
      << opened();

  Click(window, {200, 120});
  EXPECT_TRUE(QTest::qWaitFor([] { return !IsVisible("a.indd"); }, Patience));
  EXPECT_EQ(program.state(), QProcess::Running);
}

TEST_F(DesktopTest, ADocumentThatCannotBeReadEndsTheProgramBehindAMessage) {
  std::filesystem::create_directory(folder.Path() / "folder.indd");
  StartWith({QString::fromStdString(folder.Path() / "folder.indd"), Document("b.indd", 8)});
  const WId box = WindowNamed("Vintrace");
  ASSERT_NE(box, 0U);
  EXPECT_FALSE(IsVisible("folder.indd")) << "a window that tells nothing true";
  OutputOf("xdotool", {"windowactivate", "--sync", QString::number(box), "key", "Return"});
  ASSERT_TRUE(program.waitForFinished(Patience));
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 0);
}

}  // namespace
}  // namespace vintrace::test

int main(int argc, char* argv[]) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
