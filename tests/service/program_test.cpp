#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <map>
#include <vector>

#include "client.hpp"
#include "service/provider/provider_settings.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {

using testing::HasSubstr;
using testing::StartsWith;

// The built program as a child process.
struct Program {
  explicit Program(const std::string& flags, const std::string& configuration = "/nowhere",
                   const std::string& limit = ":") {
    const std::string environment =
        "HOME=/home/trader XDG_DATA_HOME=relative XDG_CONFIG_HOME=" + configuration;
    const std::string program = " exec '" QUINTARA_QUOTES_PROGRAM "' " + flags + " 2>&1";
    pipe = ::popen(("echo $$; " + limit + "; " + environment + program).c_str(), "re");
    child = std::stoi(line());
  }
  std::string line() const {
    char text[500] = "";
    return std::fgets(text, sizeof text, pipe) != nullptr ? text : "";
  }
  std::string rest() const {
    std::string lines;
    for (std::string next = line(); !next.empty(); next = line()) {
      lines += next;
    }
    return lines;
  }
  int exit() const { return ::pclose(pipe); }

  FILE* pipe;
  int child;
};

TEST(Program, ServesUntilASignalAndKeepsItsPortsFromOthers) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const Program program("--history-port 0 --quotes-port=0 --log-level info");
    int history = 0, quotes = 0;
    constexpr auto kBegin = "quintara-quotes: listening on 127.0.0.1:%d (history) and 127.0.0.1:%d";
    ASSERT_EQ(std::sscanf(program.line().c_str(), kBegin, &history, &quotes), 2);
    EXPECT_THAT(program.line(), HasSubstr("no folder /home/trader/.local/share/quintara/prices"));
    EXPECT_THAT(wholeReply(quotes, "GET /d/quotes.csv?s=DEMO HTTP/1.1\r\nHost: localhost\r\n\r\n"),
                HasSubstr("\r\n\r\n\"DEMO\","));
    const Program second("--history-port 0 --quotes-port " + std::to_string(history));
    EXPECT_THAT(second.line(), HasSubstr("port " + std::to_string(history)));
    EXPECT_EQ(second.exit(), W_EXITCODE(3, 0));
    ::kill(program.child, signal);
    EXPECT_EQ(program.exit(), 0);
  }
}

TEST(Program, IsTheOneOfItsUserOnSocketsThatNobodyElseCanOpen) {
  const TemporaryFolder runtime;
  const std::string here = "export XDG_RUNTIME_DIR=" + runtime.path.string();
  const std::string history = runtime.path / "quintara/history";
  const std::string quotes = runtime.path / "quintara/quotes";
  for (const int signal : {SIGKILL, SIGTERM}) {  // what a killed one leaves is replaced
    const Program program("", "/nowhere", here);
    EXPECT_THAT(program.line(),
                HasSubstr("listening on " + history + " (history) and " + quotes + " (quotes)"));
    EXPECT_THAT(wholeReply(quotes, "GET /d/quotes.csv?s=DEMO HTTP/1.1\r\nHost: quotes\r\n\r\n"),
                StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(wholeReply(history, "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n"),
                StartsWith("HTTP/1.1 404 "));
    EXPECT_EQ(std::filesystem::status(history).permissions(), std::filesystem::perms{0600});
    const Program second("--history-port 0", "/nowhere", here);
    EXPECT_THAT(second.line(), HasSubstr("another quote service of yours runs already"));
    EXPECT_EQ(second.exit(), W_EXITCODE(4, 0));
    ::kill(program.child, signal);
    program.exit();
    EXPECT_EQ(std::filesystem::exists(quotes), signal == SIGKILL);
  }
}

TEST(Program, AnswersWithoutDescriptorsForAllWhoConnect) {
  const Program program("--history-port 0 --quotes-port 0", "/nowhere", "ulimit -n 24");
  int history = 0;
  std::sscanf(program.line().c_str(), "quintara-quotes: listening on 127.0.0.1:%d", &history);
  std::vector<FileHandle> crowd(60);
  std::generate(crowd.begin(), crowd.end(), [&] { return connected(history); });
  EXPECT_THAT(wholeReply(history, "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n"),
              StartsWith("HTTP/1.1 404 "));
  ::kill(program.child, SIGTERM);
  EXPECT_EQ(program.exit(), 0);
}

TEST(Program, SaysThatItMayNotHaveAsManyThreads) {
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer needs the addresses that the threads are denied";
#endif
  const Program program("--history-port 0 --quotes-port 0", "/nowhere", "ulimit -s 5000000000");
  EXPECT_THAT(program.line(), HasSubstr("error: cannot start a thread: "));
  EXPECT_EQ(program.exit(), W_EXITCODE(1, 0));
}

TEST(Program, NamesABadFlag) {
  for (const std::string flag :
       {"--colour", "-x", "--help=1", "stray", "--quotes-port", "--prices=", "--history-port=65536",
        "--quotes-port=-1", "--as=A", "--as=A --add B C", "--replace", "--add", "--log-level=loud",
        "--check=", "--provider"}) {
    const Program program(flag);
    EXPECT_THAT(program.line(), HasSubstr(flag.substr(0, flag.find('='))));
    EXPECT_EQ(program.exit(), W_EXITCODE(2, 0)) << flag;
  }
}

TEST(Program, EndsWithZeroWhereAllIsDone) {
  const TemporaryFolder prices;
  prices.write("A.csv", "Date,Open,High,Low,Close\n2026-11-05,1,2,1,2\n");
  const std::string file = prices.path / "A.csv";
  for (const auto& [flags, said] : std::map<std::string, std::string>{
           {"--help", "--as TICKER        with --add and one file: its ticker\n"},
           {"--version", "quintara-quotes "},
           {"--runtime-folder", "/quintara"},
           {"--list --prices " + prices.path.string(), "A          1 day, 5-Nov-26"},
           {"--prices=" + prices.path.string() + " --add --as B -- " + file, "B is in"},
           {"--add /nowhere/A.csv", "A.csv is not added: No such file"}}) {
    const Program program(flags);
    EXPECT_THAT(program.rest(), HasSubstr(said));
    EXPECT_EQ(program.exit() == 0, flags.find("nowhere") == flags.npos) << flags;
  }
}

TEST(Program, ReadsTheSettingsOfTheProvider) {
  const TemporaryFolder configuration;
  std::filesystem::create_directory(configuration.path / "quintara");
  for (const auto& [text, flags, message, code] :
       std::initializer_list<std::tuple<const char*, const char*, const char*, int>>{
           {"url", "--check A", "/quintara/provider.conf: line 1: ", 2},
           {"url = http://127.0.0.1:1/{symbol}", "--check A/B",
            "no prices for A/B: no ticker has a slash", 1},
           {"url = http://127.0.0.1:1/{symbol}", "--check DEMO", "DEMO: table: Could", 1},
           {"url = http://127.0.0.1:1/{symbol}", "--check A", "A: table: Could", 1}}) {
    configuration.write("quintara/provider.conf", text);
    const Program program(flags, configuration.path);
    EXPECT_THAT(program.rest(), HasSubstr(message));
    EXPECT_EQ(program.exit(), W_EXITCODE(code, 0));
  }
  EXPECT_THAT(Program("--provider /no/p --check A").rest(), HasSubstr("is no file /no/p"));
  EXPECT_THAT(Program("--check A").rest(),
              HasSubstr("No provider was asked: there are no settings"));
  EXPECT_THAT(Program("--check A", configuration.path).rest(),
              testing::Not(HasSubstr("was asked:")));
}

TEST(Program, ServesWithoutAProviderWhoseSettingsCannotBeUsed) {
  const TemporaryFolder configuration;
  std::filesystem::create_directory(configuration.path / "quintara");
  configuration.write("quintara/provider.conf", "url = x");
  const Program program("--history-port 0 --quotes-port 0 --log-level error", configuration.path);
  EXPECT_THAT(
      program.line(),
      testing::MatchesRegex("quintara-quotes: provider: .*/provider.conf: line 1: url: .*\n"));
  ::kill(program.child, SIGTERM);
  EXPECT_EQ(program.exit(), 0);
}

// Every setting that is commented out in the example has to be a right one, and fit the others.
TEST(ProviderSettings, TheExampleHoldsTrue) {
  ::setenv("PRICES_KEY", "k", 1);
  std::ifstream file(QUINTARA_EXAMPLES "/provider.conf");
  std::string text(std::istreambuf_iterator<char>(file), {});
  parseProviderSettings(text);
  for (auto at = text.find("\n#"); at != text.npos; at = text.find("\n#", at + 1)) {
    if (text[at + 2] >= 'a' && text[at + 2] <= 'z') {
      text.erase(at + 1, 1);
    }
  }
  // The file that the last setting names is not there.
  parseProviderSettings(text.substr(0, text.find("\nca_file")) + "\nca_file = /proc/self/status");
}

}  // namespace quintara::quotes
