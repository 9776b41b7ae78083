#include "desktop/DesktopFixture.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "platform/ui/qt/widgets/Fonts.h"
#include "support/DocumentBuilder.h"

namespace vintrace::test {

QString OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(Patience)) << program.toStdString();
  return QString::fromUtf8(process.readAllStandardOutput());
}

std::vector<WId> ManagedWindows() {
  static const QRegularExpression id("0x[0-9a-f]+");
  std::vector<WId> windows;
  for (const auto& match : id.globalMatch(OutputOf("xprop", {"-root", "_NET_CLIENT_LIST"}))) {
    windows.push_back(match.captured().toULongLong(nullptr, 16));
  }
  return windows;
}

QImage Drawn(const QString& text, QSize size, int pixelSize, QColor color) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(0xEC, 0xEC, 0xEC));
  QPainter painter(&image);
  painter.setFont(qt::FontOf("Osaka", pixelSize, false));
  painter.setPen(color);
  painter.drawText(QRect({}, size), Qt::AlignLeft | Qt::AlignTop, text);
  return image;
}

ProgramOnDesktop::ProgramOnDesktop()
    : path_("PATH", (folder.Path().native() + ':' + std::getenv("PATH")).c_str()) {
  // A browser that records the addresses it is given.
  folder.File("xdg-open", "#!/bin/sh\necho \"$1\" >>\"${0%/*}/opened\"\n");
  std::filesystem::permissions(folder.Path() / "xdg-open", std::filesystem::perms::owner_all);
}

void ProgramOnDesktop::TearDown() {
  program.terminate();
  AwaitEnd();
}

void ProgramOnDesktop::Start(QProcess& process, const QStringList& documents) {
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(VINTRACE, documents);
  EXPECT_TRUE(process.waitForStarted(Patience));
}

std::unique_ptr<QProcess> ProgramOnDesktop::StartAgain(const QStringList& documents) {
  auto start = std::make_unique<QProcess>();
  Start(*start, documents);
  return start;
}

bool ProgramOnDesktop::IsTaken(QProcess& start) {
  const bool ended = start.state() == QProcess::NotRunning || start.waitForFinished(Patience);
  return ended && start.exitStatus() == QProcess::NormalExit && start.exitCode() == 0;
}

void ProgramOnDesktop::AwaitEnd() { EXPECT_TRUE(IsTaken(program)); }

QString ProgramOnDesktop::PathOfDocument(const std::string& name, std::uint8_t version) const {
  DocumentBuilder document(BodyStart + 500);
  folder.File(name, document.Release(version).Saved(BodyStart, 1, "0.0.397x").Bytes());
  return QString::fromStdString(folder.Path() / name);
}

WId ProgramOnDesktop::WindowNamed(const QString& title) {
  QString windows;
  static_cast<void>(Comes([&] {
    windows = OutputOf("xdotool", {"search", "--onlyvisible", "--name", '^' + title + '$'});
    return !windows.isEmpty();
  }));
  return windows.section('\n', 0, 0).toULongLong();
}

testing::AssertionResult ProgramOnDesktop::HasWindows(const Lines& titles) {
  Lines seen;
  const auto look = [&] {
    seen.clear();
    for (const WId window : ManagedWindows()) {
      const QString title = OutputOf("xdotool", {"getwindowname", QString::number(window)});
      seen.push_back(title.trimmed().toStdString());
    }
    std::ranges::sort(seen);
    return seen == titles;
  };
  if (Comes(look)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "the windows are " << testing::PrintToString(seen);
}

QImage ProgramOnDesktop::Screenshot(WId window) {
  return QApplication::primaryScreen()->grabWindow(window).toImage().convertToFormat(
      QImage::Format_RGB32);
}

QPoint ProgramOnDesktop::Place(WId window, QPoint place) {
  return place + QPoint(0, Screenshot(window).height() - 150);
}

bool ProgramOnDesktop::Shows(WId window, QPoint place, const QImage& image) {
  return Comes([&] {
    return Screenshot(window).copy({Place(window, place), image.size()}) == image;
  });
}

void ProgramOnDesktop::MoveMouse(WId window, QPoint point) {
  OutputOf("xdotool", {"mousemove", "--window", QString::number(window), QString::number(point.x()),
                       QString::number(point.y())});
}

void ProgramOnDesktop::Click(WId window, QPoint point) {
  MoveMouse(window, point);
  OutputOf("xdotool", {"click", "1"});
}

void ProgramOnDesktop::Press(WId window, const QStringList& keys) {
  OutputOf("xdotool",
           QStringList{"windowactivate", "--sync", QString::number(window), "key"} + keys);
}

WId ProgramOnDesktop::OpenAboutWindow(WId standIn) {
  Press(standIn, {"Alt_L", "Right", "Down", "Up", "Return"});
  return WindowNamed("Vintrace CS");
}

void ProgramOnDesktop::DismissMessage() {
  const WId box = WindowNamed("Vintrace");
  ASSERT_NE(box, 0U);
  Press(box, {"Return"});
  EXPECT_TRUE(Comes([&] { return std::ranges::count(ManagedWindows(), box) == 0; }));
}

QByteArray ProgramOnDesktop::AddressOf(const std::string& name) const {
  PathOfDocument(name);
  const auto path = QByteArray::fromStdString(folder.Path() / name);
  return "file://" + path.toPercentEncoding("/") + "\r\n";
}

bool ProgramOnDesktop::IsTakenBy(WId window, const QByteArray& bytes, const char* format) {
  QWidget source;
  source.setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
  const QRect screen = QApplication::primaryScreen()->geometry();
  source.setGeometry(screen.right() - 40, screen.bottom() - 40, 40, 40);
  source.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&source, Patience));
  MoveMouse(source.winId(), {20, 20});
  OutputOf("xdotool", {"mousedown", "1"});
  EXPECT_TRUE(Comes([] { return QGuiApplication::mouseButtons() == Qt::LeftButton; }));

  const QPointer<QDrag> drag = new QDrag(&source);  // Deleted by Qt.
  auto* data = new QMimeData;
  data->setData(format, bytes);
  drag->setMimeData(data);
  const ClientMessages messages;
  const auto isAnswer = [&](const auto& message) { return message.data.data32[0] == window; };
  QTimer::singleShot(0, [&] {
    const QPoint middle = Screenshot(window).rect().center();
    for (const double part : {0.2, 0.4, 0.6, 0.8, 1.0}) {
      MoveMouse(window, middle * part);
      QCoreApplication::processEvents();
    }
    EXPECT_TRUE(Comes([&] { return std::ranges::any_of(messages.heard, isAnswer); }));
    OutputOf("xdotool", {"mouseup", "1"});
  });
  const auto action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
  EXPECT_TRUE(Comes([&] { return drag.isNull(); })) << "the drag has not ended";
  const auto answer = std::ranges::find_if(messages.heard, isAnswer);
  const bool taken = answer != messages.heard.end() && (answer->data.data32[1] & 1) != 0;
  EXPECT_EQ(action, taken ? Qt::CopyAction : Qt::IgnoreAction);
  return taken;
}

std::string ProgramOnDesktop::Opened() const {
  std::string line;
  std::getline(std::ifstream(folder.Path() / "opened") >> std::ws, line);
  return line;
}

std::string ProgramOnDesktop::Clipboard() {
  return OutputOf("xclip", {"-o", "-selection", "clipboard"}).toStdString();
}

}  // namespace vintrace::test
