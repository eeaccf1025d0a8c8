#include <gtest/gtest.h>

#include <QApplication>
#include <clocale>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
