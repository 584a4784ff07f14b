#pragma once

namespace quintara::bench {

/// From now on, once a window of the application has been painted: prints the microseconds since
/// the time in QUINTARA_STARTED and the resident kilobytes, and ends the process.
void tellFirstPaint();

}  // namespace quintara::bench
