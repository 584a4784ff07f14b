// From a raw request target to the reply, over a real folder of prices, and on to the rows that the
// window makes of the reply. Input: the target.

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "data/initialize_collection.hpp"
#include "data/quote_request.hpp"
#include "service/desk/quote_desk.hpp"
#include "service/desk/request.hpp"
#include "service/prices/price_file.hpp"
#include "service/sources/demo_market.hpp"
#include "service/sources/price_folder.hpp"
#include "target.hpp"
#include "values/text.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;
namespace fs = std::filesystem;

const Day kToday = *makeDay(2026, 11, 20);
constexpr std::string_view kSecret = "777.77";  // a price that no ticker may reach

/// A folder of prices with everything in it that must not be followed, and a secret beside it.
class Prices {
 public:
  Prices() : top_(::mkdtemp((fs::temp_directory_path() / "quotes-XXXXXX").string().data())) {
    const std::string header = "Date,Open,High,Low,Close,Volume\n";
    const std::string secret = header + "2026-11-19,777.77,777.77,777.77,777.77,1\n";
    fs::create_directories(folder() / "SUB.csv");
    write(top_ / "SECRET.csv", secret);
    write(folder() / "SUB.csv" / "SECRET.csv", secret);
    write(folder() / "A+B.csv", header + "2026-11-18,1,2,1,2,3\n2026-11-19,0.5,0.6,0.4,0.5,7\n" +
                                    "2026-11-20,2,3,2,3,9\n");
    write(folder() / "é.csv", header + "2006-11-18,1,2,1,2,3\n");
    write(folder() / "BAD.csv", header);
    fs::create_symlink("../SECRET.csv", folder() / "LINK.csv");
    ::mkfifo((folder() / "PIPE.csv").c_str(), S_IRUSR | S_IWUSR);
  }
  Prices(const Prices&) = delete;
  Prices& operator=(const Prices&) = delete;
  ~Prices() { fs::remove_all(top_); }

  [[nodiscard]] fs::path folder() const { return top_ / "prices"; }

 private:
  static void write(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }

  const fs::path top_;
};

/// Knows no ticker, but sees that each one that was let through is harmless as a file's name.
struct Gatekeeper : PriceSource {
  std::string name() const override { return "gatekeeper"; }
  Found find(const std::string& ticker, Day) override {
    check(!ticker.empty() && ticker.size() <= 100, "a ticker has 1 to 100 bytes");
    check(ticker.find("..") == ticker.npos && ticker.find_first_of("/\\,\"") == ticker.npos,
          "a ticker never leaves the folder or breaks a line");
    check(std::none_of(ticker.begin(), ticker.end(),
                       [](unsigned char c) { return c < 0x20 || (c >= 'a' && c <= 'z'); }),
          "a ticker is in upper case, without control characters");
    return NotFound{};
  }
};

PriceSources sources(const Prices& prices) {
  PriceSources sources;
  sources.push_back(std::make_unique<Gatekeeper>());
  sources.push_back(
      std::make_unique<PriceFolder>(prices.folder(), Log(LogLevel::Debug, [](const auto&) {})));
  sources.push_back(std::make_unique<DemoMarket>());
  return sources;
}

/// The reply, or nothing where the request was refused in order.
std::string replyOf(const std::function<std::string()>& answer) {
  std::string reply;
  try {
    reply = answer();
    check(!reply.empty() && reply.size() < 300'000, "a reply is not empty and not huge");
  } catch (const Refusal& refusal) {
    const std::string reason = refusal.what();
    check(refusal.status == 400 || refusal.status == 404, "a refusal is 400 or 404");
    check(!reason.empty() && reason.size() < 600 &&
              std::all_of(reason.begin(), reason.end(), [](char c) { return c >= ' ' && c < 127; }),
          "a refusal is one short line of ASCII");
  }
  check(reply.find(kSecret) == reply.npos, "nothing outside the folder is served");
  return reply;
}

void checkTable(std::string_view table, const TableRequest& asked) {
  const PriceFile file = parsePriceFile(std::string(table));
  const auto lines = static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n')) - 1;
  check(file.badLines == 0 && file.bars.size() == lines, "every line of a table parses");
  check(take(table, '\n') == "Date,Open,High,Low,Close,Volume", "a table begins with its header");
  Day newer = asked.last + std::chrono::days{1};
  while (!table.empty()) {
    std::string_view line = take(table, '\n');
    const auto moment = MomentReader().read(take(line, ','));
    check(moment && moment->day && *moment->day < newer,
          "rows are newest first and not after the dates asked for");
    newer = *moment->day;
  }
  check(lines == 0 || newer >= asked.first, "rows are not before the dates asked for");
  check(lines == 0 || file.bars.back().date < kToday + std::chrono::days{1}, "no row is of later");
}

void checkQuote(const std::string& quote) {
  check(quote.ends_with("\r\n") && std::count(quote.begin(), quote.end(), '\n') == 1 &&
            std::count(quote.begin(), quote.end(), ',') == 8,
        "a quote is one line of nine fields");
}

std::string percentEncoded(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    result += {'%', "0123456789ABCDEF"[byte / 16], "0123456789ABCDEF"[byte % 16]};
  }
  return result;
}

/// The service as the window's transfer sees it.
struct Replies : HttpClient, Clock {
  std::string OpenURL(const std::string& url, int) override {
    return url.find("/table.csv") != std::string::npos ? table : quote;
  }
  [[nodiscard]] Date today() const override { return Date{kToday}; }
  std::string table;
  std::string quote;
};

/// Every line of a table becomes a bar, and before them the quote where there was trading today.
void checkWindow(const std::string& table, const std::string& quote, Interval interval) {
  Replies replies;
  replies.table = table;
  replies.quote = quote;
  ChartState state;
  state.iInterval = static_cast<std::int16_t>(interval);
  if (!GetHistoricalData(state, {replies, replies, {"history", "quotes"}})) return;
  InitializeCollection(state, replies.today());
  const bool traded = interval == Interval::Daily && quote.find("N/A") == std::string::npos;
  const auto lines = std::count(table.begin(), table.end(), '\n');
  check(state.candles().Count() + 1 == static_cast<std::size_t>(lines + (traded ? 1 : 0)),
        "the window makes a bar of every line");
  for (std::size_t i = 1; i <= state.candles().Count(); ++i) {
    const Candle& bar = state.candles().Item(i);
    check(bar.dLow > 0 && bar.dLow <= std::min(bar.dOpen, bar.dClose) &&
              bar.dHigh >= std::max(bar.dOpen, bar.dClose),
          "the window reads prices that fit together");
  }
}

}  // namespace

void tryInput(std::string_view input) {
  static const Prices prices;
  static const QuoteDesk desk(sources(prices), [] { return kToday; });
  const std::string quote = replyOf([&] { return desk.quote(input); });
  if (!quote.empty()) checkQuote(quote);
  const std::string table = replyOf([&] { return desk.table(input); });
  if (table.empty()) return;
  const TableRequest asked = parseTableRequest(input);
  checkTable(table, asked);
  sDecimalSep = input.size() % 2 == 0 ? "." : ",";
  checkWindow(table, desk.quote("?s=" + percentEncoded(asked.ticker)), asked.interval);
}

}  // namespace quintara::fuzz
