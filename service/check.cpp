#include "service/check.hpp"

#include <ostream>

#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/prices/bars.hpp"
#include "service/provider/provider.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kShownBars = 5;

void write(const char* name, const PriceRows& rows, std::ostream& out) {
  out << name << ": " << rows.bars.size() << " good rows, " << rows.badLines << " bad ones\n";
  for (const std::string& complaint : rows.complaints) {
    out << "  " << complaint << "\n";
  }
  if (rows.badLines > rows.complaints.size()) {
    out << "  and " << rows.badLines - rows.complaints.size() << " more\n";
  }
  if (rows.cutPrices > 0) {
    out << "  rows with a price of more than ten digits, rounded to ten: " << rows.cutPrices
        << "\n";
  }
  if (rows.cutVolumes > 0) {
    out << "  rows with a volume too large to be kept: " << rows.cutVolumes << "\n";
  }
}

void writeBars(DailyBars bars, const std::string& ticker, Day today, std::ostream& out) {
  out << "From " << tableDate(bars.front().date) << " to " << tableDate(bars.back().date)
      << ", the newest days:\n";
  out << tableText(bars, bars.at(bars.size() - std::min(kShownBars, bars.size())).date);
  cutAfter(bars, today);
  if (!bars.empty()) {
    out << "The quote that a chart gets: " << quoteText(ticker, bars, today);
  }
}

}  // namespace

bool checkProvider(const ProviderSettings& settings, const std::string& text, Day today,
                   std::ostream& out) {
  if (text.find('/') != text.npos) {
    throw Refusal(404, "a symbol cannot contain /");
  }
  const std::string ticker = parseTicker(text);
  const Provider provider(settings, {});
  const ProviderReply reply = provider.ask(ticker, today, provider.deadline());
  out << "Asked " << escaped(provider.host()) << " for " << escaped(ticker) << "\n";
  write("Table", reply.table, out);
  if (reply.quote) {
    write("Quote", *reply.quote, out);
  }
  if (!reply.noQuote.empty()) {
    out << "Quote: " << reply.noQuote << "\n";
  }
  if (const auto* bars = std::get_if<DailyBars>(&reply.found)) {
    writeBars(*bars, ticker, today, out);
    return true;
  }
  out << "No prices: ";
  if (const auto* failed = std::get_if<Failed>(&reply.found)) {
    out << failed->reason << "\n";
  } else {
    out << "the provider does not know it: " << std::get<NotFound>(reply.found).reason << "\n";
  }
  return false;
}

}  // namespace quintara::quotes
