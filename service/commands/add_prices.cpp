#include "service/commands/add_prices.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <stdexcept>

#include "service/commands/list_prices.hpp"
#include "service/desk/request.hpp"
#include "service/prices/report.hpp"
#include "service/sources/price_files.hpp"
#include "service/system/file_handle.hpp"
#include "service/system/whole_file.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& reason) { throw std::runtime_error(reason); }

// Without what browsers put behind the name of a second download: "ACME (1)", "ACME(1)".
std::string withoutCount(const std::string& stem) {
  const auto open = stem.rfind('(');
  const bool counted = open != stem.npos && stem.back() == ')' &&
                       parseCount(std::string_view(stem).substr(open + 1, stem.size() - open - 2));
  return std::string(trimmed(counted ? std::string_view(stem).substr(0, open) : stem));
}

std::string tickerFor(const std::string& name, const std::string& given) {
  const std::string ticker = given.empty() ? withoutCount(tickerOfFile(name)) : given;
  if (ticker.empty()) {
    refuse("its name is not that of a ticker with .csv, .txt or .tsv behind it; --as gives one");
  }
  return parseTicker(ticker);
}

std::string bytesOf(const fs::path& file) {
  const FileHandle handle(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!handle) {
    refuse(reasonFor(errno));
  }
  WholeFile whole = wholeFile(handle.get(), kLargestPriceFile);
  if (!whole.problem.empty()) {
    refuse(whole.problem);
  }
  return std::move(whole.text);
}

// Puts the file into the folder in place of that of its ticker, whose name stays: a second one
// could go before it.
void put(const fs::path& folder, const std::string& text, const std::string& ticker, bool replace) {
  fs::create_directories(folder);
  const PriceFiles files(folder);
  const auto there = files.namesFor(ticker);
  const std::string name = there.empty() ? ticker + ".csv" : there.front();
  if (!there.empty() && files.bytesOf(name).text == text) {
    return;
  }
  if (!there.empty() && !replace) {
    refuse("the price folder has " + escaped(name) + " already; with --replace it gives way");
  }
  const auto problem = putFile(files.descriptor(), name, text);
  if (!problem.empty()) {
    refuse("writing into " + escaped(folder.string()) + ": " + problem);
  }
}

// Returns what came of it; throws why nothing did.
std::string add(const fs::path& folder, const fs::path& file, const AddRequest& request, Day today,
                std::ostream& out) {
  const std::string name = file.filename().string();
  const std::string ticker = tickerFor(name, request.ticker);
  const std::string text = bytesOf(file);
  const PriceFile prices = pricesIn({text, {}}, ticker);
  out << escaped(file.string()) << "\n";
  report(prices, out);
  if (!prices.problem.empty()) {
    refuse(prices.problem);
  }
  if (prices.bars.front().date > today) {
    refuse("all its days lie after today, the first on " + tableDate(prices.bars.front().date));
  }
  put(folder, text, ticker, request.replace);
  return escaped(ticker) + " is in the price folder: " + summaryOf(prices.bars);
}

}  // namespace

bool addPrices(const fs::path& folder, const AddRequest& request, Day today, std::ostream& out) {
  bool all = true;
  std::string outcome;
  for (const fs::path& file : request.files) {
    try {
      outcome += add(folder, file, request, today, out) + "\n";
    } catch (const std::exception& error) {
      outcome += escaped(file.filename().string()) + " is not added: " + error.what() + "\n";
      all = false;
    }
  }
  out << "\n" << outcome;
  return all;
}

}  // namespace quintara::quotes
