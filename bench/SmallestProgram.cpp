// The smallest program that shows a window, which the start of the real one is measured against:
// smallest_program [TEXT]
// A Japanese TEXT adds what it costs to find a font for it.

#include <QApplication>
#include <QLabel>

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QLabel label(argc > 1 ? QString::fromUtf8(argv[1]) : QStringLiteral("Vintrace"));
  label.show();
  return QApplication::exec();
}
