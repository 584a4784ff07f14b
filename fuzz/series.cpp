// From the replies of a quote service to series, range and drawing.
// Input: settings|quote reply|table reply; a setting is one character, see Settings.

#include <algorithm>
#include <cmath>
#include <string>

#include "chart/draw_chart.hpp"
#include "chart/price_range.hpp"
#include "chart/resize.hpp"
#include "chart/shown_bars.hpp"
#include "chart/spacing.hpp"
#include "checking_surface.hpp"
#include "data/initialize_collection.hpp"
#include "data/quote_request.hpp"
#include "values/text.hpp"

namespace quintara::fuzz {

namespace {

/// Choices by position, each the character's code modulo the number of choices.
class Settings {
 public:
  explicit Settings(std::string_view text) : text_(text) {}

  int next(int choices) {
    const int code = text_.empty() ? 0 : static_cast<unsigned char>(text_.front());
    text_.remove_prefix(text_.empty() ? 0 : 1);
    return code % choices;
  }

 private:
  std::string_view text_;
};

struct Replies : HttpClient {
  std::string OpenURL(const std::string& url, int) override {
    return std::string(url.find("/table.csv") != std::string::npos ? table : quote);
  }
  std::string_view quote;
  std::string_view table;
};

struct FixedDay : Clock {
  [[nodiscard]] Date today() const override { return date; }
  Date date;
};

void checkRows(const ChartState& state, std::string_view table) {
  check(state.sRows.size() ==
            1 + static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n')),
        "a row for every line");
  const char separator = sDecimalSep == "," ? '.' : ',';
  for (const auto& row : state.sRows) {
    check(row.find(separator) == std::string::npos, "rows are in the user's form");
  }
}

void checkSeries(const ChartState& state) {
  for (std::size_t i = 1; i <= state.candles().Count(); ++i) {
    const Candle& candle = state.candles().Item(i);
    for (const double number : {double{candle.dOpen}, double{candle.dHigh}, double{candle.dLow},
                                double{candle.dClose}, double{candle.Left}, candle.dVolume}) {
      check(std::isfinite(number), "a series holds finite numbers only");
    }
    const float left = 40 + static_cast<float>(i - 1) * state.iSpacing;
    check(candle.Left == left, "bars stand side by side");
  }
}

void checkRange(const ChartState& state) {
  check(std::isfinite(state.sngMax) && std::isfinite(state.sngMin), "a range is finite");
  for (int i = 1; i <= state.iShown; ++i) {
    const Candle& candle = state.candles().Item(static_cast<std::size_t>(i));
    check(candle.dHigh <= state.sngMax && candle.dLow >= state.sngMin,
          "the range holds every bar that is shown");
  }
}

/// What Draw Chart does after the download, then more and fewer bars.
void draw(ChartState& state, const Clock& clock, CheckingSurface& surface) {
  InitializeCollection(state, clock.today());
  checkSeries(state);
  showWhatFits(state, surface);
  MaxMin(state, clock.today());
  const auto checkAndDraw = [&] {
    checkSeries(state);
    checkRange(state);
    DrawChart(state, surface);
  };
  checkAndDraw();
  const Steps redraw{checkAndDraw};
  Expand(state, surface, clock, redraw);
  Suppress(state, surface, clock, redraw);
  Suppress(state, surface, clock, redraw);
  picChart_Resize(state, surface, clock, redraw);
}

}  // namespace

void tryInput(std::string_view input) {
  Settings settings(take(input, '|'));
  Replies replies;
  replies.quote = take(input, '|');
  replies.table = input;

  ChartState state;
  state.sTicker = "XYZ";
  state.iInterval = static_cast<std::int16_t>(settings.next(3));
  state.iDuration = static_cast<std::int16_t>(settings.next(4));
  state.iChartType = static_cast<std::int16_t>(settings.next(3));
  state.iSpacing = static_cast<std::int16_t>(1 + settings.next(5));
  sDecimalSep = settings.next(2) == 0 ? "." : ",";
  FixedDay clock;
  clock.date = std::chrono::sys_days{std::chrono::year{2026} / 11 / 16} +
               std::chrono::days{settings.next(7)};
  const auto width = static_cast<float>(settings.next(256) * 16);
  CheckingSurface surface(width, static_cast<float>(settings.next(256) * 16));

  if (!GetHistoricalData(state, {replies, clock, {"history", "quotes"}})) return;
  checkRows(state, replies.table);
  try {
    draw(state, clock, surface);
  } catch (const RuntimeError&) {
    checkSeries(state);  // holds the bars before the failure
  }
  check(surface.longestLabel() <= input.size() + 64,
        "labels are as short as the dates in the rows");
}

}  // namespace quintara::fuzz
