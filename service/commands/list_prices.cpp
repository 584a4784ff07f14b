#include "service/commands/list_prices.hpp"

#include <iomanip>
#include <ostream>

#include "service/desk/request.hpp"
#include "service/sources/price_files.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// Why nobody can ask for a file of this ticker behind the file `before`; nothing if somebody can.
std::string unreachable(const std::string& ticker, const std::string& before) {
  if (ticker.empty()) {
    return "its name does not end in .csv, .txt or .tsv";
  }
  if (tickerOfFile(before) == ticker) {
    return escaped(before) + " goes before it";
  }
  try {
    parseTicker(ticker);
  } catch (const Refusal& refusal) {
    return refusal.what();
  }
  return {};
}

}  // namespace

std::string summaryOf(const DailyBars& bars) {
  const DailyBar& newest = bars.back();
  return std::to_string(bars.size()) + (bars.size() == 1 ? " day, " : " days to ") +
         tableDate(newest.date) + ", newest close " + newest.close.text();
}

bool listPrices(const std::filesystem::path& folder, std::ostream& out) {
  constexpr int kTickerWidth = 10;
  const PriceFiles files(folder);
  bool any = false;
  std::string counts;  // the name of the last file that somebody can ask for
  for (const std::string& name : files.names()) {
    const std::string ticker = tickerOfFile(name);
    const std::string reason = unreachable(ticker, counts);
    if (!reason.empty()) {
      out << escaped(name) << " is not used: " << reason << "\n";
      continue;
    }
    counts = name;
    const PriceFile prices = pricesIn(files.bytesOf(name), ticker);
    any = any || prices.problem.empty();
    out << std::left << std::setw(kTickerWidth) << escaped(ticker) << " "
        << (prices.problem.empty() ? summaryOf(prices.bars) : "no prices: " + prices.problem)
        << "\n";
  }
  if (!any) {
    out << "There are no prices in " << escaped(folder.string()) << "\n";
  }
  return any;
}

}  // namespace quintara::quotes
