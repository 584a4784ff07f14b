#include "data/readout.hpp"

#include "values/text.hpp"

namespace quintara {

void showBar(const Candle& candle, const Readout& readout) {
  readout.lblHigh.setCaption(defaultText(candle.dHigh));
  readout.lblLow.setCaption(defaultText(candle.dLow));
  readout.lblDate.setCaption(candle.sDate);
  readout.lblOpen.setCaption(defaultText(candle.dOpen));
  readout.lblClose.setCaption(defaultText(candle.dClose));
}

}  // namespace quintara
