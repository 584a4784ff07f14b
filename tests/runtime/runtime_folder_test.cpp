#include "runtime/runtime_folder.hpp"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace quintara {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

struct RuntimeFolder : testing::Test {
  ~RuntimeFolder() override { fs::remove_all(root); }
  void run(const std::string& command) const {
    ASSERT_EQ(std::system(("cd " + root + " && " + command).c_str()), 0);
  }

  const std::string root = ::mkdtemp(std::string("/tmp/runtime-XXXXXX").data());
};

TEST_F(RuntimeFolder, LiesInTheSessionsFolderOrTheUsersOrTmp) {
  for (const char* none : {static_cast<const char*>(nullptr), "", "relative"})
    EXPECT_THAT(runtimeFolderPlaces(none, 7),
                ElementsAre("/run/user/7/quintara", "/tmp/quintara-7"));
  EXPECT_THAT(runtimeFolderPlaces("/x", 7),
              ElementsAre("/x/quintara", "/run/user/7/quintara", "/tmp/quintara-7"));
}

TEST_F(RuntimeFolder, IsMadeForItsOwnerAloneWhereAParentIs) {
  run("mkdir parent && mkdir -m 1777 sticky && ln -s parent link");
  for (const std::string parent : {"parent", "sticky", "link"}) {
    const std::string folder = root + "/" + parent + "/quintara";
    for (int time = 0; time < 2; ++time)
      EXPECT_EQ(firstOwnFolder({root + "/gone/quintara", folder, root + "/other"}), folder);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
  }
  EXPECT_FALSE(fs::exists(root + "/other"));
}

TEST_F(RuntimeFolder, IsRefusedWhereAnotherCouldOpenOrReplaceIt) {
  struct Case {
    std::string prepared, reason;
    bool asRoot = false;
  };
  for (const Case& at : std::initializer_list<Case>{
           {"mkdir -m 700 real quintara && rmdir quintara && ln -s real quintara", "not a folder"},
           {"touch quintara", "not a folder"},
           {"ln -s nowhere quintara", "not a folder"},
           {"mkdir -m 750 quintara", "not open to its owner alone"},
           {"mkdir -m 701 quintara", "not open to its owner alone"},
           {"mkdir -m 500 quintara", "not open to its owner alone"},
           {"chmod 770 .", "others can write to"},
           {"chmod 777 .", "others can write to"},
           {"mkdir -m 700 quintara && chown 65534 quintara", "it belongs to another user", true},
           {"chown 65534 .", "another user, and XDG_RUNTIME_DIR", true},
           {"chmod 1777 . && chown 65534 .", "another user, and XDG_RUNTIME_DIR", true}}) {
    if (at.asRoot && ::geteuid() != 0) continue;
    run("chmod 700 . && rm -rf -- * && " + at.prepared);
    EXPECT_THAT(
        [&] {
          firstOwnFolder({root + "/quintara", "/tmp/never"});
        },
        testing::ThrowsMessage<RuntimeFolderUnusable>(HasSubstr(at.reason)))
        << at.prepared;
    if (::geteuid() == 0) run("chown 0 .");
  }
  const std::string deep = root + "/" + std::string(80, 'x');
  fs::create_directory(deep);
  EXPECT_THAT([&] { firstOwnFolder({deep + "/quintara"}); },
              testing::ThrowsMessage<RuntimeFolderUnusable>(HasSubstr("too long")));
}

}  // namespace quintara
