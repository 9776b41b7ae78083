#include <gtest/gtest.h>

#include <QByteArray>

// The tests create their own QApplication or QtHost, offscreen unless QT_QPA_PLATFORM is set.
int main(int argc, char* argv[]) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
