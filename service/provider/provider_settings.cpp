#include "service/provider/provider_settings.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <map>

#include "service/prices/json_rows.hpp"
#include "service/text/lines.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLongestKey = 500;
constexpr std::size_t kLongestFile = 65'536;

const Filling kExample{{"symbol", "A"}, {"symbol_lower", "a"}, {"from", "1"},
                       {"to", "1"},     {"interval", "d"},     {"key", "k"}};

[[noreturn]] void refuse(const std::string& reason) { throw std::invalid_argument(reason); }

void setUrl(std::optional<UrlTemplate>& target, const std::string& value) {
  target.emplace(value, kExample);
}

void setHeader(std::string& target, const std::string& value) {
  const auto colon = value.find(':');
  const bool oneLine =
      std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~'; });
  if (!oneLine || colon == 0 || colon == value.npos || value.find(' ') < colon) {
    refuse("not of the form Name: value");
  }
  filled(value, kExample, false);
  target = value;
}

// Only visible characters: others could end a header line or hide from those who look for the key.
void setKey(Secret& target, const std::string& variable) {
  const char* value = std::getenv(variable.c_str());
  const std::string_view key = value != nullptr ? value : "";
  if (key.empty() || key.size() > kLongestKey ||
      !std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c <= '~'; })) {
    refuse("there is no environment variable of this name that holds a key");
  }
  target = Secret(std::string(key));
}

void setFormat(ReplyShape& target, const std::string& value) {
  if (value != "csv" && value != "json") {
    refuse("not one of csv and json");
  }
  target.format = value == "json" ? ReplyShape::Format::Json : ReplyShape::Format::Csv;
}

void setRows(ReplyShape& target, const std::string& value) {
  Filling example = kExample;
  example.erase("key");  // paths are shown as they are
  const auto path = filled(value, example, false);
  if (!isJsonPath(path)) {
    refuse("not a path like /data/prices");
  }
  target.rows = value;
}

void setPattern(std::string& target, const std::string& value) {
  target = value == "iso" ? "%Y-%m-%d" : value == "unix" ? "%s" : value;
  if (!isMomentPattern(target)) {
    refuse("not iso, unix or a pattern of %Y, %y, %m, %d and %s");
  }
}

void setOrder(DayOrder& target, const std::string& value) {
  if (value != "month-first" && value != "day-first") {
    refuse("not one of month-first and day-first");
  }
  target = value == "day-first" ? DayOrder::DayFirst : DayOrder::MonthFirst;
}

int numberOf(const std::string& value, int lowest, int highest) {
  const bool minus = value.front() == '-';
  const auto count = parseCount(std::string_view(value).substr(minus ? 1 : 0));
  const int number = count.value_or(0) * (minus ? -1 : 1);
  if (!count || number < lowest || number > highest) {
    refuse("not a number from " + std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return number;
}

void setCaFile(std::filesystem::path& target, const std::string& value) {
  target = value;
  std::error_code error;
  if (!target.is_absolute() || !std::filesystem::is_regular_file(target, error) ||
      ::access(value.c_str(), R_OK) != 0) {
    refuse("not the whole path of a file that can be read");
  }
}

struct Setting {
  std::string_view name;
  void (*set)(ProviderSettings& settings, const std::string& value);
};

using S = ProviderSettings;
using V = const std::string;

constexpr auto kSettings = std::to_array<Setting>({
    {"url", [](S& s, V& v) { setUrl(s.tableUrl, v); }},
    {"quote_url", [](S& s, V& v) { setUrl(s.quoteUrl, v); }},
    {"header", [](S& s, V& v) { setHeader(s.header, v); }},
    {"key_variable", [](S& s, V& v) { setKey(s.key, v); }},
    {"date_format", [](S& s, V& v) { setPattern(s.datePattern, v); }},
    {"interval", [](S& s, V& v) { s.interval = v; }},
    {"years", [](S& s, V& v) { s.years = numberOf(v, 1, 100); }},
    {"format", [](S& s, V& v) { setFormat(s.table, v); }},
    {"rows", [](S& s, V& v) { setRows(s.table, v); }},
    {"date", [](S& s, V& v) { s.table.names[kDate] = v; }},
    {"open", [](S& s, V& v) { s.table.names[kOpen] = v; }},
    {"high", [](S& s, V& v) { s.table.names[kHigh] = v; }},
    {"low", [](S& s, V& v) { s.table.names[kLow] = v; }},
    {"close", [](S& s, V& v) { s.table.names[kClose] = v; }},
    {"volume", [](S& s, V& v) { s.table.names[kVolume] = v; }},
    {"date_order", [](S& s, V& v) { setOrder(s.days.order, v); }},
    {"utc_offset_hours", [](S& s, V& v) { s.days.utcOffsetHours = numberOf(v, -12, 14); }},
    {"unknown_symbol", [](S& s, V& v) { s.unknownSymbol = v; }},
    {"ca_file", [](S& s, V& v) { setCaFile(s.caFile, v); }},
    // A chart waits for a minute at most.
    {"timeout_seconds", [](S& s, V& v) { s.timeOut = std::chrono::seconds{numberOf(v, 1, 50)}; }},
});

// They begin with what holds for the table.
constexpr auto kLaterSettings = std::to_array<Setting>({
    {"quote_format", [](S& s, V& v) { setFormat(s.quote, v); }},
    {"quote_rows", [](S& s, V& v) { setRows(s.quote, v); }},
    {"quote_date", [](S& s, V& v) { s.quote.names[kDate] = v; }},
    {"quote_open", [](S& s, V& v) { s.quote.names[kOpen] = v; }},
    {"quote_high", [](S& s, V& v) { s.quote.names[kHigh] = v; }},
    {"quote_low", [](S& s, V& v) { s.quote.names[kLow] = v; }},
    {"quote_last", [](S& s, V& v) { s.quote.names[kClose] = v; }},
    {"quote_volume", [](S& s, V& v) { s.quote.names[kVolume] = v; }},
    {"cache_seconds", [](S& s, V& v) { s.cacheTime = std::chrono::seconds{numberOf(v, 0, 3600)}; }},
});

struct Line {
  int number;
  std::string value;
};
using Lines = std::map<std::string, Line, std::less<>>;

[[noreturn]] void refuseLine(int number, const std::string& reason) {
  throw BadSettings("line " + std::to_string(number) + ": " + reason);
}

bool isKnown(std::string_view name) {
  const auto named = [&](const Setting& setting) { return setting.name == name; };
  return std::any_of(kSettings.begin(), kSettings.end(), named) ||
         std::any_of(kLaterSettings.begin(), kLaterSettings.end(), named);
}

Lines linesOf(std::string_view text) {
  Lines lines;
  for (int number = 1; !text.empty(); ++number) {
    const auto line = takeLine(text);
    if (line.empty() || line.front() == '#') {
      continue;
    }
    const auto equals = std::min(line.find('='), line.size());
    const std::string name(trimmed(line.substr(0, equals)));
    const auto value = trimmed(line.substr(std::min(equals + 1, line.size())));
    if (name.empty() || value.empty()) {
      refuseLine(number, "not of the form name = value");
    }
    if (!isKnown(name)) {
      refuseLine(number, "there is no setting " + escaped(name));
    }
    if (!lines.try_emplace(name, Line{number, std::string(value)}).second) {
      refuseLine(number, name + " is set already");
    }
  }
  return lines;
}

template <class Settings>
void apply(const Settings& table, const Lines& lines, ProviderSettings& settings) {
  for (const Setting& setting : table) {
    const auto line = lines.find(setting.name);
    if (line == lines.end()) {
      continue;
    }
    try {
      setting.set(settings, line->second.value);
    } catch (const std::invalid_argument& error) {
      refuseLine(line->second.number, std::string(setting.name) + ": " + error.what());
    }
  }
}

// What a single line cannot show.
void checkTogether(const ProviderSettings& settings, const Lines& lines) {
  if (!settings.tableUrl) {
    throw BadSettings("the setting url is missing");
  }
  const auto isKeyed = [](const auto& line) {
    return line.second.value.find("{key}") != std::string::npos;
  };
  const auto variable = lines.find("key_variable");
  if (variable != lines.end() && std::none_of(lines.begin(), lines.end(), isKeyed)) {
    refuseLine(variable->second.number,
               "key_variable: no setting says with {key} where the key goes");
  }
  for (const auto& entry : lines) {
    const auto& [name, line] = entry;
    if (isKeyed(entry) && settings.key.value().empty()) {
      refuseLine(line.number, name + ": {key} needs the setting key_variable");
    }
    const bool ofQuote = name.rfind("quote_", 0) == 0;
    if (ofQuote && !settings.quoteUrl) {
      refuseLine(line.number, name + " needs the setting quote_url");
    }
    const ReplyShape& shape = ofQuote ? settings.quote : settings.table;
    if ((name == "rows" || name == "quote_rows") && shape.format != ReplyShape::Format::Json) {
      refuseLine(line.number, name + " is for the format json");
    }
  }
}

}  // namespace

ProviderSettings parseProviderSettings(std::string_view text) {
  const Lines lines = linesOf(withoutByteOrderMark(text));
  ProviderSettings settings;
  apply(kSettings, lines, settings);
  settings.quote.format = settings.table.format;
  settings.quote.names = settings.table.names;
  apply(kLaterSettings, lines, settings);
  checkTogether(settings, lines);
  return settings;
}

std::optional<ProviderSettings> readProviderSettings(const std::filesystem::path& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return std::nullopt;
  }
  const BadSettings unreadable(escaped(file.string()) +
                               ": not a file of settings that can be read");
  if (status.type() != std::filesystem::file_type::regular) {
    throw unreadable;  // opening a pipe would wait for its other end
  }
  std::ifstream stream(file, std::ios::binary);
  std::string text(kLongestFile + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (stream.bad() || !stream.eof()) {
    throw unreadable;
  }
  try {
    return parseProviderSettings(text);
  } catch (const BadSettings& bad) {
    throw BadSettings(escaped(file.string()) + ": " + bad.what());
  }
}

}  // namespace quintara::quotes
