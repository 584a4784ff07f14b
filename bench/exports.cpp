#include "exports.hpp"

#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "samples.hpp"
#include "service/prices/price_file.hpp"

namespace quintara::bench {

namespace {

constexpr int kRows = 10'000;

struct Row {
  std::chrono::year_month_day date;
  int price;  // in cents
};

std::string twoDigits(unsigned number) { return std::to_string(100 + number).substr(1); }

std::string decimals(int cents, const char* sign) {
  return std::to_string(cents / 100) + sign + twoDigits(static_cast<unsigned>(cents % 100));
}

/// 12345.67 with the two signs.
std::string grouped(int cents, const char* group, const char* sign) {
  const std::string whole = std::to_string(cents / 100);
  const std::size_t head = whole.size() % 3;
  std::string text = whole.substr(0, head);
  for (std::size_t at = head; at < whole.size(); at += 3) {
    text += (text.empty() ? "" : group) + whole.substr(at, 3);
  }
  return text + sign + twoDigits(static_cast<unsigned>(cents % 100));
}

std::string iso(const Row& row) {
  return std::to_string(static_cast<int>(row.date.year())) + "-" +
         twoDigits(static_cast<unsigned>(row.date.month())) + "-" +
         twoDigits(static_cast<unsigned>(row.date.day()));
}

std::string dayFirst(const Row& row, const char* sign) {
  return twoDigits(static_cast<unsigned>(row.date.day())) + sign +
         twoDigits(static_cast<unsigned>(row.date.month())) + sign +
         std::to_string(static_cast<int>(row.date.year()));
}

/// Open, high, low and close, each written by `price`, `separator` before each.
template <class Price>
std::string prices(const Row& row, const char* separator, const Price& price) {
  std::string text;
  for (const int change : {0, 25, -50, 12}) {
    text += separator + price(row.price + change);
  }
  return text;
}

std::string point(int cents) { return decimals(cents, "."); }

struct Shape {
  const char* name;
  const char* header;
  std::string (*line)(const Row& row);
};

const Shape kShapes[] = {
    {"iso-commas", "Date,Open,High,Low,Close,Volume",
     [](const Row& row) { return iso(row) + prices(row, ",", point) + ",1234567"; }},
    {"iso-zones", "Datetime,Open,High,Low,Close,Volume,Dividends",
     [](const Row& row) {
       return iso(row) + " 00:00:00-05:00" + prices(row, ",", point) + ",1234567,0.0";
     }},
    {"points-decimal-commas", "Datum;Eröffnung;Hoch;Tief;Schluss;Volumen",
     [](const Row& row) {
       const auto price = [](int cents) { return grouped(cents, ".", ","); };
       return dayFirst(row, ".") + prices(row, ";", price) + ";1.234.567";
     }},
    {"quoted-dollars", "\"Date\",\"Open\",\"High\",\"Low\",\"Price\",\"Vol.\"",
     [](const Row& row) {
       const auto price = [](int cents) { return "\"$" + grouped(cents, ",", ".") + "\""; };
       return "\"" + dayFirst(row, "/") + "\"" + prices(row, ",", price) + ",\"1.23M\"";
     }},
    {"months-in-words", "Date;Ouverture;+ haut;+ bas;Clôture;Volume",
     [](const Row& row) {
       constexpr std::array kMonths{"janv.", "févr.", "mars",  "avr.", "mai",  "juin",
                                    "juil.", "août",  "sept.", "oct.", "nov.", "déc."};
       const auto price = [](int cents) { return grouped(cents, "\u202f", ",") + " €"; };
       return std::to_string(static_cast<unsigned>(row.date.day())) + " " +
              kMonths.at(static_cast<unsigned>(row.date.month()) - 1) + " " +
              std::to_string(static_cast<int>(row.date.year())) + prices(row, ";", price) +
              ";1\u202f234\u202f567";
     }},
    {"no-names", "",
     [](const Row& row) {
       std::string day = iso(row);
       std::erase(day, '-');
       return day + " 170000" + prices(row, ";", point) + ";1234567";
     }},
};

std::string fileOf(const Shape& shape) {
  std::string text = *shape.header != '\0' ? std::string(shape.header) + "\n" : "";
  const std::chrono::sys_days first{std::chrono::year{1985} / 1 / 1};
  for (int i = 0; i < kRows; ++i) {
    text += shape.line({first + std::chrono::days{i}, 100'000 + i * 37 % 500'000}) + "\n";
  }
  return text;
}

double microsecondsToRead(const std::string& file) {
  const auto start = std::chrono::steady_clock::now();
  const quotes::PriceFile prices = quotes::parsePriceFile(file);
  const auto end = std::chrono::steady_clock::now();
  if (prices.bars.size() != kRows) std::fprintf(stderr, "Not read: %s\n", prices.problem.c_str());
  return std::chrono::duration<double, std::micro>(end - start).count();
}

}  // namespace

void printExports(int count) {
  std::vector<std::string> files;
  for (const Shape& shape : kShapes) files.push_back(fileOf(shape));
  std::vector<std::vector<double>> samples(files.size());
  for (int round = 0; round <= count; ++round) {  // the first one unmeasured: tables of names
    for (std::size_t i = 0; i < files.size(); ++i) {
      const double time = microsecondsToRead(files[i]);
      if (round > 0) samples[i].push_back(time);
    }
  }
  for (std::size_t i = 0; i < files.size(); ++i) printLine("export", kShapes[i].name, samples[i]);
}

}  // namespace quintara::bench
