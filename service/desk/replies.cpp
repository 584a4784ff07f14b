#include "service/desk/replies.hpp"

namespace quintara::quotes {
namespace {

std::string quotedField(const std::string& text) { return '"' + text + '"'; }

}  // namespace

std::string tableText(const DailyBars& bars, Day first) {
  std::string text = "Date,Open,High,Low,Close,Volume\n";
  for (auto bar = bars.rbegin(); bar != bars.rend() && bar->date >= first; ++bar) {
    text += tableDate(bar->date);
    for (const Price price : {bar->open, bar->high, bar->low, bar->close}) {
      text += ',' + price.text();
    }
    text += ',' + std::to_string(bar->volume) + '\n';
  }
  return text;
}

std::string quoteText(const std::string& ticker, const DailyBars& bars, Day today) {
  const DailyBar& bar = bars.back();
  const bool traded = bar.date == today;
  std::string text = quotedField(ticker) + ',' + bar.close.text() + ',' +
                     quotedField(quoteDate(bar.date)) + ',' + quotedField("4:00pm") + ',';
  text += bars.size() > 1 ? changeText(bar.close, bars[bars.size() - 2].close) : "N/A";
  for (const Price price : {bar.open, bar.high, bar.low}) {
    text += ',' + (traded ? price.text() : "N/A");
  }
  return text + ',' + (traded ? std::to_string(bar.volume) : "N/A") + "\r\n";
}

}  // namespace quintara::quotes
