#include "desktop/DesktopFixture.h"

#include <QApplication>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <algorithm>
#include <fstream>

#include "platform/qt/Fonts.h"
#include "support/DocumentBuilder.h"

namespace vintrace::test {
namespace {

Lines Titles() {
  Lines titles;
  for (const WId window : ManagedWindows()) {
    titles.push_back(OutputOf("xdotool", {"getwindowname", QString::number(window)}).toStdString());
  }
  std::ranges::sort(titles);
  return titles;
}

/// A visible window of the program in which the window manager has no part; 0 when there is none.
WId Popup() {
  const auto managed = ManagedWindows();
  for (const auto& line :
       OutputOf("xdotool", {"search", "--onlyvisible", "--class", "^vintrace$"}).split('\n')) {
    const WId window = line.toULongLong();
    if (std::ranges::find(managed, window) == managed.end()) return window;
  }
  return 0;
}

}  // namespace

std::vector<WId> ManagedWindows() {
  static const QRegularExpression id("0x[0-9a-f]+");
  std::vector<WId> windows;
  for (const auto& match : id.globalMatch(OutputOf("xprop", {"-root", "_NET_CLIENT_LIST"}))) {
    windows.push_back(match.captured().toULongLong(nullptr, 16));
  }
  return windows;
}

QByteArray BytesOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(Patience)) << program.toStdString();
  return process.readAllStandardOutput();
}

QString OutputOf(const QString& program, const QStringList& arguments) {
  return QString::fromUtf8(BytesOf(program, arguments)).trimmed();
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

ProgramOnDesktop::ProgramOnDesktop() {
  // A browser that notes the address which it is given.
  folder.File("xdg-open", "#!/bin/sh\necho \"$1\" >>\"${0%/*}/opened\"\n");
  std::filesystem::permissions(folder.Path() / "xdg-open", std::filesystem::perms::owner_all);
}

void ProgramOnDesktop::TearDown() {
  program.terminate();
  AwaitEnd();
}

void ProgramOnDesktop::StartWith(const QStringList& documents) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert("PATH",
                     QString::fromStdString(folder.Path()) + ':' + environment.value("PATH"));
  environment.insert("XDG_DATA_HOME", QString::fromStdString(folder.Path() / "data"));
  environment.insert("WINEPREFIX", QString::fromStdString(folder.Path() / "prefix"));
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::ForwardedChannels);
  program.start(VINTRACE, documents);
  ASSERT_TRUE(program.waitForStarted(Patience));
}

std::unique_ptr<QProcess> ProgramOnDesktop::StartAgain(const QStringList& documents,
                                                       const QString& startupId) {
  auto start = std::make_unique<QProcess>();
  auto environment = QProcessEnvironment::systemEnvironment();
  if (!startupId.isEmpty()) environment.insert("DESKTOP_STARTUP_ID", startupId);
  start->setProcessEnvironment(environment);
  start->setProcessChannelMode(QProcess::ForwardedChannels);
  start->start(VINTRACE, documents);
  EXPECT_TRUE(start->waitForStarted(Patience));
  return start;
}

bool ProgramOnDesktop::IsTaken(QProcess& start) {
  return start.waitForFinished(Patience) && start.exitStatus() == QProcess::NormalExit &&
         start.exitCode() == 0;
}

void ProgramOnDesktop::AwaitEnd() {
  EXPECT_TRUE(program.state() == QProcess::NotRunning || program.waitForFinished(Patience));
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 0);
}

FolderItem ProgramOnDesktop::Document(const std::string& name, std::uint8_t version) const {
  return folder.File(
      name,
      DocumentBuilder(BodyStart + 500).Release(version).Saved(BodyStart, 1, "0.0.397x").Bytes());
}

QString ProgramOnDesktop::PathOfDocument(const std::string& name, std::uint8_t version) const {
  return QString::fromStdString(Document(name, version).NativePath());
}

QString ProgramOnDesktop::VisibleWindows(const QString& title) {
  return OutputOf("xdotool", {"search", "--onlyvisible", "--name", '^' + title + '$'});
}

WId ProgramOnDesktop::WindowNamed(const QString& title) {
  const bool came = Comes([&] { return IsVisible(title); });
  return came ? VisibleWindows(title).section('\n', 0, 0).toULongLong() : 0;
}

testing::AssertionResult ProgramOnDesktop::HasWindows(const Lines& titles) {
  Lines seen;
  if (Comes([&] { return (seen = Titles()) == titles; })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "it has " << testing::PrintToString(seen);
}

WId ProgramOnDesktop::OpenMenu() {
  WId menu = 0;
  static_cast<void>(Comes([&] { return (menu = Popup()) != 0; }));
  return menu;
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
  EXPECT_TRUE(Comes([] { return !IsVisible("Vintrace"); }));
}

std::string ProgramOnDesktop::Opened() const {
  std::string line;
  std::getline(std::ifstream(folder.Path() / "opened") >> std::ws, line);
  return line;
}

std::string ProgramOnDesktop::Clipboard() {
  return BytesOf("xclip", {"-o", "-selection", "clipboard"}).toStdString();
}

}  // namespace vintrace::test
