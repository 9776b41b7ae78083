#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/process/posix/HardenProcess.h"

int main(int argc, char* argv[]) {
  vintrace::posix::HardenProcess();
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
