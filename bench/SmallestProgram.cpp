// The smallest program that shows a window, as a reference for start times: smallest_program [TEXT]
// A Japanese TEXT adds the cost of finding a font for it.

#include <QApplication>
#include <QLabel>

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QLabel label(argc > 1 ? QString::fromUtf8(argv[1]) : QStringLiteral("Vintrace"));
  label.show();
  return QApplication::exec();
}
