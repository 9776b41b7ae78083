#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/posix/SecureStart.h"

int main(int argc, char* argv[]) {
  vintrace::posix::SecureStart();
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
