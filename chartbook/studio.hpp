#pragma once

#include <filesystem>

#include "chartbook/options.hpp"
#include "chartbook/report.hpp"
#include "platform/headless/glyphs.hpp"
#include "service/desk/standard_sources.hpp"

namespace quintara::chartbook {

/// Makes pictures, one after the other, each by a session of its own. Its day is the day it was
/// made on. A process that is forked off can go on with its copy.
class Studio {
 public:
  /// Throws BadFlag for settings of a provider that were named and cannot be used,
  /// std::runtime_error when there is no font.
  explicit Studio(const Options& options);

  /// Writes the picture file. Throws BadOrder, Failure or std::system_error.
  Report draw(const Order& order, const std::filesystem::path& picture);

 private:
  Studio(const Options& options, const quotes::SourceSettings& settings);

  const Options& options_;
  const quotes::Day today_;
  FreeTypeGlyphs glyphs_;
  quotes::QuoteDesk desk_;
  DeskClient client_;
};

}  // namespace quintara::chartbook
