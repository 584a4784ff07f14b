#include "helpviewer/single_viewer.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <filesystem>
#include <future>

namespace quintara {

TEST(SingleViewer, ALaterLaunchForTheSameFileRingsTheFirstAlsoOverASocketLeftByACrash) {
  const QTemporaryDir folder;
  const QString file = "/a/Helpfile.hlp";
  std::filesystem::path socket;
  {
    SingleViewer crashing(folder.path(), file);
    ASSERT_FALSE(crashing.handOver());
    for (const auto& entry : std::filesystem::directory_iterator(folder.path().toStdString()))
      socket = entry.path();
    // A second name outlives the tidying up that a crash would have left undone.
    std::filesystem::create_hard_link(socket, socket.string() + "-kept");
  }
  std::filesystem::rename(socket.string() + "-kept", socket);
  SingleViewer first(folder.path(), file);
  EXPECT_FALSE(first.handOver());
  int rings = 0;
  first.onRing([&] { ++rings; });
  // A later launch is another process; here it is another thread, while this one runs its events.
  for (int launch = 1; launch <= 2; ++launch) {
    auto later = std::async(std::launch::async,
                            [&] { return SingleViewer(folder.path(), file).handOver(); });
    while (later.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready)
      QCoreApplication::processEvents();
    EXPECT_TRUE(later.get());
    EXPECT_FALSE(SingleViewer(folder.path(), "/b/Helpfile.hlp").handOver());
  }
  EXPECT_EQ(rings, 2);
}

}  // namespace quintara

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
