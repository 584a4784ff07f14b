// The trader's description of a provider. Input: a line with a ticker, then the settings.

#include "service/provider/provider_settings.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "service/prices/json_rows.hpp"
#include "target.hpp"
#include "transfer/url_parts.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;

constexpr std::string_view kMarked = "zecret";

bool isLine(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 127; });
}

/// A value that is marked must not come back; a name may.
void checkRefusal(std::string_view reason, std::string_view settings) {
  check(isLine(reason) && !reason.empty(), "a refusal is one line of ASCII");
  if (reason.find(kMarked) == reason.npos) return;
  bool named = false;
  while (!settings.empty()) {
    std::string_view line = take(settings, '\n');
    named = named || take(line, '=').find(kMarked) != line.npos;
  }
  check(named, "no value of a setting is shown");
}

void checkAddress(const UrlTemplate& address, const Filling& filling) {
  const std::string url = address.filledWith(filling);
  check(isLine(url) && url.find_first_of(" #") == url.npos, "an address is one word");
  const auto parts = urlParts(url);
  check(parts && parts->host == address.host() && address.secure() == (parts->scheme == "https"),
        "no ticker decides which computer is asked");
}

void checkSettings(const ProviderSettings& settings, const std::string& ticker) {
  check(settings.tableUrl.has_value(), "there is an address");
  const auto moment =
      momentText(std::chrono::sys_days{std::chrono::year{2026} / 11 / 5}, settings.datePattern);
  const Filling filling{{"symbol", ticker}, {"symbol_lower", ticker},
                        {"from", moment},   {"to", moment},
                        {"interval", "d"},  {"key", settings.key.value()}};
  checkAddress(*settings.tableUrl, filling);
  if (settings.quoteUrl) checkAddress(*settings.quoteUrl, filling);
  check(settings.years >= 1 && settings.years <= 100 && settings.timeOut.count() >= 1 &&
            settings.timeOut.count() <= 50 && settings.cacheTime.count() >= 0 &&
            settings.cacheTime.count() <= 3600 && std::abs(settings.days.utcOffsetHours) <= 14,
        "numbers are within bounds");
  for (const ReplyShape* shape : {&settings.table, &settings.quote}) {
    const Filling plain{{"symbol", "A"}, {"symbol_lower", "a"}, {"from", "1"},
                        {"to", "1"},     {"interval", "d"},     {"key", "k"}};
    check(isJsonPath(filled(shape->rows, plain, false)), "rows have a path");
    for (const auto& name : shape->names) check(!name.empty(), "every field has a name");
  }
}

}  // namespace

void tryInput(std::string_view input) {
  [[maybe_unused]] static const int key = ::setenv("PRICES_KEY", "kEy-1%2F", 1);
  const std::string ticker(take(input, '\n'));
  try {
    checkSettings(parseProviderSettings(input), ticker);
  } catch (const BadSettings& bad) {
    checkRefusal(bad.what(), input);
  }
}

}  // namespace quintara::fuzz
