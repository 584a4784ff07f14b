#pragma once

namespace quintara::bench {

/// Prints `export,SHAPE,median_us,p10_us` of reading a price file of 10,000 rows, for some shapes
/// of exports, in turns.
void printExports(int count);

}  // namespace quintara::bench
