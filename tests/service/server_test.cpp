#include "service/server.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <map>
#include <mutex>
#include <vector>

#include "client.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

const std::string kTable =
    "GET /table.csv?s=A+B&a=1&b=1&c=2026&d=12&e=31&f=2026&g=d HTTP/1.1\r\n\r\n";
const std::string kQuote = "GET /d/quotes.csv?s=a+b&f=sl1d1t1c1ohgv&e=.csv HTTP/1.1\r\n\r\n";

class ServerTest : public testing::Test {
 protected:
  ServerTest() {
    folder.write("A+B.csv", "Date,Open,High,Low,Close\n2026-11-19,1,2,1,2\n2026-11-20,2,3,2,3\n");
    server.start();
  }

  ServerSettings settings() {
    const auto sink = [this](const std::string& line) {
      const std::lock_guard lock(mutex);
      logged += line;
    };
    return {0, 0, folder.path, [this] { return today; }, Log(LogLevel::Debug, sink)};
  }

  TemporaryFolder folder;
  std::mutex mutex;
  std::string logged;
  Day today = *makeDay(2026, 11, 20);
  Server server{settings()};
};

TEST_F(ServerTest, AnswersEachPathOnItsOwnPort) {
  EXPECT_THAT(logged, StartsWith("quintara-quotes: listening on 127.0.0.1:" +
                                 std::to_string(server.historyPort()) +
                                 " (history) and 127.0.0.1:" + std::to_string(server.quotesPort()) +
                                 " (quotes)\n"));
  EXPECT_THAT(
      exchange(server.historyPort(), kTable),
      AllOf(StartsWith("HTTP/1.1 200 "), EndsWith("\r\n\r\nDate,Open,High,Low,Close,Volume\n"
                                                  "19-Nov-26,1.00,2.00,1.00,2.00,0\n")));
  EXPECT_THAT(
      exchange(server.quotesPort(), kQuote),
      EndsWith("\r\n\r\n\"A+B\",3.00,\"11/20/2026\",\"4:00pm\",+1.00,2.00,3.00,2.00,0\r\n"));
}

TEST_F(ServerTest, RefusesWhatIsNotForItAndSignsEveryReply) {
  const std::string table = "/table.csv HTTP/1.1\r\n";
  for (const auto& [request, status] : std::map<std::string, std::string>{
           {kQuote, "404"},
           {"GET /table.csv?s=NONE&a=1&b=1&c=2026&d=1&e=1&f=2026&g=d HTTP/1.1\r\n\r\n", "404"},
           {"GET " + table + "\r\n", "400"},
           {"POST " + table + "Content-Length: 9999999999\r\n\r\nabc", "405"},
           {"HEAD " + table + "\r\n", "405"},
           {"GET " + table + "Host: rebound.example\r\n\r\n", "403"},
           {"GET " + table + "Host: localhost\r\nHost: a.example\r\n\r\n", "403"},
           {"GET " + table + "hOST: Localhost:1\r\n\r\n", "400"},
           {"GET /\x1b[2J HTTP/1.1\r\n\r\n", "404"},
           {"GET / HTTP/1.1\r\nX: " + std::string(16'000, 'x') + "\r\n" + std::string(900, 'y'),
            "400"},
           {"rubbish\r\n\r\n", "400"}}) {
    EXPECT_THAT(exchange(server.historyPort(), request),
                AllOf(StartsWith("HTTP/1.1 " + status),
                      HasSubstr("\r\nServer: quintara-quotes/" QUINTARA_VERSION "\r\n")))
        << request;
  }
  server.stop();
  EXPECT_THAT(logged, HasSubstr("GET /\\x1b[2J 404"));
}

TEST_F(ServerTest, FiftyClientsAtOnceLoseNoReplyBesideFiftySilentOnes) {
  const auto begin = Clock::now();
  std::vector<Client> silent;
  std::vector<std::future<std::string>> replies;
  for (int i = 0; i < 50; ++i) {
    silent.emplace_back(server.historyPort());
    replies.push_back(
        std::async(std::launch::async, [this] { return exchange(server.historyPort(), kTable); }));
  }
  for (auto& reply : replies) {
    EXPECT_THAT(reply.get(), EndsWith("\n19-Nov-26,1.00,2.00,1.00,2.00,0\n"));
  }
  EXPECT_LT(Clock::now() - begin, seconds{4});
}

TEST_F(ServerTest, CutsOffSilentAndTricklingClients) {
  const auto begin = Clock::now();
  auto silent =
      std::async(std::launch::async, [this] { return exchange(server.quotesPort(), ""); });
  const Client trickling(server.quotesPort());
  for (int i = 0; i < 100 && trickling.send("x"); ++i) {
    std::this_thread::sleep_for(milliseconds{100});
  }
  trickling.receive();
  silent.get();
  EXPECT_LT(Clock::now() - begin, seconds{8});
}

TEST_F(ServerTest, StopsWithClientsConnectedAndStartsAgain) {
  std::string days = "Date,Open,High,Low,Close\n";
  for (int row = 0; row < 200 * 12 * 28; ++row) {
    days += std::to_string(1900 + row / 336) + "-" + std::to_string(row / 28 % 12 + 1) + "-" +
            std::to_string(row % 28 + 1) + ",900000000,900000000,900000000,900000000\n";
  }
  folder.write("LONG.csv", days);
  today = *makeDay(2099, 12, 31);
  const Client idle(server.historyPort());
  const Client half(server.quotesPort());
  half.send("GET /d");
  const Client slow(server.historyPort());  // leaves more unread than the sockets' buffers hold
  slow.send("GET /table.csv?s=long&a=1&b=1&c=1900&d=1&e=1&f=2099&g=d HTTP/1.1\r\n\r\n");
  std::this_thread::sleep_for(milliseconds{300});
  const auto begin = Clock::now();
  server.stop();
  EXPECT_LT(Clock::now() - begin, milliseconds{1500});
  EXPECT_EQ(idle.receive() + half.receive(), "");
  EXPECT_FALSE(server.failed());
  server.start();
  EXPECT_THAT(exchange(server.quotesPort(), kQuote), StartsWith("HTTP/1.1 200 "));
}

}  // namespace
}  // namespace quintara::quotes
