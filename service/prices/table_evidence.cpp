#include "service/prices/table_evidence.hpp"

#include <algorithm>
#include <array>
#include <set>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// Calls for every row whose date can be read.
template <class Each>
void forEachDated(std::string_view text, const PriceTable& table, const RowRules& rules,
                  Each each) {
  MomentReader moments(rules.days.utcOffsetHours);
  TableRows rows(text, table.separator);
  while (rows.next()) {
    if (!isRowOf(rows, table)) {
      continue;
    }
    const Fields fields = table.fieldsOf(rows);
    const auto moment = moments.read(fields[kDate], table.timeOf(rows));
    if (moment || (rules.undated && fields[kDate].empty())) {
      each(rows, fields, moment);
    }
  }
}

// Other numbers of the table: volumes, turnovers, changes in per cent.
SignFound signsWithOthers(std::string_view text, const PriceTable& table, const RowRules& rules,
                          SignEvidence signs) {
  forEachDated(text, table, rules, [&](const TableRows& row, const Fields&, const auto&) {
    for (std::size_t place = 0; place < row.size(); ++place) {
      const bool price =
          std::find(table.places.begin(), table.places.end(), place) != table.places.end() &&
          place != table.at(Use::Volume);
      if (!price && !row[place].empty()) {
        signs.addOther(row.line(), row[place]);
      }
    }
  });
  return signs.decide();
}

// Whether high and low enclose open and close only with one of the two meanings of a sign.
std::optional<bool> signThatFits(std::string_view text, const PriceTable& table,
                                 const RowRules& rules) {
  std::array<std::size_t, 2> bad{};
  std::string plain;
  forEachDated(text, table, rules, [&](const TableRows&, const Fields& fields, const auto&) {
    for (const bool comma : {false, true}) {
      DailyBar bar;
      bool readable = true;
      for (const auto& [column, target] : kPriceColumns) {
        const auto price = priceIn(fields.at(column), comma, plain);
        readable = readable && price;
        bar.*target = price ? price->value : Price();
      }
      bad.at(comma ? 1 : 0) += readable && !implausible(bar).empty() ? 1 : 0;
    }
  });
  return (bad[0] == 0) != (bad[1] == 0) ? std::optional(bad[1] == 0) : std::nullopt;
}

SignFound decideUnclear(SignFound found, std::string_view text, const PriceTable& table,
                        const RowRules& rules, bool pointsInDates) {
  if (const auto comma = signThatFits(text, table, rules)) {
    return {*comma, true, "only so high and low are the highest and the lowest price", false, ""};
  }
  // Three decimals are usual for some currencies; a point between thousands goes with dates that
  // have points and with semicolons.
  if (!found.comma && !(table.separator == ';' && pointsInDates)) {
    return {false, true, "every price has three digits behind its only point", false, ""};
  }
  return found;
}

struct Tickers {
  std::set<std::string, std::less<>> names;
  std::size_t line = 0;  // of the first
  std::string first;

  void add(std::size_t at, std::string_view name) {
    constexpr std::size_t kMost = 50'000;
    if (!name.empty() && names.size() < kMost && names.find(name) == names.end()) {
      line = names.empty() ? at : line;
      first = names.empty() ? std::string(name) : first;
      names.emplace(name);
    }
  }
};

// Daily stamps at midnight east of Greenwich are of the evening before: of Sundays, but not of
// Fridays.
struct Stamps {
  bool late = true;
  bool sundays = false;
  bool fridays = false;

  void add(const WrittenMoment& moment) {
    const std::chrono::weekday weekday{*moment.day};
    late = late && moment.second >= kNoon;
    sundays = sundays || weekday == std::chrono::Sunday;
    fridays = fridays || weekday == std::chrono::Friday;
  }
  bool areOfTheNextDay() const { return late && sundays && !fridays; }
};

// Sets which rows are wanted, or why none are.
void chooseTicker(TableEvidence& evidence, const Tickers& tickers, const std::string& wanted) {
  for (const auto same : {equalIgnoringCase, sameTicker, almostSameTicker}) {
    std::vector<std::string> found;
    std::copy_if(tickers.names.begin(), tickers.names.end(), std::back_inserter(found),
                 [&](const std::string& name) { return same(name, wanted); });
    if (found.size() > 1) {
      evidence.problem = "the column of tickers has " + inQuotes(found[0]) + " and " +
                         inQuotes(found[1]) + ", either of which may be " + escaped(wanted) +
                         ": keep the rows of one";
      return;
    }
    if (found.size() == 1) {
      evidence.ticker = found.front();
      return;
    }
  }
  evidence.problem = "line " + std::to_string(tickers.line) + ": these are prices of " +
                     inQuotes(tickers.first) + ", not of " + escaped(wanted) +
                     ": name the file after its ticker, or take the column of tickers out";
}

}  // namespace

bool isRowOf(const TableRows& row, const PriceTable& table) {
  return row.line() > table.titleLines && !isComment(row);
}

TableEvidence evidenceOf(std::string_view text, const PriceTable& table, const RowRules& rules) {
  TableEvidence evidence;
  OrderEvidence order;
  SignEvidence signs;
  Tickers tickers;
  Stamps stamps;
  bool pointsInDates = true;
  forEachDated(
      text, table, rules, [&](const TableRows& row, const Fields& fields, const auto& moment) {
        if (moment) {
          order.add(row.line(), fields[kDate], *moment);
          if (moment->stamp) {
            stamps.add(*moment);
          }
          pointsInDates = pointsInDates && fields[kDate].find('.') != std::string_view::npos;
        }
        for (const auto& [column, target] : kPriceColumns) {
          signs.addPrice(row.line(), fields.at(column));
        }
        if (table.has(Use::Ticker)) {
          tickers.add(row.line(), row[table.at(Use::Ticker)]);
        }
      });
  if (!rules.ticker.empty() && !tickers.names.empty()) {
    chooseTicker(evidence, tickers, rules.ticker);
  }
  evidence.order = rules.days.order != DayOrder::Unclear
                       ? OrderFound{rules.days.order, "by the settings", ""}
                       : order.decide(rules.region);
  evidence.utcOffsetHours = rules.days.utcOffsetHours;
  if (rules.days.utcOffsetHours == 0 && stamps.areOfTheNextDay()) {
    evidence.utcOffsetHours = 12;
    evidence.order.why = "midnight east of Greenwich, as there are Sundays but no Fridays";
  }
  evidence.signs = signs.decide();
  if (evidence.signs.unclear || (!evidence.signs.any && table.has(Use::Volume))) {
    evidence.signs = signsWithOthers(text, table, rules, signs);
  }
  if (evidence.signs.unclear) {
    evidence.signs = decideUnclear(evidence.signs, text, table, rules, pointsInDates);
  }
  for (const std::string* problem : {&evidence.order.problem, &evidence.signs.problem}) {
    evidence.problem = evidence.problem.empty() ? *problem : evidence.problem;
  }
  return evidence;
}

}  // namespace quintara::quotes
