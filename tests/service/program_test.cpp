#include <gmock/gmock.h>
#include <httplib.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>

#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The built program as a child process.
class Program {
 public:
  explicit Program(const std::string& flags, const std::string& configuration = "/nowhere") {
    const std::string environment =
        "HOME=/home/trader XDG_DATA_HOME=relative XDG_CONFIG_HOME=" + configuration;
    const std::string program = " exec '" QUINTARA_QUOTES_PROGRAM "' " + flags + " 2>&1";
    pipe_ = ::popen(("echo $$; " + environment + program).c_str(), "re");
    child = std::stoi(line());
  }
  std::string line() const {
    char text[500] = "";
    return std::fgets(text, sizeof text, pipe_) != nullptr ? text : "";
  }
  int exitCode() const {
    const int status = ::pclose(pipe_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  int child = 0;

 private:
  FILE* pipe_;
};

TEST(Program, ServesUntilASignalAndKeepsItsPortsFromOthers) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const Program program("--history-port 0 --quotes-port=0 --log-level info");
    int history = 0;
    int quotes = 0;
    ASSERT_EQ(std::sscanf(program.line().c_str(),
                          "quintara-quotes: listening on 127.0.0.1:%d (history) and "
                          "127.0.0.1:%d (quotes)",
                          &history, &quotes),
              2);
    EXPECT_THAT(program.line(), HasSubstr("no folder /home/trader/.local/share/quintara/prices"));
    const auto reply = httplib::Client("127.0.0.1", quotes).Get("/d/quotes.csv?s=DEMO");
    EXPECT_THAT(reply->body, StartsWith("\"DEMO\","));
    const Program second("--history-port 0 --quotes-port " + std::to_string(history));
    EXPECT_THAT(second.line(), HasSubstr("port " + std::to_string(history)));
    EXPECT_EQ(second.exitCode(), 3);
    ::kill(program.child, signal);
    EXPECT_EQ(program.exitCode(), 0);
  }
}

TEST(Program, NamesABadFlag) {
  for (const std::string flag :
       {"--colour", "-x", "--help=1", "stray", "--quotes-port", "--prices=", "--history-port=65536",
        "--quotes-port=-1", "--log-level=loud", "--check=", "--provider"}) {
    const Program program(flag);
    EXPECT_THAT(program.line(), HasSubstr(flag.substr(0, flag.find('='))));
    EXPECT_EQ(program.exitCode(), 2) << flag;
  }
}

TEST(Program, ReadsTheSettingsOfTheProvider) {
  const TemporaryFolder configuration;
  std::filesystem::create_directory(configuration.path / "quintara");
  configuration.write("quintara/provider.conf", "url = http://127.0.0.1:1/{symbol}\n");
  const Program check("--check A", configuration.path);
  EXPECT_THAT(check.line() + check.line() + check.line(),
              HasSubstr("No prices: 127.0.0.1: A: table: Couldn't connect"));
  EXPECT_EQ(check.exitCode(), 1);
  const Program bad("--check A/B", configuration.path);
  EXPECT_THAT(bad.line(), HasSubstr("a symbol cannot contain /"));
  EXPECT_EQ(bad.exitCode(), 1);
  configuration.write("quintara/provider.conf", "url");
  const Program serve("", configuration.path);
  EXPECT_THAT(serve.line(), HasSubstr("/quintara/provider.conf: line 1: "));
  EXPECT_EQ(serve.exitCode(), 2);
}

}  // namespace
}  // namespace quintara::quotes
