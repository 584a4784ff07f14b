#include "service/server.hpp"

#include <arpa/inet.h>
#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <thread>

#include "service/file_handle.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

const std::string kTable =
    "GET /table.csv?s=A+B&a=1&b=1&c=2026&d=12&e=31&f=2026&g=d HTTP/1.1\r\n\r\n";
const std::string kQuote = "GET /d/quotes.csv?s=a+b&f=sl1d1t1c1ohgv&e=.csv HTTP/1.1\r\n\r\n";

// Clients that can misbehave: they send what they are told and read until the other side closes.
FileHandle connected(int port) {
  FileHandle client(::socket(AF_INET, SOCK_STREAM, 0));
  const int small = 4096;  // so that a long reply waits for its reader
  ::setsockopt(client.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(::connect(client.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  return client;
}
bool send(const FileHandle& client, const std::string& text) {
  return ::send(client.get(), text.data(), text.size(), MSG_NOSIGNAL) > 0;
}
std::string receive(const FileHandle& client) {
  std::string reply(100'000, '\0');
  const auto got = ::recv(client.get(), reply.data(), reply.size(), MSG_WAITALL);
  return reply.substr(0, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
}
std::string exchange(int port, const std::string& request) {
  const FileHandle client = connected(port);
  send(client, request);
  return receive(client);
}

class ServerTest : public testing::Test {
 protected:
  ServerTest() {
    folder.write("A+B.csv", "Date,Open,High,Low,Close\n2026-11-19,1,2,1,2\n2026-11-20,2,3,2,3\n");
    server.start();
  }

  TemporaryFolder folder;
  Day today = *makeDay(2026, 11, 20);
  const Log log{LogLevel::Debug, [](const std::string& line) {
                  EXPECT_EQ(line.find('\x1b'), line.npos) << "unescaped";
                }};
  Server server{{0, 0, folder.path, [this] { return today; }, log}};
  const Clock::time_point begin = Clock::now();
};

TEST_F(ServerTest, AnswersWhatIsForItAndSignsEveryReply) {
  const std::string table = "/table.csv HTTP/1.1\r\n";
  for (const auto& [request, status, end] : std::initializer_list<std::array<std::string, 3>>{
           {kTable, "200",
            "\r\n\r\nDate,Open,High,Low,Close,Volume\n19-Nov-26,1.00,2.00,1.00,2.00,0\n"},
           {kQuote, "404"},  // that is for the other port
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
                AllOf(StartsWith("HTTP/1.1 " + status), EndsWith(end),
                      HasSubstr("\r\nServer: quintara-quotes/" QUINTARA_VERSION "\r\n")))
        << request;
  }
  EXPECT_THAT(exchange(server.quotesPort(), kQuote), EndsWith(",2.00,3.00,2.00,0\r\n"));
}

TEST_F(ServerTest, AThousandRequestsFromFiftyClientsLoseAndMixNothing) {
  const auto replaceFile = [&](const std::string& price) {
    std::string rows = "Date,Open,High,Low,Close\n";
    for (int day = 0; day < 1000; ++day) {
      rows += std::to_string(1990 + day / 28) + "-1-" + std::to_string(day % 28 + 1);
      for (int column = 0; column < 4; ++column) rows += "," + price;
      rows += "\n";
    }
    folder.write("new", rows);
    std::filesystem::rename(folder.path / "new", folder.path / "FRESH.csv");
  };
  replaceFile("1");
  std::vector<FileHandle> silent;
  std::atomic<int> busy = 50;
  std::vector<std::jthread> clients;
  for (int client = 1; client <= 50; ++client) {
    silent.push_back(connected(server.historyPort()));
    clients.emplace_back([&, own = std::to_string(client)] {
      const std::string price = "," + own;
      folder.write("C" + own + ".csv",
                   "Date,Open,High,Low,Close\n2026-11-20" + price + price + price + price);
      const std::string quote =
          "GET /d/quotes.csv?s=C" + own + "&f=sl1d1t1c1ohgv&e=.csv HTTP/1.1\r\n\r\n";
      for (int round = 0; round < 10; ++round) {
        EXPECT_THAT(exchange(server.quotesPort(), quote), HasSubstr("\"C" + own + "\"" + price));
        const std::string table =
            exchange(server.historyPort(),
                     "GET /table.csv?s=fresh&a=1&b=1&c=1990&d=1&e=1&f=2099&g=d HTTP/1.1\r\n\r\n");
        EXPECT_THAT(table, AnyOf(EndsWith("\n1-Jan-90,1.00,1.00,1.00,1.00,0\n"),
                                 EndsWith("\n1-Jan-90,2.00,2.00,2.00,2.00,0\n")));
        EXPECT_NE(table.find(",1.00,") == table.npos, table.find(",2.00,") == table.npos);
      }
      --busy;
    });
  }
  for (int price = 2; busy > 0; price = 3 - price) {
    replaceFile(std::to_string(price));
  }
}

TEST_F(ServerTest, CutsOffSilentAndTricklingClients) {
  auto silent = std::async(std::launch::async, exchange, server.quotesPort(), "");
  const FileHandle trickling = connected(server.quotesPort());
  for (int i = 0; i < 100 && send(trickling, "x"); ++i) {
    std::this_thread::sleep_for(milliseconds{100});
  }
  receive(trickling);
  silent.get();
  EXPECT_LT(Clock::now() - begin, milliseconds{8000});
}

TEST_F(ServerTest, StopsWithClientsConnectedAndStartsAgain) {
  std::string days = "Date,Open,High,Low,Close\n";
  for (int row = 0; row < 200 * 12 * 28; ++row) {
    days += std::to_string(1900 + row / 336) + "-" + std::to_string(row / 28 % 12 + 1) + "-" +
            std::to_string(row % 28 + 1) + ",900000000,900000000,900000000,900000000\n";
  }
  folder.write("LONG.csv", days);
  today = *makeDay(2099, 12, 31);
  const FileHandle idle = connected(server.historyPort());
  const FileHandle half = connected(server.quotesPort());
  send(half, "GET /d");
  const FileHandle slow = connected(server.historyPort());
  // Leaves more unread than the sockets' buffers hold.
  send(slow, "GET /table.csv?s=long&a=1&b=1&c=1900&d=1&e=1&f=2099&g=d HTTP/1.1\r\n\r\n");
  std::this_thread::sleep_for(milliseconds{300});
  const auto stopping = Clock::now();
  server.stop();
  EXPECT_LT(Clock::now() - stopping, milliseconds{3000});
  EXPECT_EQ(receive(idle) + receive(half), "");
  EXPECT_FALSE(server.failed());
  server.start();
  EXPECT_THAT(exchange(server.quotesPort(), kQuote), StartsWith("HTTP/1.1 200 "));
}

}  // namespace
}  // namespace quintara::quotes
