#include <gmock/gmock.h>

#include <unistd.h>

#include <array>
#include <atomic>
#include <future>
#include <map>
#include <set>

#include "provider_server.hpp"
#include "service/commands/check.hpp"
#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/desk/standard_sources.hpp"
#include "service/provider/provider_source.hpp"
#include "service/text/text.hpp"
#include "temporary_folder.hpp"
#include "transfer/transfer.hpp"

namespace quintara::quotes {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using Clock = std::chrono::steady_clock;

const TemporaryFolder kFolder;
const std::string kCertificate = kFolder.path / "certificate";
const std::string kKeyFile = kFolder.path / "key";
const std::string kKey = "Se/cret+Key42";
const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
const Day kSunday = *makeDay(2026, 11, 22);  // so that an undated quote is of Friday

struct ProviderTest : testing::Test {
  static void SetUpTestSuite() {
    const std::string make =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Test "
        "-days 2 -addext subjectAltName=IP:127.0.0.1 2>/dev/null";
    ASSERT_EQ(std::system((make + " -keyout " + kKeyFile + " -out " + kCertificate).c_str()), 0);
  }
  ProviderTest() { ::setenv("PRICE_KEY", kKey.c_str(), 1); }
  // The address of a path on the server with the certificate, which is its own authority.
  std::string at(const std::string& path) const { return "https://" + server.host + path; }
  ProviderSettings settings(const std::string& more = {}, const std::string& url = {}) const {
    return parseProviderSettings("url = " + (url.empty() ? at("/t/{symbol}?k={key}") : url) +
                                 "\nkey_variable = PRICE_KEY\nca_file = " + kCertificate + "\n" +
                                 more);
  }
  // The newest bar that comes of it, as a quote, or why there is none.
  std::string found(const ProviderSettings& provider, Day today = kSunday) {
    const Found result = ProviderSource(provider, log).find("X&Y", today);
    if (const auto* bars = std::get_if<DailyBars>(&result)) {
      return quoteText("", *bars, bars->back().date).substr(3);
    }
    const auto* failed = std::get_if<Failed>(&result);
    return failed != nullptr ? failed->reason : "not found, " + std::get<NotFound>(result).reason;
  }

  std::string logged, table = kHeader + "2026-11-19,1,2,1,2,7\n", quote;
  std::atomic<int> status = 200, quoteStatus = 200;
  milliseconds delay{0};
  const Log log{LogLevel::Debug, [this](const std::string& line) { logged += line; }};
  ProviderServer::Answer answer = [this](const auto& request, auto& reply) {
    const bool quoted = request.path == "/quote";
    reply = {quoted ? quoteStatus : status, quoted ? quote : table, at("/t")};
    std::this_thread::sleep_for(delay);
  };
  ProviderServer server{answer, contentOf(kCertificate), contentOf(kKeyFile)};
};

TEST_F(ProviderTest, FillsInWhatTheProviderAsksFor) {
  const std::string url = at("/{symbol_lower}?s={symbol}&f={from}&t={to}&i={interval}&k={key}");
  found(settings("date_format=%d/%m/%y\ninterval=1 d\nyears=2", url));
  found(settings("date_format = unix\nyears = 1", url), *makeDay(2024, 2, 29));
  EXPECT_THAT(server.targets,
              testing::ElementsAre(
                  "/x%26y?s=X%26Y&f=22%2F11%2F24&t=22%2F11%2F26&i=1%20d&k=Se%2Fcret%2BKey42",
                  "/x%26y?s=X%26Y&f=1677542400&t=1709251199&i=d&k=Se%2Fcret%2BKey42"));
}

TEST_F(ProviderTest, PutsTheQuoteOnTheTableAndTellsAbsentPricesFromUselessReplies) {
  const std::string close = R"(2.00,"11/19/2026","4:00pm",N/A,1.00,2.00,1.00,7)";
  const std::string fresh = R"(3.50,"11/20/2026","4:00pm",+1.50,3.00,4.00,2.00,1)";
  const std::string message = R"({"p":[],"note":"limit"})";
  const std::string rows = "format = json\nrows = /{symbol}\n";
  const std::string withQuote = "date_order = month-first\nquote_url = " + at("/quote?{symbol}\n");
  const std::string inJson = withQuote +
                             "quote_format = json\nquote_rows = /q/0\nquote_last = c\n"
                             "quote_date = t\nutc_offset_hours = 1\n";
  const struct {
    std::string body, expected, more = {};  // the body of the quote if there is one
    int status = 200;
  } cases[] = {
      {table + "2026-11-20,rubbish\n", close},
      {"<html>no " + kKey, "not found, HTTP status 404: <html>no ***", "", 404},
      {" \r\n", "not found, an empty reply"},
      {kHeader, "not found, an empty table: Date,Open,"},
      {R"({"X&Y":[],"note":"limit"})", "table: not prices, no rows but a message: {", rows},
      {message, "not found, ", rows + "unknown_symbol = limit"},
      {"{\"note\":\n \"" + kKey + " used up\"}", "as CSV: {\"note\": \"*** used up\"}"},
      {kHeader + kKey + ",1,1,1,1\n", "1 bad ones, line 2: Date \"***\""},
      {upperCase(kKey) + " bad", "the key or the plan does not allow this: *** bad", "", 403},
      {std::string(190, '.') + kKey + " " + std::string(400, '.'), ".*** ....", "", 400},
      {std::string(8'400'000, ' '), "the reply is larger than 8 MB"},
      {kHeader + "11/19/2026,3,4,2,3.5,9\n", R"(3.50,"11/19/2026","4:00pm",N/A,3.00)", withQuote},
      {kHeader + "2026-11-20,N/A,N/A,N/A,3.5,0\n", close, withQuote},
      {"Open;High;Low;LAST;Volume\n3;4;2;3,5;1\n", fresh, withQuote + "quote_last = Last"},
      {"3;4;2;3,5;1\n", fresh,
       withQuote + "quote_open = 0\nquote_high = 1\nquote_low = 2\n"
                   "quote_last = 3\nquote_volume = 4"},
      {R"({"q":[{"open":3,"high":4,"low":2,"c":3.5,"volume":1,"t":1795132799.5}]})", fresh, inJson},
      {"", close, withQuote},
      {"Open;High;Low;Close\n1;2;1;2\n", close, withQuote},
      {"<html>",
       "quote: not prices, a web page, not a table: download the prices themselves, as CSV: <html>",
       withQuote},
  };
  for (const std::string prices = table; const auto& c : cases) {
    table = prices;
    (c.more.find("quote_url") == c.more.npos ? table : quote) = c.body;
    status = c.status;
    EXPECT_THAT(found(settings(c.more)), HasSubstr(c.expected)) << c.body.substr(0, 200);
  }
  EXPECT_THAT(logged, AllOf(HasSubstr("127.0.0.1: X&Y: quote: none, an empty reply"),
                            HasSubstr("warning: 127.0.0.1: X&Y: table: not prices, ")));
  EXPECT_THAT(logged, HasSubstr("bad rows left out: 1, the first in line 3: Open \"rub"));
  EXPECT_THAT(logged,
              HasSubstr("127.0.0.1: X&Y is not known there, HTTP status 404: <html>no ***"));
  EXPECT_THAT(upperCase(logged), AllOf(Not(HasSubstr("SE/CR")), Not(HasSubstr("SE%2FCR"))));
}

TEST_F(ProviderTest, FollowsFewRedirectsAndKeepsTheKeyFromOthers) {
  std::string seen, target;
  answer = [&](const auto& request, auto& reply) {
    seen = request.key;
    reply = {request.path == "/good" ? 200 : 302, table, target};
  };
  ProviderServer plain(answer);
  const std::string plainHost = "http://" + plain.host;
  for (const auto& [to, expected] : std::map<std::string, const char*>{
           {"/good", "2.00,"},
           {"/again?" + kKey, "too many redirects"},
           {plainHost + "/good?" + kKey, "a redirect from https to http"},
           {"file:///etc/passwd?" + kKey, "a redirect to what is no http or https address"}}) {
    target = to;
    EXPECT_THAT(found(settings("header = X-Key: {key}", at("/?{symbol}"))), HasSubstr(expected));
    EXPECT_EQ(seen, kKey) << to;
  }
  EXPECT_THAT(server.targets, SizeIs(2 + 5 + 1 + 1));
  // By the address: a name that leads here need not look like it.
  Transfer elsewhere({.url = "http://localhost" + plain.host.substr(9), .redirected = true});
  while (!elsewhere.advance(milliseconds{100})) {
  }
  EXPECT_EQ(elsewhere.takeAnswer().problem, "a redirect to this computer");
  EXPECT_THAT(plain.targets, SizeIs(0));
  EXPECT_THAT(logged, Not(HasSubstr(kKey)));
  target = at("/good");
  EXPECT_THAT(found(settings("header = X-Key: {key}", plainHost + "/{symbol}")), HasSubstr("2.00"));
  EXPECT_EQ(seen, "");
}

TEST_F(ProviderTest, GoesThroughTheProxyAndNotFromFarAwayToThisComputer) {
  ProviderServer proxy(answer);
  ::setenv("http_proxy", proxy.host.c_str(), 1);
  ::setenv("https_proxy", proxy.host.c_str(), 1);
  const std::string samePort = proxy.host.substr(proxy.host.find(':'));
  for (const auto& [code, scheme, toPort, expected] :
       {std::tuple{200, "http", std::string(), "2.00,"},
        {302, "http", "", "provider.example: X&Y: table: a redirect to this computer"},
        {302, "http", samePort, "provider.example: X&Y: table: a redirect to this computer"},
        {407, "https", "", "provider.example: X&Y: table: the proxy answered 407"}}) {
    status = code;
    const std::string url =
        std::string(scheme) + "://provider.example" + toPort + "/{symbol}?{key}";
    EXPECT_THAT(found(settings("", url)), HasSubstr(expected));
  }
  const std::size_t asked = proxy.targets.size();
  std::array<char, 256> ownName{};
  ASSERT_EQ(::gethostname(ownName.data(), ownName.size() - 1), 0);
  const std::string port = server.host.substr(server.host.find(':'));
  status = 200;
  for (const std::string& name :
       std::set<std::string>{"localhost", "[::ffff:127.0.0.1]", ownName.data()}) {
    found(settings("", "http://" + name + port + "/{symbol}?{key}"));
  }
  EXPECT_THAT(proxy.targets, SizeIs(asked));
  ::unsetenv("http_proxy");
  ::unsetenv("https_proxy");
  EXPECT_THAT(proxy.targets.at(0), HasSubstr("http://provider.example/X%26Y?"));
}

TEST_F(ProviderTest, TrustsNobodyWithoutACertificateAndWaitsForNobodyForever) {
  const std::string byName = "https://localhost" + server.host.substr(server.host.find(':'));
  const std::string noCertificate = "url = " + at("/{symbol}\nca_file = ") + kKeyFile;
  EXPECT_THAT(found(parseProviderSettings("url = " + at("/{symbol}"))), HasSubstr("certificate"));
  EXPECT_THAT(found(parseProviderSettings(noCertificate)), HasSubstr("ca_file"));
  EXPECT_THAT(
      found(settings("", byName + "/{symbol}?{key}")),
      AllOf(HasSubstr("localhost: X&Y: table: SSL"), HasSubstr("certificate subject name")));
  EXPECT_THAT(server.targets, SizeIs(0));
  answer = [](const auto&, auto& reply) { reply.trickles = true; };
  const auto begin = Clock::now();
  EXPECT_THAT(found(settings("timeout_seconds = 1")), HasSubstr("127.0.0.1: X&Y: table: Timeout"));
  std::stop_source stop;
  ProviderSource source(settings(), log, stop.get_token());
  auto slow = std::async(std::launch::async, [&] { return source.find("A", kSunday); });
  std::this_thread::sleep_for(milliseconds{300});
  stop.request_stop();
  EXPECT_TRUE(std::holds_alternative<Failed>(slow.get()));
  EXPECT_LT(Clock::now() - begin, milliseconds{4000});
}

TEST_F(ProviderTest, AsksOnceForRequestsThatComeTogether) {
  delay = milliseconds{200};
  ProviderSource source(settings("cache_seconds = 1"), Log(LogLevel::Error));
  const auto ask = [&](const std::string& ticker, Day today = kSunday) {
    return std::holds_alternative<DailyBars>(source.find(ticker, today));
  };
  std::vector<std::future<bool>> together;
  for (int i = 0; i < 12; ++i) {
    together.push_back(std::async(std::launch::async, ask, i % 2 == 0 ? "A" : "B", kSunday));
  }
  together.clear();  // waits for all
  EXPECT_THAT(server.targets, SizeIs(2));
  EXPECT_TRUE(ask("A", kSunday + std::chrono::days{1}));
  std::this_thread::sleep_for(milliseconds{1100});
  status = 500;
  EXPECT_FALSE(ask("B") || ask("B"));
  EXPECT_THAT(server.targets, SizeIs(4));
}

TEST_F(ProviderTest, KeepsAFewWaitingWithinTheTimeLimitAndRefusesMore) {
  delay = milliseconds{700};  // and one at a time: the second pair of transfers is late
  ProviderSource source(settings("timeout_seconds = 1\n"), log);
  std::vector<std::future<std::string>> asked;
  for (int i = 0; i < 20; ++i) {
    asked.push_back(std::async(std::launch::async, [&source, i] {
      const Found found = source.find("T" + std::to_string(i), kSunday);
      const auto* failed = std::get_if<Failed>(&found);
      return failed != nullptr ? failed->reason : "";
    }));
  }
  const auto begin = Clock::now();
  std::string reasons;
  for (auto& each : asked) {
    reasons += each.get() + "\n";
  }
  EXPECT_LT(Clock::now() - begin, milliseconds{4000});
  EXPECT_THAT(reasons, HasSubstr("127.0.0.1: too many requests wait for its answers already\n"));
  EXPECT_THAT(logged, HasSubstr("127.0.0.1: too many requests wait for its answers already\n"));
  EXPECT_THAT(reasons, HasSubstr("127.0.0.1: no transfer ended in time for another\n"));
}

TEST_F(ProviderTest, ComesBeforeTheDemonstrationMarket) {
  SourceSettings all;
  all.provider = settings();
  const QuoteDesk desk(standardSources(all, {}), [] { return kSunday; });
  EXPECT_THAT(desk.quote("q?s=DEMO"), HasSubstr("\"DEMO\",2.00,"));
  status = 404;
  EXPECT_THAT(desk.quote("q?s=DOWN"), HasSubstr("\"DOWN\""));
  EXPECT_THAT([&] { desk.quote("q?s=A"); },
              testing::ThrowsMessage<Refusal>(HasSubstr("no prices for A: HTTP status 404")));
  status = 500;
  EXPECT_THAT([&] { desk.quote("q?s=RANGE"); },
              testing::Throws<Refusal>(testing::Field(&Refusal::status, 502)));
}

TEST_F(ProviderTest, ItsBadSettingsStopOnlyWhatNobodyElseKnows) {
  const SourceSettings bad{"/nowhere", std::nullopt, log, "line 7: url"};
  const QuoteDesk desk(standardSources(bad, {}), [] { return kSunday; });
  EXPECT_THAT(logged, HasSubstr("quintara-quotes: provider: line 7: url\n"));
  EXPECT_THAT(desk.quote("q?s=DEMO"), HasSubstr("\"DEMO\""));
  EXPECT_THAT([&] { desk.quote("q?s=A"); },
              testing::Throws<Refusal>(
                  AllOf(testing::Field(&Refusal::status, 502),
                        testing::Property(&Refusal::what, HasSubstr("cannot be used: line 7")))));
}

TEST_F(ProviderTest, ShowsWhatIsWrongWithTheRepliesForOneSymbol) {
  std::ostringstream out;
  table += kKey + ",1,1,1,1\n";
  SourceSettings all;
  all.provider = settings();
  EXPECT_TRUE(check(all, "good", kSunday, out));
  EXPECT_THAT(
      out.str(),
      HasSubstr("Asked the provider at 127.0.0.1:\n  Table\n  Days: 1 of 1 rows; rows left out: 1\n"
                "    line 3: Date \"***\" is not understood\n"
                "  This is the answer for GOOD.\n1 day from 19-Nov-26 to "));
  EXPECT_THAT(out.str(), HasSubstr("The quote that a chart gets: \"GOOD\",2.00,\"11/19/2026\","));
  quote = kHeader + "2026-11-18,3,4,2,3.5,9\n";
  for (const auto& [code, expected] : std::map<int, const char*>{
           {200,
            "\n  Quote\n  Days: 1 of 1 rows; rows left out: 0\n"
            "  Quote: older than the table, not used\n"},
           {404, "\n  Quote: none, HTTP status 404: Date,Open"},
           {500, "\n  127.0.0.1: GOOD: quote: HTTP status 500: Date,Open"}}) {
    quoteStatus = code;
    all.provider = settings("quote_url = " + at("/quote?{symbol}"));
    check(all, "good", kSunday, out);
    EXPECT_THAT(out.str(), HasSubstr(expected));
  }
}

}  // namespace quintara::quotes
