#include <gmock/gmock.h>
#include <iconv.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <sstream>

#include "service/desk/refusal.hpp"
#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/http/host_header.hpp"
#include "service/prices/column_names.hpp"
#include "service/prices/day_forms.hpp"
#include "service/prices/day_order.hpp"
#include "service/prices/json_rows.hpp"
#include "service/prices/number_signs.hpp"
#include "service/prices/price_file.hpp"
#include "service/prices/price_table.hpp"
#include "service/prices/region.hpp"
#include "service/prices/report.hpp"
#include "service/prices/volume.hpp"
#include "service/provider/download.hpp"
#include "service/provider/provider_source.hpp"
#include "service/system/repeats.hpp"
#include "service/tables/decoded_text.hpp"
#include "service/tables/plain_name.hpp"
#include "service/tables/table_rows.hpp"
#include "service/text/secret.hpp"
#include "service/text/text.hpp"
#include "transfer/this_computer.hpp"

namespace quintara::quotes {

std::string yes(bool is) { return is ? "yes" : "no"; }

std::string momentIn(DayOrder order, std::string_view text) {
  const auto at = std::min(text.find('@'), text.size());  // a time of its own may follow
  const auto moment =
      MomentReader().read(text.substr(0, at), text.substr(std::min(at + 1, text.size())));
  const auto day = moment ? moment->dayIn(order) : std::nullopt;
  return day ? momentText(*day, "%Y-%m-%d ") + std::to_string(moment->second) : "none";
}

std::string requested(const std::string& target) {
  try {
    if (target[0] == 'q') {
      return parseQuoteRequest(target);
    }
    const auto [ticker, first, last, interval] = parseTableRequest(target);
    return ticker + " " + tableDate(first) + " " + tableDate(last) + " " +
           std::to_string(static_cast<int>(interval));
  } catch (const Refusal& refusal) {
    return std::to_string(refusal.status) + " " + refusal.what();
  }
}

// The opens of what comes of rows and what was left out, where bad rows and remarks are - and #.
std::string barsOfRows(const std::string& rows) {
  BarList list("row");
  std::istringstream all(rows);
  std::size_t number = 0;
  for (std::string row; all >> row;) {
    int day = 0, open = 0, second = 0, high = 0;
    if (std::sscanf(row.c_str(), "%d:%d@%d-%d", &day, &open, &second, &high) < 3) {
      list.leaveOut(++number, row, row == "#");
      continue;
    }
    const Price low(open, 0), top(std::max(open, high), 0);
    list.add({Day{} + std::chrono::days{day}, low, top, low, top, 1}, ++number, second, false,
             false);
  }
  const PriceRows read = list.finish();
  std::string shown =
      std::to_string(read.badLines) + "+" + std::to_string(read.remarks) + " " + read.problem;
  for (const DailyBar& bar : read.bars) {
    shown += bar.low.text() + "-" + bar.high.text() + "*" + std::to_string(bar.volume) + " ";
  }
  for (std::size_t i = 0; i < read.complaints.size() && read.problem.empty(); ++i) {
    shown += read.complaints[i] + ";";
  }
  return shown;
}

// The fields of each row behind its line.
std::string fieldsOf(std::string text) {
  TableRows rows(text, ',');
  std::string shown;
  while (rows.next()) {
    shown += std::to_string(rows.line());
    for (std::size_t place = 0; place < rows.size(); ++place) {
      shown += "<" + std::string(rows[place]) + ">";
    }
  }
  return shown;
}

// Once where all are the same.
std::string each(const std::string& one, const std::string& two, const std::string& three) {
  return one == two && two == three ? one : one + " | " + two + " | " + three;
}

std::string volumeIn(const std::string& text, bool comma, bool known) {
  std::string plain;
  const auto volume = parseVolume(text, comma, known, plain);
  return volume ? std::to_string(volume->whole().value) : "none";
}

// All of them behind what is warned of, or what is wrong.
std::string settingsOf(const std::string& text) {
  ::setenv("PRICE_KEY", "k", 1), ::setenv("BAD_KEY", "se\ncret", 1), ::unsetenv("NO_KEY");
  ::setenv("LONG_KEY", std::string(501, 'k').c_str(), 1);
  try {
    const ProviderSettings s = parseProviderSettings(text);
    std::ostringstream out;
    ProviderSource(
        s, Log(LogLevel::Warning, [&](const auto& line) { out << line.substr(26, 22) << ' '; }));
    out << s.tableUrl->host() << s.header << s.key.value() << s.datePattern << s.interval << s.years
        << s.unknownSymbol << s.caFile << s.timeOut.count() << '/' << s.cacheTime.count() << '/'
        << static_cast<int>(s.days.order) << s.days.utcOffsetHours;
    for (const ReplyShape& shape : {s.table, s.quote}) {
      out << ' ' << static_cast<int>(shape.format) << shape.rows;
      std::copy(shape.names.begin(), shape.names.end(), std::ostream_iterator<std::string>(out));
    }
    return out.str();
  } catch (const BadSettings& bad) {
    EXPECT_EQ(std::string(bad.what()).find("secret"), std::string::npos) << bad.what();
    return bad.what();
  }
}

const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
// The bars newest first, then the number of bad rows, then why there are no bars.
std::string summary(const PriceRows& rows) {
  const std::string table = tableText(rows.bars, Day::min());
  return table.substr(kHeader.size()) + std::to_string(rows.badLines) + rows.problem;
}
// Both may have names of columns behind an @.
RowRules rulesOf(const std::string& text) {
  RowRules rules;
  std::istringstream names(text.substr(std::min(text.rfind('@'), text.size() - 1) + 1));
  for (std::string& name : rules.names) {
    names >> name;
  }
  return rules;
}
std::string ofFile(const std::string& text) {
  return summary(parsePriceFile(text.substr(0, text.rfind('@')), rulesOf(text)));
}
std::string ofJson(const std::string& text) {  // behind a path
  const auto blank = text.find(' ');
  const std::string json = text.substr(blank, text.rfind('@') - blank);
  return summary(parseJsonRows(json, text.substr(0, blank), rulesOf(text)));
}

TEST(Repeats, ComeOnceAMinuteWithACount) {
  Repeats repeats;
  const Repeats::Time start{};
  std::string written;
  const auto say = [&](const std::string& text, int second) {
    for (const auto& line : repeats.passing(text, start + std::chrono::seconds{second})) {
      written += line + "|";
    }
  };
  for (int i = 0; i < 60; ++i) {
    say("bad row", i);
  }
  say("other", 59);
  say("bad row", 60);
  say("bad row", 61);
  EXPECT_EQ(written, "bad row|other|bad row (59 times more within a minute)|bad row|");
  written.clear();
  for (int i = 0; i < 10'000; ++i) {
    say(std::to_string(i), 62);
  }
  EXPECT_EQ(std::count(written.begin(), written.end(), '|'), Repeats::kMostTexts - 1);
  EXPECT_THAT(repeats.countsAt(Repeats::Time::max()),
              testing::Contains(testing::HasSubstr("are left out (9501 times more within a")));
}

std::map<std::string, std::function<std::string(const std::string&)>> rules() {
  const auto number = [](const std::string& text, bool comma) {
    std::string plain;
    return std::string(plainNumber(text, comma, plain).value_or("none"));
  };
  const auto halves = [](const std::string& text) {
    return std::pair(text.substr(0, text.find(' ')), text.substr(text.find(' ') + 1));
  };
  const auto price = [](const std::string& text) {
    return parseDecimal(text, true)->price().value().value;
  };
  return {
      {"date by each order",
       [](auto& t) {
         return each(momentIn(DayOrder::DayFirst, t), momentIn(DayOrder::MonthFirst, t),
                     momentIn(DayOrder::YearFirst, t));
       }},
      {"time",
       [](auto& t) {
         const auto second = MomentReader().readTime(t);
         return second ? std::to_string(*second) : "none";
       }},
      {"pattern", [](auto& t) { return yes(isMomentPattern(t)); }},
      {"number by each sign",
       [=](auto& t) {
         constexpr std::array kShown{"nothing", "point", "comma", "point?", "comma?", "wrong"};
         return kShown.at(static_cast<std::size_t>(signUseOf(t))) + (" " + number(t, false)) + " " +
                number(t, true);
       }},
      {"bare number", [](auto& t) { return std::string(bareNumber(t)); }},
      {"nothing", [](auto& t) { return yes(isNothing(t)); }},
      {"price",
       [](auto& t) -> std::string {
         const auto decimal = parseDecimal(t, true);
         const auto kept = decimal ? decimal->price() : std::nullopt;
         return kept      ? kept->value.text() + (kept->cut ? " cut" : "")
                : decimal ? "out of range"
                          : "none";
       }},
      {"whole",
       [](auto& t) {
         const auto kept = parseDecimal(t, false)->whole();
         return std::to_string(kept.value) + (kept.cut ? " cut" : "");
       }},
      {"change",
       [=](auto& t) { return changeText(price(halves(t).second), price(halves(t).first)); }},
      {"volume by each sign",
       [](auto& t) {
         return each(volumeIn(t, false, true), volumeIn(t, true, true), volumeIn(t, false, false));
       }},
      {"column",
       [](auto& t) {
         const auto known = useOf(t, "ABC");
         const int side = known ? static_cast<int>(known->side) : 0;
         return known ? std::string(nameOf(known->use)) + std::to_string(10 * side + known->rank)
                      : "none";
       }},
      {"plain name", plainName},
      {"same ticker",
       [=](auto& t) {
         const auto [one, other] = halves(t);
         return yes(sameTicker(one, other)) + " " + yes(almostSameTicker(one, other));
       }},
      {"same server",
       [=](auto& t) {
         const auto [from, to] = halves(t);
         return yes(leadSameWay(urlParts(from).value(), urlParts(to).value()));
       }},
      {"region", [](auto& t) { return nameOf(dayOrderOf(t)); }},
      {"no table",
       [](auto& t) {
         const std::string problem =
             decoded(t + "Date,Open,High,Low,Close\n2026-11-05,1,2,1,2\n").problem;
         return problem.substr(0, problem.find_first_of(",:"));
       }},
      {"host",
       [](auto& t) {
         return namesThisComputer(t) ? "named" : leadsToThisComputer(t) ? "reached" : "neither";
       }},
      {"secret", [=](auto& t) { return Secret(halves(t).first).hiddenIn(halves(t).second); }},
      {"bytes", [](auto& t) { return decoded(t).encoding + " " + decoded(t).text; }},
      {"on one line", escaped},
      {"in an address", percentEncoded},
      {"quoted", inQuotes},
      {"cases", [](auto& t) { return upperCase(t) + lowerCase(t); }},
      {"same", [=](auto& t) { return yes(equalIgnoringCase(halves(t).first, halves(t).second)); }},
      {"without blanks",
       [](auto& t) {
         return "[" + std::string(trimmed(t)) + "][" + std::string(withoutBlanks(t)) + "]";
       }},
      {"count", [](auto& t) { return std::to_string(parseCount(t).value_or(-1)); }},
      {"path", [](auto& t) { return yes(isJsonPath(t)); }},
      {"JSON", ofJson},
      {"complaints of JSON",
       [](auto& t) {
         const auto all = parseJsonRows(t, "", {}).complaints;
         return std::accumulate(all.begin(), all.end(), std::string());
       }},
      {"days of rows", barsOfRows},
      {"rows", fieldsOf},
      {"file", ofFile},
      {"last line", [](auto& t) { return ofFile(kHeader + "2026-11-05,1.0,2,1,2,3\n" + t); }},
      {"order of dates",
       [](auto& t) {
         OrderEvidence evidence;
         std::istringstream dates(t);
         std::size_t line = 0;
         for (std::string date; dates >> date;) {
           evidence.add(++line, date, MomentReader().read(date).value());
         }
         const OrderFound found = evidence.decide(DayOrder::Unclear);
         return nameOf(found.order) + ": " + found.why + found.problem.substr(0, 80);
       }},
      {"decimal sign",
       [](auto& t) {
         SignEvidence evidence;
         std::istringstream numbers(t);
         std::size_t line = 0;
         for (std::string one; numbers >> one;) {
           one[0] == 'o' ? evidence.addOther(++line, one.substr(1))
                         : evidence.addPrice(++line, one);
         }
         const SignFound found = evidence.decide();
         return std::string(found.comma ? "comma " : "point ") + (found.any ? "seen " : "") +
                (found.unclear ? "unclear " : "") + found.why + found.problem.substr(0, 90);
       }},
      {"report",
       [](auto& t) {
         std::ostringstream out;
         reportRows(parsePriceFile(t), out);
         return out.str();
       }},
      {"request", requested},
      {"settings", settingsOf},
  };
}

std::string unescaped(std::string text) {
  for (auto at = text.find('\\'); at < text.size() - 1; at = text.find('\\', at + 1)) {
    if (const auto sign = std::string_view("nrt").find(text[at + 1]); sign != text.npos) {
      text.replace(at, 2, 1, "\n\r\t"[sign]);
    } else if (text[at + 1] == 'x') {
      text.replace(at, 4, 1, static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
    }
  }
  return text;
}

std::string replaced(std::string text, const std::string& old, const std::string& with) {
  for (auto at = text.find(old); at != text.npos; at = text.find(old, at + with.size())) {
    text.replace(at, old.size(), with);
  }
  return text;
}

std::string encoded(std::string text, std::string encoding) {
  if (encoding == "escaped") {
    return unescaped(text);
  }
  if (const auto mark = encoding.find("-mark"); mark != encoding.npos) {
    text.insert(0, "\xEF\xBB\xBF");
    encoding.erase(mark);
  }
  std::string bytes(text.size() * 2, '\0');
  char *from = text.data(), *to = bytes.data();
  std::size_t left = text.size(), room = bytes.size();
  const iconv_t converter = ::iconv_open(encoding.empty() ? "UTF-8" : encoding.c_str(), "UTF-8");
  EXPECT_EQ(::iconv(converter, &from, &left, &to, &room), 0U) << encoding;
  ::iconv_close(converter);
  return bytes.substr(0, bytes.size() - room);
}

// How the file was read, on one line, and what came out.
std::string outcome(const PriceFile& file) {
  std::ostringstream out;
  report(file, out);
  const std::string steps = out.str().substr(0, out.str().find("  Days: "));
  std::string result =
      replaced(steps, "\n  ", ";  ").substr(std::min<std::size_t>(2, steps.size()));
  for (const auto& [date, open, high, low, close, volume] : file.bars) {
    for (const std::string& word : {tableDate(date), open.text(), high.text(), low.text()}) {
      result += word + " ";
    }
    result += close.text() + " " + std::to_string(volume) + "\n";
  }
  if (!file.problem.empty()) {
    return result + "refused: " + file.problem + "\n";
  }
  for (const std::string& complaint : file.complaints) {
    result += "left out, " + complaint + "\n";
  }
  return result;
}

// The blocks of a file whose titles begin with ===.
std::vector<std::pair<std::string, std::string>> blocksOf(const char* name) {
  std::ifstream file(std::string(QUINTARA_EXPORTS "/") + name);
  std::vector<std::pair<std::string, std::string>> blocks;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("=== ")) {
      blocks.emplace_back(line.substr(4), "");
    } else if (!blocks.empty()) {
      blocks.back().second += line + "\n";
    }
  }
  return blocks;
}

TEST(PriceFile, ReadsEveryShapeOfExports) {
  std::set<std::string> titles;
  for (const auto& [title, block] : blocksOf("shapes.txt")) {
    EXPECT_TRUE(titles.insert(title).second) << title;
    const auto option = [&title = title](const std::string& name) {
      const auto at = title.find(" [" + name + " ");
      const auto begin = at + name.size() + 3;
      return at == title.npos ? "" : title.substr(begin, title.find(']', at) - begin);
    };
    RowRules rules;
    rules.ticker = "ABC";
    rules.region = option("region") == "day"     ? DayOrder::DayFirst
                   : option("region") == "month" ? DayOrder::MonthFirst
                                                 : DayOrder::Unclear;
    const std::string ends = option("ends") == "crlf" ? "\r\n"
                             : option("ends") == "cr" ? "\r"
                                                      : "\n";
    const auto part = block.find("---\n");
    const std::string text =
        encoded(replaced(block.substr(0, part), "\n", ends), option("encoding"));
    EXPECT_EQ(outcome(parsePriceFile(text, rules)), block.substr(part + 4)) << title;
  }
  EXPECT_GE(titles.size(), 100U);
}

TEST(TextRules, HoldForEveryLineOfTheTable) {
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // has no say here, where it is installed
  const auto known = rules();
  std::set<std::string> used;
  for (const auto& [title, block] : blocksOf("rules.txt")) {
    const std::string rule = title.substr(0, title.find(" ("));
    ASSERT_TRUE(known.count(rule) == 1 && used.insert(rule).second) << rule;
    std::istringstream lines(block);
    std::string line;
    while (std::getline(lines, line) && !line.empty()) {
      const auto arrow = line.find(" -> ");
      for (std::size_t at = 0; at <= arrow;) {
        const auto end = std::min(line.find(" | ", at), arrow);
        const std::string text = line.substr(at, end - at);
        EXPECT_EQ(known.at(rule)(unescaped(text)), unescaped(line.substr(arrow + 4)))
            << rule << ": " << text;
        at = end + 3;
      }
    }
    EXPECT_FALSE(std::getline(lines, line)) << rule << " goes on behind a blank line";
  }
  EXPECT_EQ(used.size(), known.size());
  std::setlocale(LC_NUMERIC, "C");
}

// Up to ten digits, five of them decimals, as whole numbers of 10^-5 tell what comes out.
TEST(TextRules, PricesComeOutAsTheyWentIn) {
  const auto shown = [](std::uint64_t units) {
    std::string digits = std::to_string(units + 1'000'000'000'000);
    digits.insert(8, ".").erase(0, std::min<std::size_t>(digits.find_first_not_of('0', 1), 7));
    digits.erase(std::max(digits.find_last_not_of('0') + 1, digits.find('.') + 3));
    return digits;
  };
  std::mt19937_64 number{1};  // the same on every machine
  std::uint64_t before = 0;
  Price last;
  for (int round = 0; round < 3'000; ++round) {
    const auto units =
        number() % 10'000'000'000 / std::array{1, 10, 1'000, 100'000, 10'000'000}[number() % 5];
    const auto kept = parseDecimal(shown(units), false)->price().value();
    EXPECT_EQ(kept.value.text(), shown(units));
    EXPECT_EQ(kept.value <=> last, units <=> before);
    EXPECT_EQ(changeText(kept.value, last),
              units < before ? "-" + shown(before - units)
                             : (units > before ? "+" : "") + shown(units - before));
    EXPECT_EQ(parseDecimal(shown(units), false)->whole().value, units / 100'000);
    before = units;
    last = kept.value;
  }
}

TEST(TextRules, WeeksBeginOnMondaysAndMonthsOnTheFirst) {
  for (Day day = *makeDay(1960, 1, 4); day < *makeDay(1985, 1, 1); day += std::chrono::days{1}) {
    const std::chrono::year_month_day date{day};
    const int weekday = static_cast<int>(std::chrono::weekday{day}.iso_encoding());
    ASSERT_EQ(isWeekend(day), weekday > 5);
    ASSERT_EQ(weekNumber(day) - weekNumber(day - std::chrono::days{1}), weekday == 1 ? 1 : 0);
    ASSERT_EQ(monthNumber(day) - monthNumber(day - std::chrono::days{1}),
              unsigned{date.day()} == 1 ? 1 : 0);
    ASSERT_EQ(makeDay(int{date.year()}, unsigned{date.month()}, unsigned{date.day()}), day);
  }
  EXPECT_EQ(momentText(*makeDay(2006, 1, 2) + std::chrono::hours{1}, "%Y %y%m%d %s %% %x %"),
            "2006 060102 1136163600 % x %");
}

}  // namespace quintara::quotes
