#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "commands/getting_data_window.hpp"
#include "data/chart_state.hpp"
#include "data/quote_request.hpp"
#include "data/readout.hpp"

namespace quintara {

/// What Draw Chart reads and writes on the windows.
struct DrawChartControls {
  TextBox& txtTicker;
  const DrawingSurface& picChart;
  TextBox& txtClose;
  Readout readout;
  frmGettingData& progress;
  MessageBox& messageBox;
};

/// What Draw Chart asks of the calculator and the chart once the rows are there.
struct AfterDownload {
  std::function<void()> clear;
  std::function<void()> maxMin;
  std::function<void()> drawChart;
};

/// The Draw Chart button: download, clear, build, range, drawing, readout of the newest bar. An
/// empty ticker and a failed download are told; any later run-time error ends it silently, with
/// chart and readout as far as they got.
void cmdChart_Click(ChartState& state, const DrawChartControls& controls, const QuoteSource& source,
                    const AfterDownload& afterDownload);

}  // namespace quintara
