#include "service/server.hpp"

#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <ctime>
#include <future>
#include <map>
#include <thread>
#include <tuple>

#include "client.hpp"
#include "service/http/clients.hpp"
#include "service/http/http_server.hpp"
#include "service/http/listening_socket.hpp"
#include "service/prices/day_forms.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {

using std::chrono::milliseconds;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

const std::string kHost = "Host: localhost\r\n";
const std::string kRest = " HTTP/1.1\r\n" + kHost + "\r\n";

std::string tableOf(const std::string& ticker) {
  return "GET /table.csv?s=" + ticker + "&a=1&b=1&c=1900&d=12&e=31&f=2099&g=d" + kRest;
}
std::string quoteOf(const std::string& ticker) {
  return "GET /d/quotes.csv?s=" + ticker + "&f=sl1d1t1c1ohgv&e=.csv" + kRest;
}

// A price file in which every price of every day is the same.
std::string daysAt(const std::string& price, Day first, int count) {
  std::string rows = "Date,Open,High,Low,Close\n";
  for (Day day = first; day < first + std::chrono::days{count}; day += std::chrono::days{1}) {
    rows += momentText(day, "%Y-%m-%d,") + price + "," + price + "," + price + "," + price + "\n";
  }
  return rows;
}

struct ServerTest : testing::Test {
  ServerTest() {
    folder.write("A+B.csv", "Date,Open,High,Low,Close\n2026-11-19,1,2,1,2\n2026-11-20,2,3,2,3\n");
    server.start();
  }

  TemporaryFolder folder;
  Day today = *makeDay(2026, 11, 20);
  const Log log{LogLevel::Debug, [](const std::string& line) {
                  EXPECT_EQ(line.find('\x1b'), line.npos) << "unescaped";
                }};
  Server server{{0, 0, {folder.path, std::nullopt, log}, [this] { return today; }}};
};

TEST_F(ServerTest, AnswersWhatIsForItAndSignsEveryReply) {
  const std::string bare = "GET /table.csv HTTP/1.1\r\n";
  const std::string table = bare + kHost;
  for (const auto& [request, reply] : std::map<std::string, std::string>{
           {tableOf("A+B"), "200 Date,Open,"},
           {quoteOf("A+B"), "404 only /table.csv is served here\n"},
           {"POST /table.csv HTTP/1.1\r\n" + kHost + "Content-Length: 9999999999\r\n\r\nabc",
            "405 only GET is served here\n"},
           {bare + "Host: rebound.example\r\n\r\n",
            "403 this service answers requests to 127.0.0.1 "},
           {table + "Origin: null\r\n\r\n", "403 this service does not answer web pages\n"},
           {table + "referer: http://localhost/\r\n\r\n", "403"},
           {table + "Sec-Fetch-Site: same-origin\r\n\r\n", "403"},
           {table + "Sec-Fetch-Site: none\r\n\r\n", "400"},
           {bare + "hOST: Localhost:1\r\n\r\n", "400"},
           {table + "Range: bytes=0-1\r\nExpect: 100-continue\r\n\r\n", "400"},
           {table + "Content-Length: 3\r\n\r\nabc", "400 a request with a body is not und"},
           {table + "Content-Length: 0\r\n\r\n", "400 the ticker (s) is missing\n"},
           {table + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n", "400 a request with a body"},
           {"GET /\x1b[2J" + kRest, "404"}}) {
    EXPECT_THAT(
        wholeReply(server.historyPort(), request),
        testing::AllOf(StartsWith("HTTP/1.1 " + reply.substr(0, 3)),
                       HasSubstr("\r\n\r\n" + reply.substr(std::min<std::size_t>(4, reply.size()))),
                       HasSubstr(reply[2] == '5' ? "\r\nAllow: GET\r\n" : ""),
                       HasSubstr("\r\nServer: quintara-quotes/" QUINTARA_VERSION "\r\n"),
                       HasSubstr("\r\nConnection: close\r\n")))
        << request;
  }
  for (const std::string& request :
       {"X: " + std::string(17'000, 'x'), std::string("rubbish"), std::string("Host: a.example")}) {
    const std::string answer = ask(server.historyPort(), table + request + "\r\n\r\n");
    EXPECT_TRUE(answer.empty() || answer.starts_with("HTTP/1.1 4")) << answer;
  }
  EXPECT_THAT(wholeReply(server.quotesPort(), quoteOf("a+b")), EndsWith(",2.00,3.00,2.00,0\r\n"));
}

TEST_F(ServerTest, RefusesAnotherUserWhoReachesASocket) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only root can be another user";
  }
  OwnSockets sockets(folder.path);
  std::vector<Endpoint> endpoints;
  endpoints.push_back({Endpoint::Kind::OwnUser, sockets.listen("open"), "/",
                       [](const std::string&) { return "prices"; }});
  const HttpServer http(std::move(endpoints), 1, log);
  const std::string path = folder.path / "open";
  std::filesystem::permissions(folder.path, std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms::all);
  EXPECT_THAT(ask(path, "GET /" + kRest), EndsWith("prices"));
  std::thread([&] {
    ::syscall(SYS_setresuid, -1, 65534, -1);  // of this thread alone
    EXPECT_EQ(ask(path, "GET /" + kRest), "");
  }).join();
}

TEST_F(ServerTest, AThousandRequestsFromFiftyClientsLoseAndMixNothing) {
  const auto tableAt = [&](const std::string& price) {
    folder.write("new", daysAt(price, *makeDay(1990, 1, 1), 1000));
    std::filesystem::rename(folder.path / "new", folder.path / "FRESH.csv");
    return wholeReply(server.historyPort(), tableOf("fresh"));
  };
  const std::string tables[] = {tableAt("1"), tableAt("2")};
  EXPECT_THAT(tables[1], EndsWith("\n1-Jan-90,2.00,2.00,2.00,2.00,0\n"));
  std::vector<FileHandle> silent;
  std::atomic<int> busy = 50;
  std::vector<std::jthread> clients;
  for (int client = 1; client <= 50; ++client) {
    silent.push_back(connected(server.historyPort()));
    clients.emplace_back([&, own = std::to_string(client)] {
      folder.write("C" + own + ".csv", daysAt(own, today, 1));
      for (int round = 0; round < 10; ++round) {
        EXPECT_THAT(wholeReply(server.quotesPort(), quoteOf("C" + own)),
                    HasSubstr("\"C" + own + "\"," + own + ".00,"));
        EXPECT_THAT(wholeReply(server.historyPort(), tableOf("fresh")),
                    testing::AnyOf(tables[0], tables[1]));
      }
      --busy;
    });
  }
  for (int price = 1; busy > 0; price = 3 - price) {
    tableAt(std::to_string(price));
  }
}

TEST_F(ServerTest, AnswersBehindACrowdThatIsSilentOrNeverReads) {
  std::vector<FileHandle> crowd;
  for (int i = 0; i < 640; ++i) {  // more than it keeps
    crowd.push_back(connected(server.historyPort()));
    if (i % 8 == 0) {
      send(crowd.back(), tableOf("DEMO"));
    }
  }
  const auto begin = Clock::now();
  EXPECT_THAT(wholeReply(server.historyPort(), tableOf("A+B")), StartsWith("HTTP/1.1 200 "));
  EXPECT_LT(Clock::now() - begin, milliseconds{4000});
}

TEST_F(ServerTest, TellsTheOldestOfTooManyWhoWaitAndAnswersTheNewest) {
  std::promise<void> begun, released;
  std::vector<Endpoint> endpoints;
  endpoints.push_back({Endpoint::Kind::Port, listenOnLoopback(0), "/", [&](const std::string& at) {
                         if (at == "/?first") {
                           begun.set_value();
                           released.get_future().wait();
                         }
                         return "prices";
                       }});
  const int port = portOf(endpoints.front().listening);
  const HttpServer http(std::move(endpoints), 1, log);
  std::vector<FileHandle> crowd;
  for (std::string query = "?first"; crowd.size() < 600; query = "") {  // more than it keeps
    crowd.push_back(connected(port));
    send(crowd.back(), "GET /" + query + kRest);
    if (crowd.size() == 1) {
      begun.get_future().wait();
    }
  }
  EXPECT_THAT(receive(crowd[1]), StartsWith("HTTP/1.1 503 "));
  released.set_value();
  EXPECT_THAT(receive(crowd.back()), EndsWith("prices"));
}

TEST(Clients, WhoseTimeIsUpFirstGivesWayToLargeRepliesAndToTheEnd) {
  Clients clients;
  const Endpoint endpoint{Endpoint::Kind::Port, FileHandle(-1), "", nullptr};
  const std::array sockets{9001, 9002, 9003, 9004};  // which are not there
  const auto states = [&] {
    std::string shown;
    for (const int socket : sockets) {
      shown += "aWT-"[static_cast<int>(clients.at(socket).state)];
    }
    return shown;
  };
  const auto begin = Clock::now();
  for (const int socket : sockets) {
    clients.add(socket, endpoint);
  }
  EXPECT_GE(clients.nextEnd(), begin + milliseconds{5000});
  EXPECT_LE(clients.nextEnd(), Clock::now() + milliseconds{5000});
  const std::size_t megabyte = 1 << 20;
  for (const auto& [socket, size, expected] : {std::tuple{9002, 30 * megabyte, "aTaa"},
                                               {9001, 34 * megabyte, "TTaa"},
                                               {9003, megabyte, "T-Ta"},
                                               {9004, 64 * megabyte, "---T"}}) {
    clients.letTake(clients.at(socket), size);
    EXPECT_EQ(states(), expected);
  }
  EXPECT_GE(clients.nextEnd(), begin + milliseconds{10'000});
  clients.remove(9003);
  clients.add(9003, endpoint);
  EXPECT_TRUE(clients.makeRoom());
  EXPECT_EQ(states(), "---T");
  clients.endAt(begin);
  clients.cutOffTheLate();
  EXPECT_EQ(states() + (clients.canMakeRoom() || clients.makeRoom() ? "room" : ""), "----");
  EXPECT_EQ(clients.nextEnd(), Clock::time_point::max());
}

TEST_F(ServerTest, CutsOffSilentAndTricklingClients) {
  wholeReply(server.quotesPort(), quoteOf("A+B"));  // for which a worker wakes the server
  const auto begin = Clock::now();
  const auto worked = std::clock();
  const FileHandle silent = connected(server.historyPort());
  const FileHandle trickling = connected(server.quotesPort());
  for (int i = 0; i < 100 && send(trickling, "x"); ++i) {
    std::this_thread::sleep_for(milliseconds{100});
  }
  EXPECT_EQ(receive(trickling) + receive(silent), "");
  EXPECT_LT(std::clock() - worked, 2 * CLOCKS_PER_SEC);
  EXPECT_LT(Clock::now() - begin, milliseconds{8000});
}

TEST_F(ServerTest, StopsWithClientsConnectedAndStartsAgain) {
  folder.write("LONG.csv", daysAt("900000000", *makeDay(1900, 1, 1), 73'000));
  today = *makeDay(2099, 12, 31);
  const FileHandle idle = connected(server.historyPort());
  const FileHandle half = connected(server.quotesPort());
  send(half, "GET /d");
  const FileHandle slow = connected(server.historyPort());
  send(slow, tableOf("long"));  // leaves more unread than the sockets' buffers hold
  std::this_thread::sleep_for(milliseconds{300});
  const auto stopping = Clock::now();
  server.stop();
  EXPECT_LT(Clock::now() - stopping, milliseconds{5000});
  EXPECT_EQ(receive(idle) + receive(half), "");
  EXPECT_FALSE(server.failed());
  EXPECT_NO_THROW(listenOnLoopback(server.quotesPort()));
  server.start();
  EXPECT_THAT(wholeReply(server.quotesPort(), quoteOf("A+B")), StartsWith("HTTP/1.1 200 "));
}

}  // namespace quintara::quotes
