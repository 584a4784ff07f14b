#pragma once

#include "commands/getting_data_window.hpp"
#include "data/chart_state.hpp"
#include "data/quote_request.hpp"
#include "data/readout.hpp"
#include "levels/level_table.hpp"

namespace quintara {

/// What Draw Chart reads and writes on the windows.
struct DrawChartControls {
  TextBox& txtTicker;
  PictureBox& picChart;
  TextBox& txtClose;
  Readout readout;
  const PointBoxes& boxes;
  const PointSets& sets;
  frmGettingData& progress;
  MessageBox& messageBox;
  const LocaleQuery& locale;
};

/// The Draw Chart button: download, clear, build, range, drawing, readout of the newest bar. An
/// empty ticker and a failed download are told; any later run-time error, or too little memory,
/// ends it silently, with chart and readout as far as they got.
void cmdChart_Click(ChartState& state, const DrawChartControls& controls,
                    const QuoteSource& source);

}  // namespace quintara
