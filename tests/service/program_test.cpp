#include <gmock/gmock.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>

#include "client.hpp"
#include "provider_server.hpp"

namespace quintara::quotes {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The built program as a child process.
class Program {
 public:
  explicit Program(const std::string& flags) {
    const std::string environment =
        "HOME=/home/trader XDG_DATA_HOME=relative XDG_CONFIG_HOME=" + configuration.path.string();
    const std::string program = "exec '" QUINTARA_QUOTES_PROGRAM "' " + flags + " 2>&1";
    pipe_ = ::popen(("echo $$; " + environment + " " + program).c_str(), "re");
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

  std::string rest() const {
    std::string text = line();
    return text.empty() ? text : text + rest();
  }

  static inline const TemporaryFolder configuration;
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
    EXPECT_THAT(exchange(quotes, "GET /d/quotes.csv?s=DEMO HTTP/1.1\r\nHost: localhost\r\n\r\n"),
                HasSubstr("\"DEMO\""));
    const Program second("--history-port 0 --quotes-port " + std::to_string(history));
    EXPECT_THAT(second.line(), HasSubstr("port " + std::to_string(history)));
    EXPECT_EQ(second.exitCode(), 3);
    const Client idle(history);
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

class ProgramWithProvider : public testing::Test {
 protected:
  ProgramWithProvider() {
    std::filesystem::create_directory(Program::configuration.path / "quintara");
    Program::configuration.write(
        "quintara/provider.conf",
        "url = http://127.0.0.1:" + server.port + "/{symbol}?k={key}\nkey_variable = K\n");
    ::setenv("K", "s3cret", 1);
    ::setenv("no_proxy", "127.0.0.1", 1);
  }
  void TearDown() override { remove_all(Program::configuration.path / "quintara"); }

  ProviderServer server{
      std::make_unique<httplib::Server>(), [](const auto& request, auto& response) {
        response.status = request.path == "/DEMO" ? 404 : 200;
        response.body = request.path != "/GOOD"
                            ? "no more requests for k=s3cret"
                            : "Low,Date,Open,High,Close\n1,2020-11-05,1,2,2\n1,2020-11-04,1,1,2\n";
      }};
};

TEST_F(ProgramWithProvider, ChecksTheSettingsForOneSymbol) {
  const std::string file = Program::configuration.path / "none";
  const struct {
    std::string flags, shown;
    int code;
  } cases[] = {
      {"--check good",
       "Asked 127.0.0.1 for GOOD\nTable: 1 good rows, 1 bad ones\n"
       "  line 3: the high is not the highest price\nFrom 5-Nov-20 to 5-Nov-20, the newest days:\n"
       "Date,Open,High,Low,Close,Volume\n5-Nov-20,1.00,2.00,1.00,2.00,0\n"
       "The quote that a chart gets: "
       "\"GOOD\",2.00,\"11/5/2020\",\"4:00pm\",N/A,N/A,N/A,N/A,N/A\r\n",
       0},
      {"--check Demo", "No prices: the provider does not know it\n", 1},
      {"--check other", "Close: no more requests for k=***\n", 1},
      {"--check good --provider " + file, "there are no settings of a provider in " + file + "\n",
       2},
      {"--provider /", "/: not a file of settings that can be read\n", 2},
  };
  for (const auto& c : cases) {
    const Program program(c.flags);
    const std::string shown = program.rest();
    EXPECT_THAT(shown, EndsWith(c.shown));
    EXPECT_THAT(shown, Not(HasSubstr("s3cret")));
    EXPECT_EQ(program.exitCode(), c.code) << c.flags;
  }
  ::unsetenv("K");
  const Program program("--history-port 0 --quotes-port 0");
  EXPECT_THAT(program.line(), HasSubstr("/quintara/provider.conf: line 2: key_variable: there"));
  EXPECT_EQ(program.exitCode(), 2);
}

TEST_F(ProgramWithProvider, ServesItsPricesBeforeTheDemonstrationMarket) {
  const Program program("--history-port 0 --quotes-port=0 --log-level debug");
  EXPECT_THAT(program.line() + program.line(), HasSubstr("the key travels unencrypted"));
  int history = 0;
  int quotes = 0;
  ASSERT_EQ(std::sscanf(program.line().c_str(), "%*[^0-9]127.0.0.1:%d (history) and 127.0.0.1:%d",
                        &history, &quotes),
            2);
  const auto get = [](int port, const std::string& target) {
    return quotes::exchange(port, "GET " + target + " HTTP/1.1\r\n\r\n");
  };
  EXPECT_THAT(get(history, "/table.csv?s=good&a=1&b=1&c=2020&d=12&e=31&f=2020&g=d"),
              EndsWith("\n5-Nov-20,1.00,2.00,1.00,2.00,0\n"));
  EXPECT_THAT(get(quotes, "/d/quotes.csv?s=GOOD"), HasSubstr("\"GOOD\",2.00,\"11/5/2020\""));
  EXPECT_THAT(server.targets(), testing::ElementsAre("/GOOD?k=s3cret"));
  EXPECT_THAT(get(quotes, "/d/quotes.csv?s=DEMO"), HasSubstr("\"DEMO\""));
  EXPECT_THAT(get(quotes, "/d/quotes.csv?s=OTHER"),
              AllOf(StartsWith("HTTP/1.1 502"), HasSubstr("requests for k=***\n")));
  ::kill(program.child, SIGTERM);
  EXPECT_THAT(program.rest(), AllOf(HasSubstr("warning: 127.0.0.1: not prices, no column Date"),
                                    Not(HasSubstr("s3cret"))));
  EXPECT_EQ(program.exitCode(), 0);
}

}  // namespace
}  // namespace quintara::quotes
