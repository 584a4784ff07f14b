#include "commands/draw_chart_command.hpp"

#include <string>

#include "chart/price_range.hpp"
#include "chart/shown_bars.hpp"
#include "chart/summary.hpp"
#include "data/initialize_collection.hpp"
#include "levels/clear.hpp"
#include "values/errors.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

/// Takes the progress window away whatever happens: nobody else could close it.
struct ProgressShown {
  frmGettingData& window;
  ~ProgressShown() { window.Unload(); }
};

void buildChart(ChartState& state, const DrawChartControls& controls, Date today) {
  Clear(controls.boxes, controls.sets);
  InitializeCollection(state, today);
  showWhatFits(state, controls.picChart);
  controls.progress.setInfo("Building historical chart. Please wait....");
  MaxMin(state, today);
  if (state.hasChart()) {
    state.sDrawnTicker = state.sTicker;
  }
  drawAndDescribe(state, controls.picChart);
  const Candle& newest = state.candles().Item(1);
  controls.txtClose.setText(defaultText(newest.dClose));
  showBar(newest, controls.readout);
}

void reportFailedDownload(const DrawChartControls& controls) {
  controls.messageBox.MsgBox("Error occurred while retrieving historical data for " +
                                 controls.locale.UCase(controls.txtTicker.Text()) +
                                 "\r\nPlease verify that the ticker symbol entered is correct and "
                                 "you are connected to the Internet",
                             MsgStyle::Stop, "Data retrieval error");
}

}  // namespace

void cmdChart_Click(ChartState& state, const DrawChartControls& controls,
                    const QuoteSource& source) {
  if (controls.txtTicker.Text().empty()) {
    controls.messageBox.MsgBox("Please enter Ticker Symbol", MsgStyle::Exclamation, "Quintara");
    controls.txtTicker.SetFocus();
    return;
  }
  state.sTicker = controls.txtTicker.Text();
  if (state.bBusy) {
    return;
  }
  bool downloaded = true;
  {
    const ProgressShown shown{controls.progress};
    // Rows that do not parse end the command without a word; what was drawn stays.
    trapErrors([&] {
      controls.progress.setInfo("Retrieving historical data. Please wait....");
      controls.progress.Show();
      downloaded = GetHistoricalData(state, source);
      if (downloaded) {
        buildChart(state, controls, source.clock.today());
      }
    });
  }
  if (!downloaded) {
    reportFailedDownload(controls);
  }
  state.bBusy = false;
}

}  // namespace quintara
