#include "service/prices/price_table.hpp"

#include <algorithm>

#include "service/prices/number_signs.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kHeaderRows = 60;  // how far down a header is looked for
constexpr std::size_t kHeaderDepth = 3;
constexpr std::size_t kWidest = 400;

using Uses = std::vector<std::optional<NamedUse>>;  // of the columns

struct HeaderRow {
  std::size_t line;
  std::vector<std::string> names;
  Uses uses;
  std::size_t lastLine;
};

std::vector<HeaderRow> headerRows(std::string_view text, char separator, std::string_view ticker) {
  std::vector<HeaderRow> result;
  TableRows rows(text, separator);
  while (result.size() < kHeaderRows && rows.next()) {
    HeaderRow row{rows.line(), {}, {}, rows.line()};
    const auto size = std::min(rows.size(), kWidest);
    for (std::size_t place = 0; place < size; ++place) {
      constexpr std::size_t kLongestName = 80;
      const bool name = !rows[place].empty() && rows[place].size() <= kLongestName;
      row.names.emplace_back(rows[place]);
      row.uses.push_back(name ? useOf(rows[place], ticker) : std::nullopt);
    }
    row.lastLine +=
        static_cast<std::size_t>(std::count(rows.whole().begin(), rows.whole().end(), '\n'));
    result.push_back(std::move(row));
  }
  return result;
}

std::size_t countOf(const Uses& uses) {
  return static_cast<std::size_t>(
      std::count_if(uses.begin(), uses.end(), [](const auto& use) { return use.has_value(); }));
}

// The best column for a use on one side.
std::size_t pick(const Uses& uses, Use use, Side side) {
  std::size_t best = PriceTable::kAbsent;
  for (std::size_t place = 0; place < uses.size(); ++place) {
    const auto& named = uses[place];
    if (named && named->use == use && named->side == side &&
        (best == PriceTable::kAbsent || named->rank < uses[best]->rank)) {
      best = place;
    }
  }
  return best;
}

std::size_t firstOf(std::initializer_list<std::size_t> places) {
  const auto found = std::find_if(places.begin(), places.end(),
                                  [](auto place) { return place != PriceTable::kAbsent; });
  return found != places.end() ? *found : PriceTable::kAbsent;
}

constexpr std::array kSidesInOrder{Side::Plain, Side::Middle, Side::Bid, Side::Ask, Side::Adjusted};
constexpr std::array kPriceUses{Use::Open, Use::High, Use::Low, Use::Close};

bool hasPrices(const PriceTable& table) {
  return std::all_of(kPriceUses.begin(), kPriceUses.end(), [&](Use use) { return table.has(use); });
}

void pickPrices(PriceTable& table, const Uses& uses) {
  PriceTable best;
  std::size_t most = 0;
  for (const Side side : kSidesInOrder) {
    PriceTable one;
    for (const Use use : {Use::Open, Use::High, Use::Low}) {
      one.set(use, pick(uses, use, side));
    }
    one.set(Use::Close, firstOf({pick(uses, Use::Close, side), pick(uses, Use::Last, side),
                                 pick(uses, Use::Close, Side::Adjusted)}));
    one.set(Use::Volume,
            firstOf({pick(uses, Use::Volume, side), pick(uses, Use::Volume, Side::Plain)}));
    const auto count = static_cast<std::size_t>(
        std::count_if(kPriceUses.begin(), kPriceUses.end(), [&](Use use) { return one.has(use); }));
    if (count > most) {
      most = count;
      best = one;
    }
  }
  for (const Use use : {Use::Open, Use::High, Use::Low, Use::Close, Use::Volume}) {
    table.set(use, best.at(use));
  }
}

constexpr std::array<Use, kColumns> kUseOfColumn{Use::Date, Use::Open,  Use::High,
                                                 Use::Low,  Use::Close, Use::Volume};

// A column with just the name that the rules have is the one, whatever else may be.
void pickNamed(PriceTable& table, const std::vector<std::string>& names, const RowRules& rules) {
  for (std::size_t column = 0; column < kColumns; ++column) {
    const std::string& wanted = rules.names.at(column);
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
      return equalIgnoringCase(name, wanted);
    });
    const bool usual = wanted == kUsualNames.at(column);
    if (found != names.end()) {
      table.set(kUseOfColumn.at(column), static_cast<std::size_t>(found - names.begin()));
    } else if (!usual) {
      const auto place = parseCount(wanted);
      table.set(kUseOfColumn.at(column),
                place ? static_cast<std::size_t>(*place) : PriceTable::kAbsent);
    }
  }
}

bool readsAsDate(std::string_view text) { return MomentReader().read(text).has_value(); }

// What the row below the header shows: dates in a column without a name, one column more than
// names.
void lookBelow(PriceTable& table, std::string_view text) {
  TableRows rows(text, table.separator);
  while (rows.next()) {
    if (rows.line() > table.titleLines && !isComment(rows)) {
      break;
    }
  }
  const bool below = rows.line() > table.titleLines;
  if (!below) {
    return;
  }
  const bool named = table.has(Use::Date);
  if (named && rows.size() == table.width + 1 && !rows[rows.size() - 1].empty() &&
      !readsAsDate(rows[table.at(Use::Date)]) && readsAsDate(rows[table.at(Use::Date) + 1])) {
    table.shifted = true;
  } else if (!named && rows.size() == table.width + 1 && readsAsDate(rows[0])) {
    table.shifted = true;
    table.set(Use::Date, 0);
  } else if (!named && !table.names.empty() && table.names.front().empty() &&
             readsAsDate(rows[0])) {
    table.set(Use::Date, 0);
  }
  if (table.shifted) {
    for (std::size_t& place : table.places) {
      const bool moves = place != PriceTable::kAbsent && (named || &place != table.places.data());
      place += moves ? 1 : 0;
    }
    table.names.insert(table.names.begin(), "");
    ++table.width;
  }
  // A time of day beside the date, not another date.
  if (table.has(Use::Time) && !MomentReader().readTime(rows[table.at(Use::Time)])) {
    table.set(Use::Time, PriceTable::kAbsent);
  }
}

PriceTable tableOf(const HeaderRow& header, char separator, std::string_view text,
                   const RowRules& rules) {
  PriceTable table;
  table.separator = separator;
  table.headerLine = header.line;
  table.titleLines = header.lastLine;
  table.names = header.names;
  table.width = header.names.size();
  while (table.width > 0 && header.names[table.width - 1].empty()) {
    --table.width;
  }
  pickPrices(table, header.uses);
  const auto time = pick(header.uses, Use::Time, Side::Plain);
  table.set(Use::Date, firstOf({pick(header.uses, Use::Date, Side::Plain), time}));
  table.set(Use::Time, table.at(Use::Date) == time ? PriceTable::kAbsent : time);
  table.set(Use::Ticker, pick(header.uses, Use::Ticker, Side::Plain));
  pickNamed(table, header.names, rules);
  if (hasPrices(table) || table.has(Use::Close)) {
    lookBelow(table, text);
  }
  return table;
}

bool isWhole(const PriceTable& table, const RowRules& rules) {
  return hasPrices(table) && (table.has(Use::Date) || rules.undated);
}

// Titles that stand above each other as one: of each column the lowest that says something.
HeaderRow merged(const std::vector<HeaderRow>& rows, std::size_t first, std::size_t depth) {
  HeaderRow result = rows[first + depth - 1];
  for (std::size_t up = 1; up < depth; ++up) {
    const HeaderRow& above = rows[first + depth - 1 - up];
    for (std::size_t place = 0; place < above.uses.size(); ++place) {
      if (place >= result.uses.size()) {
        result.uses.push_back(above.uses[place]);
        result.names.push_back(above.names[place]);
      } else if (!result.uses[place] && above.uses[place]) {
        result.uses[place] = above.uses[place];
        result.names[place] = above.names[place];
      }
    }
  }
  return result;
}

// Where one of the titles names tickers, the columns of others do not count.
void dropOtherTickers(HeaderRow& header, const std::vector<HeaderRow>& rows, std::size_t first,
                      std::size_t depth, const std::string& ticker) {
  for (std::size_t i = first; i < first + depth; ++i) {
    const HeaderRow& row = rows[i];
    const bool names = countOf(row.uses) == 1 && row.uses[0] && row.uses[0]->use == Use::Ticker;
    for (std::size_t place = 1; names && !ticker.empty() && place < row.names.size(); ++place) {
      if (!row.names[place].empty() && !almostSameTicker(row.names[place], ticker)) {
        header.uses[place].reset();
        header.names[place].clear();
      }
    }
  }
}

std::string missing(const PriceTable& table, const RowRules& rules) {
  std::string result;
  for (std::size_t column = rules.undated ? kOpen : kDate; column < kVolume; ++column) {
    if (!table.has(kUseOfColumn.at(column))) {
      result += (result.empty() ? "no column " : ", ") + escaped(rules.names.at(column));
    }
  }
  return result;
}

std::string shownLine(std::string_view text, std::size_t line) {
  constexpr std::size_t kLongest = 200;
  TableRows rows(text, '\0');
  while (rows.next() && rows.line() < line) {
  }
  const std::string whole = escaped(trimmed(rows.whole().substr(0, kLongest + 1)));
  return whole.size() > kLongest ? "" : " in line " + std::to_string(line) + ": " + whole;
}

std::string lettersAndDigits(std::string_view text) {
  std::string result;
  std::copy_if(text.begin(), text.end(), std::back_inserter(result),
               [](char c) { return isDigit(c) || isLetter(c); });
  return upperCase(result);
}

// Without what says the exchange: NYSE:AAA, AAA.US, "AAA US".
std::string_view withoutExchange(std::string_view ticker) {
  ticker.remove_prefix(ticker.find(':') + 1);  // nothing where there is none
  return ticker.substr(0, ticker.find_first_of(". ", 1));
}

}  // namespace

Fields PriceTable::fieldsOf(const TableRows& row) const {
  return {row[at(Use::Date)], row[at(Use::Open)],  row[at(Use::High)],
          row[at(Use::Low)],  row[at(Use::Close)], row[at(Use::Volume)]};
}

bool sameTicker(std::string_view one, std::string_view other) {
  return lettersAndDigits(one) == lettersAndDigits(other);
}

bool almostSameTicker(std::string_view one, std::string_view other) {
  const auto bareOne = withoutExchange(one);
  const auto bareOther = withoutExchange(other);
  const bool bothHave = bareOne.size() < one.size() && bareOther.size() < other.size();
  return sameTicker(one, other) || (!bothHave && sameTicker(bareOne, bareOther));
}

TableFound tableByNames(std::string_view text, const std::string& separators,
                        const RowRules& rules) {
  TableFound found;
  std::size_t most = 0;
  PriceTable best;
  std::optional<PriceTable> ticks;
  for (const char separator : separators) {
    const auto rows = headerRows(text, separator, rules.ticker);
    for (std::size_t depth = 1; depth <= kHeaderDepth; ++depth) {
      for (std::size_t first = 0; first + depth <= rows.size(); ++first) {
        HeaderRow header = depth == 1 ? rows[first] : merged(rows, first, depth);
        dropOtherTickers(header, rows, first, depth, rules.ticker);
        const PriceTable table = tableOf(header, separator, text, rules);
        if (isWhole(table, rules)) {
          found.table = table;
          return found;
        }
        if (!ticks && table.has(Use::Close) && table.has(Use::Date) && !table.has(Use::Open) &&
            !table.has(Use::High) && !table.has(Use::Low)) {
          ticks = table;
        }
        const auto count = countOf(header.uses);
        if (depth == 1 && count > most) {
          most = count;
          best = table;
        }
      }
    }
  }
  found.named = most >= 2;
  if (ticks) {
    for (const Use use : {Use::Open, Use::High, Use::Low}) {
      ticks->set(use, ticks->at(Use::Close));
    }
    ticks->ticks = true;
    found.table = ticks;
  }
  found.problem = missing(best, rules);
  if (found.named) {
    found.problem += shownLine(text, best.headerLine);
  }
  return found;
}

TableFound tableByPlaces(std::string_view text, const std::string& separators,
                         const RowRules& rules) {
  PriceTable table;
  for (std::size_t column = 0; column < kColumns; ++column) {
    const auto place = parseCount(rules.names.at(column));
    const bool needed = column != kVolume && (column != kDate || !rules.undated);
    if (!place && needed) {
      return {};
    }
    table.set(kUseOfColumn.at(column),
              place ? static_cast<std::size_t>(*place) : PriceTable::kAbsent);
  }
  for (const char separator : separators) {
    TableRows rows(text, separator);
    for (std::size_t i = 0; i < kHeaderRows && rows.next(); ++i) {
      const Fields fields = table.fieldsOf(rows);
      if ((fields[kDate].empty() ? rules.undated != nullptr : readsAsDate(fields[kDate])) &&
          signUseOf(fields[kClose]) != SignUse::Wrong && !fields[kClose].empty()) {
        table.separator = separator;
        table.titleLines = rows.line() - 1;
        return {table, "", false};
      }
    }
  }
  return {};
}

std::vector<PriceTable> tablesWithoutNames(std::string_view text, const std::string& separators,
                                           const RowRules& rules) {
  std::vector<PriceTable> result;
  for (const char separator : separators) {
    TableRows rows(text, separator);
    for (std::size_t i = 0; i < kHeaderRows && rows.next(); ++i) {
      std::size_t size = std::min(rows.size(), kWidest);
      while (size > 0 && rows[size - 1].empty()) {
        --size;
      }
      const std::size_t date =
          !rules.ticker.empty() && almostSameTicker(rows[0], rules.ticker) ? 1 : 0;
      if (isComment(rows) || !readsAsDate(rows[date])) {
        continue;
      }
      for (const std::size_t time : {std::size_t{0}, std::size_t{1}}) {
        const auto open = date + 1 + time;
        const bool fits = size == open + 4 || size == open + 5;
        if (!fits || (time == 1 && !MomentReader().readTime(rows[date + 1]))) {
          continue;
        }
        PriceTable table;
        table.separator = separator;
        table.titleLines = rows.line() - 1;
        table.width = size;
        table.set(Use::Date, date);
        table.set(Use::Ticker, date == 1 ? 0 : PriceTable::kAbsent);
        table.set(Use::Time, time == 1 ? date + 1 : PriceTable::kAbsent);
        for (std::size_t price = 0; price < kPriceUses.size(); ++price) {
          table.set(kPriceUses.at(price), open + price);
        }
        table.set(Use::Volume, size == open + 5 ? open + 4 : PriceTable::kAbsent);
        result.push_back(table);
      }
      break;
    }
  }
  return result;
}

}  // namespace quintara::quotes
