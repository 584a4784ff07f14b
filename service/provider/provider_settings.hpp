#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "service/prices/day_forms.hpp"
#include "service/prices/price_rows.hpp"
#include "service/provider/url_template.hpp"
#include "service/text/secret.hpp"

namespace quintara::quotes {

/// How a reply is read.
struct ReplyShape {
  enum class Format { Csv, Json };
  Format format = Format::Csv;
  std::string rows;  ///< the JSON pointer to the rows, with {symbol} perhaps; empty for the whole
  ColumnNames names = kUsualNames;
};

/// A provider of prices on the network, as the trader describes it.
struct ProviderSettings {
  std::optional<UrlTemplate> tableUrl;  ///< always there once the settings were read
  std::optional<UrlTemplate> quoteUrl;
  ReplyShape table;
  ReplyShape quote;
  std::string header;  ///< a request header with placeholders; empty for none
  Secret key;
  DayForms days;                         ///< in replies
  std::string datePattern = "%Y-%m-%d";  ///< in addresses
  std::string interval = "d";            ///< the provider's word for daily
  int years = 11;                        ///< as many as the longest chart shows
  std::chrono::seconds timeOut{20};      ///< for all transfers of one ticker together
  std::chrono::seconds cacheTime{60};
  std::filesystem::path caFile;  ///< certificate authorities to trust besides the system's
  std::string unknownSymbol;     ///< what the reply for a symbol says that the provider lacks
};

/// One line that names the line at fault and never shows what stands behind its equals sign.
struct BadSettings : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Lines `name = value`; blank lines and those that begin with # are skipped. The key is taken from
/// the environment. Throws BadSettings.
ProviderSettings parseProviderSettings(std::string_view text);

/// Throws BadSettings, also when the file cannot be read. No value without a file.
std::optional<ProviderSettings> readProviderSettings(const std::filesystem::path& file);

}  // namespace quintara::quotes
