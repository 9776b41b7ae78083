#include <gtest/gtest.h>

#include <QByteArray>

// The tests make their own QApplication or QtHost, and without a screen unless told otherwise.
int main(int argc, char* argv[]) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
