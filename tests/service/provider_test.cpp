#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <future>
#include <map>

#include "provider_server.hpp"
#include "service/provider_source.hpp"
#include "service/replies.hpp"
#include "service/text.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using Clock = std::chrono::steady_clock;

const std::string kKey = "Se/cret+Key42";
const std::string kTable = "Date,Open,High,Low,Close,Volume\n2026-11-19,1,2,1,2,7\n";
const Day kFriday = *makeDay(2026, 11, 20);

class ProviderTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    certificates = new Certificates;
    ::setenv("PRICE_KEY", kKey.c_str(), 1);
    ::setenv("no_proxy", "127.0.0.1,localhost", 1);
  }
  static void TearDownTestSuite() { delete certificates; }

  // The address of a path on the server with certificates.
  std::string at(const std::string& path) const {
    return "https://127.0.0.1:" + server.port + path;
  }
  ProviderSettings settings(const std::string& more = {}, std::string url = {}) const {
    url = url.empty() ? at("/t/{symbol}?k={key}") : url;
    return parseProviderSettings("url = " + url + "\nkey_variable = PRICE_KEY\nca_file = " +
                                 certificates->file("ca.pem") + "\n" + more);
  }
  Log log() {
    return Log(LogLevel::Debug, [this](const std::string& line) { logged += line; });
  }
  // The quote that comes of it, or why there is none.
  std::string found(const ProviderSettings& provider, Day today = kFriday) {
    const Found result = ProviderSource(provider, log()).find("X&Y", today);
    if (const auto* bars = std::get_if<DailyBars>(&result)) {
      return quoteText("", *bars, today).substr(3);
    }
    const auto* failed = std::get_if<Failed>(&result);
    return failed != nullptr ? failed->reason : "not found";
  }

  static inline Certificates* certificates = nullptr;
  std::string logged;
  std::function<void(const httplib::Request&, httplib::Response&)> answer =
      [](const auto&, auto& response) { response.body = kTable; };
  ProviderServer server{std::make_unique<httplib::SSLServer>(certificates->file("cert.pem").c_str(),
                                                             certificates->file("key.pem").c_str()),
                        [this](const auto& request, auto& response) { answer(request, response); }};
};

TEST_F(ProviderTest, FillsInWhatTheProviderAsksFor) {
  std::string header;
  answer = [&](const auto& request, auto&) { header = request.get_header_value("X-Key"); };
  const std::string url = at("/{symbol_lower}?s={symbol}&f={from}&t={to}&i={interval}&k={key}");
  found(settings("header = X-Key: {key}\ndate_format=%d/%m/%y\ninterval=1 d\nyears=2", url));
  found(settings("date_format = unix\nyears = 1", url), *makeDay(2024, 2, 29));
  EXPECT_EQ(server.targets().at(0),
            "/x%26y?s=X%26Y&f=20%2F11%2F24&t=20%2F11%2F26&i=1%20d&k=Se%2Fcret%2BKey42");
  EXPECT_EQ(server.targets().at(1),
            "/x%26y?s=X%26Y&f=1677542400&t=1709251199&i=d&k=Se%2Fcret%2BKey42");
  EXPECT_EQ(header, "");
  found(settings("header = X-Key: {key}"));
  EXPECT_EQ(header, kKey);
}

TEST_F(ProviderTest, TellsAbsentPricesFromUselessAnswersAndNeverShowsTheKey) {
  const std::string good = "2.00,\"11/19/2026\",\"4:00pm\",N/A,N/A,N/A,N/A,N/A\r\n";
  const std::string late = std::string(190, '.') + kKey + " " + std::string(400, '.');
  const struct {
    int status;
    std::string body, expected, more = {};
  } cases[] = {
      {200, kTable + "rubbish\n", good},
      {404, "<html>no</html>", "not found"},
      {200, " \r\n", "not found"},
      {200, "Date,Open,High,Low,Close\n", "not found"},
      {200, "{\"prices\":[]}", "not found", "format = json\nrows = /prices"},
      {400, "No such symbol: X", "not found", "unknown_symbol = No such symbol"},
      {200, "{\"note\":\n \"" + kKey + " used up\"}", "{\"note\": \"*** used up\"}"},
      {200, "{\"note\": \"used up\"}", "nothing at /X&Y/p", "format = json\nrows = /{symbol}/p"},
      {200, "Date,Open,High,Low,Close\n" + kKey + ",1,1,1,1\n", "1 bad ones, line 2: Date \"***\""},
      {403, upperCase(kKey) + " bad", "the key or the plan does not allow this: *** bad"},
      {429, "k=" + percentEncoded(kKey), "429, too many requests or a quota used up: k=***"},
      {400, late, ".*** ...."},
      {502, "a\x1b[2J", "HTTP status 502: a\\x1b[2J"},
      {200, std::string(8'400'000, ' '), "the reply is larger than 8 MB"},
  };
  for (const auto& c : cases) {
    answer = [&c](const auto&, auto& response) {
      response.status = c.status;
      response.body = c.body;
    };
    EXPECT_THAT(found(settings(c.more)), HasSubstr(c.expected)) << c.body.substr(0, 200);
  }
  EXPECT_THAT(logged, AllOf(HasSubstr("127.0.0.1: X&Y is not known there"),
                            HasSubstr("bad rows left out: 1, the first in line 3: Date \"rub")));
  EXPECT_THAT(upperCase(logged), AllOf(Not(HasSubstr("SE/CR")), Not(HasSubstr("SE%2FCR"))));
}

TEST_F(ProviderTest, FollowsFewRedirectsAndKeepsTheKeyFromOthers) {
  std::string seen, target;
  const auto redirect = [&](const auto& request, auto& response) {
    seen = request.get_header_value("X-Key");
    response.body = kTable;
    if (request.path != "/good") {
      response.set_redirect(target);
    }
  };
  answer = redirect;
  ProviderServer plain(std::make_unique<httplib::Server>(), redirect);
  const auto from = [&](const std::string& url) {
    return found(settings("header = X-Key: {key}", url + "/?{symbol}"));
  };
  for (const auto& [to, expected] : std::map<std::string, std::string>{
           {"/good", "2.00,"},
           {"/again?" + kKey, "too many redirects"},
           {"http://127.0.0.1:" + plain.port + "/good?" + kKey, "a redirect from https to http"},
           {"file:///etc/passwd?" + kKey, "a redirect to what is no http or https addr"},
           {"https://me:" + kKey + "@127.0.0.1:" + server.port, "a redirect to what is no http"}}) {
    target = to;
    EXPECT_THAT(from(at("")), HasSubstr(expected));
    EXPECT_EQ(seen, kKey) << to;
  }
  EXPECT_THAT(plain.targets(), SizeIs(0));
  EXPECT_THAT(logged, Not(HasSubstr(kKey)));
  target = at("/good");
  EXPECT_THAT(from("http://127.0.0.1:" + plain.port), HasSubstr("2.00,"));
  EXPECT_EQ(seen, "");
  EXPECT_THAT(logged, HasSubstr("the key travels unencrypted"));
}

TEST_F(ProviderTest, TrustsNobodyWithoutACertificateAndWaitsForNobodyForever) {
  EXPECT_THAT(found(parseProviderSettings("url = " + at("/{symbol}"))), HasSubstr("certificate"));
  EXPECT_THAT(found(settings("", "https://localhost:" + server.port + "/{symbol}")),
              HasSubstr("localhost: SSL: "));
  EXPECT_THAT(server.targets(), SizeIs(0));
  EXPECT_THAT(found(settings("", "https://127.0.0.1:1/{symbol}")),
              HasSubstr("127.0.0.1: Couldn't connect"));
  answer = [](const auto&, auto& response) {
    response.set_chunked_content_provider("text/csv", [](std::size_t, httplib::DataSink& sink) {
      std::this_thread::sleep_for(milliseconds{200});
      return sink.write("x", 1);
    });
  };
  const auto begin = Clock::now();
  EXPECT_THAT(found(settings("timeout_seconds = 1")), HasSubstr("127.0.0.1: Timeout"));
  std::stop_source stop;
  ProviderSource source(settings(), log(), stop.get_token());
  auto slow = std::async(std::launch::async, [&] { return source.find("A", kFriday); });
  std::this_thread::sleep_for(milliseconds{300});
  stop.request_stop();
  EXPECT_TRUE(std::holds_alternative<Failed>(slow.get()));
  EXPECT_LT(Clock::now() - begin, milliseconds{4000});
}

TEST_F(ProviderTest, AQuoteGoesOnTopOfTheTable) {
  const std::string table = "2.00,\"11/19/2026\",\"4:00pm\",N/A,N/A,N/A,N/A,N/A\r\n";
  const std::string quote = "3.50,\"11/20/2026\",\"4:00pm\",+1.50,3.00,4.00,2.00,9\r\n";
  const std::string header = "Date,Open,High,Low,Close,Volume\n";
  const std::string json = "quote_format=json\nquote_rows=/q/0\nquote_last=c\nquote_date=t";
  const std::string q = "{\"q\":[{\"open\":3,\"high\":4,\"low\":2,\"c\":3.5,\"volume\":9,\"t\":";
  const Day sunday = kFriday + std::chrono::days{2};
  const struct {
    std::string body, expected, more;
    Day today = kFriday;
  } cases[] = {
      {header + "11/20/2026,3,4,2,3.5,9\n", quote, "date_order = month-first"},
      {header + "2026-11-18,3,4,2,3.5,9\n", table, ""},
      {header + "2026-11-20,N/A,N/A,N/A,3.5,0\n", table, ""},
      {"Open,High,Low,LAST,Volume\n3,4,2,3.5,9\n", quote, "quote_last = Last"},
      {"Open;High;Low;Close\n3;4;2;3,5\n",
       "3.50,\"11/20/2026\",\"4:00pm\",+1.50,N/A,N/A,N/A,N/A\r\n", "", sunday},
      {q + "1795132799000}]}", "3.50,\"11/19/2026\",\"4:00pm\",N/A,N/A,N/A,N/A,N/A\r\n", json},
      {q + "1795132799.5}]}", quote, json + "\nutc_offset_hours = 1"},
      {"", table, ""},
      {"<html>", "not prices, no column Open, High, Low, Close: <html>", ""},
  };
  for (const auto& c : cases) {
    answer = [&](const auto& request, auto& response) {
      response.body = request.path == "/quote" ? c.body : kTable;
    };
    const auto provider = settings("quote_url = " + at("/quote?{symbol}") + "\n" + c.more);
    EXPECT_THAT(found(provider, c.today), HasSubstr(c.expected)) << c.body;
  }
  EXPECT_THAT(logged, HasSubstr("the quote is left out, line 2: Open \"N/A\" is not understood"));
}

TEST_F(ProviderTest, AsksOnceForRequestsThatComeTogether) {
  std::atomic<int> status = 200;
  answer = [&](const auto&, auto& response) {
    std::this_thread::sleep_for(milliseconds{200});
    response.status = status;
    response.body = kTable;
  };
  ProviderSource source(settings("cache_seconds = 1"), Log(LogLevel::Error));
  const auto ask = [&](const std::string& ticker, Day today = kFriday) {
    return std::holds_alternative<DailyBars>(source.find(ticker, today));
  };
  {
    std::vector<std::future<bool>> together;
    for (int i = 0; i < 12; ++i) {
      together.push_back(std::async(std::launch::async, ask, i % 2 == 0 ? "A" : "B", kFriday));
    }
  }
  EXPECT_THAT(server.targets(), SizeIs(2));
  EXPECT_TRUE(ask("A", kFriday + std::chrono::days{1}));
  std::this_thread::sleep_for(milliseconds{1100});
  status = 500;
  EXPECT_FALSE(ask("B") || ask("B"));
  EXPECT_THAT(server.targets(), SizeIs(4));
}

TEST_F(ProviderTest, ForgetsTheOldestAnswerWhenItHasMany) {
  ProviderSource source(settings(), Log(LogLevel::Error));
  for (int i = 0; i < 36; ++i) {  // 1 to 3 are remembered, 0 is not
    source.find("T" + std::to_string(i < 33 ? i : 36 - i), kFriday);
  }
  EXPECT_THAT(server.targets(), SizeIs(33));
  source.find("T0", kFriday);
  EXPECT_THAT(server.targets(), SizeIs(34));
}

TEST_F(ProviderTest, GoesThroughTheProxyOfTheEnvironment) {
  ProviderServer proxy(std::make_unique<httplib::Server>(), answer);
  ::setenv("http_proxy", ("http://127.0.0.1:" + proxy.port).c_str(), 1);
  EXPECT_THAT(found(settings("", "http://provider.example/{symbol}")), HasSubstr("2.00,"));
  ::unsetenv("http_proxy");
  EXPECT_EQ(proxy.targets().at(0), "http://provider.example/X%26Y");
}

}  // namespace
}  // namespace quintara::quotes
