#pragma once

#include <malloc.h>

#include <cstring>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "support/faulty_server.hpp"
#include "values/errors.hpp"

namespace quintara::test {

/// How Draw Chart ends over a working chart of 200 bars whose newest opened at 60.25.
struct Outcome {
  bool told;           ///< that the download failed; else it ends without a word
  bool cleared;        ///< the calculator
  bool repainted;      ///< the chart area
  const char* open;    ///< of the bar in the readout
  const char* ticked;  ///< what ticking a level box reports afterwards; empty: it just redraws
};

struct Fault {
  const char* name;
  Outcome outcome;
  Reply table;
  Reply quote;
};
inline void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }

inline std::vector<Fault> faults() {
  using namespace std::string_literals;
  using End = Reply::End;
  const Outcome told{true, false, false, "60.25", ""};
  const Outcome silent{false, true, false, "60.25", textOf(ErrorKind::SubscriptOutOfRange)};
  const Outcome erased{false, true, true, "60.25", textOf(ErrorKind::Overflow)};
  const Outcome onlyRead{false, true, false, "61.5", ""};
  const auto drawn = [](const char* open) { return Outcome{false, true, true, open, ""}; };
  const auto changed = [](const char* from, const std::string& to) {
    std::string text = table(200);
    return ok(text.replace(text.find(from), std::strlen(from), to));
  };
  const auto allOf = [](const QByteArray& prices) {
    return ok("Header\n" + ("14-Nov-02," + prices + ",1\n").repeated(200).toStdString());
  };
  const Reply good = ok(table(200)), news = ok(quote("61.50")), none = ok(quote("0.00"));
  const std::string http = "HTTP/1.1 ", page = "<html>\n<head>\n</head>\n1,2,3,4,5,6\n</html>\n";
  const auto status = [&](const char* line) { return Reply{http + line + "\r\n\r\n" + page}; };
  const std::string body = http + "200 OK\r\n\r\n", megabyte(1 << 20, 'x');
  const auto returns = QByteArray::fromStdString(table(200)).replace("\n", "\r\n").toStdString();
  const auto chunked = [&](const std::string& text, int trailers) {
    std::ostringstream bytes(http + "200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", std::ios::ate);
    bytes << std::hex << text.size() << "\r\n" << text << "\r\n0\r\n";
    while (trailers-- > 0) bytes << "T:\r\n";
    return Reply{bytes.str() + "\r\n"};
  };
  std::vector<Fault> all;
  const auto add = [&all](const char* name, const Outcome& outcome, const Reply& table,
                          const Reply& quote) {
    all.push_back({name, outcome, table, quote});
  };
  add("refused", told, {}, news);
  add("reset", told, {body + "Date", End::Reset}, news);
  add("halfABody", told, {good.bytes.substr(0, 4000)}, news);
  add("aByteASecond", told, {"H", End::Silence, 1000, 20}, news);
  add("noReply", told, good, {"", End::Silence});
  add("notFound", told, status("404 Not Found"), news);
  add("serverError", told, good, status("500 Oops"));
  add("redirectLoop", told, status("302 Found\r\nLocation: /table.csv"), news);
  add("nineMegabytes", told, {body + megabyte, End::Close, 9}, news);
  add("tooManyLines", told, ok(table(200) + std::string(200'000, '\n')), news);
  add("longTrailers", told, chunked(table(200), 70'000), news);
  add("nul", silent, changed("56.00", "5\0006"s), news);
  add("nulInADate", drawn("61.5"), changed("14-Nov", "14\0Nov"s), news);
  add("noUtf8", silent, changed("56.00", "\xC3\x28\xFF"), news);
  add("gzip", told, status("200 OK\r\nContent-Encoding: gzip"), ok("\x1F\x8B\x08\x4B\x4C\x02\xFF"));
  add("aPage", silent, ok(page), news);
  add("returnsEverywhere", drawn("61.5"), ok(returns), news);
  add("fortyThousandRows", drawn("61.5"), ok(table(40'000)), news);
  add("tenThousandFields", drawn("61.5"), changed("1000", "1000" + std::string(10'000, ',')), news);
  add("hugePrices", drawn("61.5"), allOf("1e38,1e38,1e38,1e38"), news);
  add("pricesNearTheLimit", erased, allOf("1,3.3e38,1,1"), news);
  add("equalPrices", drawn("5"), allOf("5,5,5,5"), none);
  add("negativePrices", drawn("-5"), allOf("-5,-4,-6,-5"), none);
  add("oneRow", onlyRead, ok(table(1)), news);
  add("noRows", told, ok(table(0)), news);
  add("aQuoteOfEightFields", told, good, ok("\"X\",60.5,d,t,c,61.5,61.75,59.5"));
  return all;
}

/// An entry of the kernel's account of this process, such as "VmRSS:".
inline std::size_t memoryKilobytes(const std::string& entry) {
  malloc_trim(0);
  std::ifstream account("/proc/self/status");
  std::size_t kilobytes = 0;
  for (std::string word; account >> word && word != entry;) continue;
  account >> kilobytes;
  return kilobytes;
}

}  // namespace quintara::test
