#pragma once

#include "platform/platform.hpp"

namespace quintara::bench {

/// Prints lines `what,size,median_us,p10_us` of everything; `quick` takes few samples.
void printCsv(Platform& platform, bool quick);

/// Prints `start,full|empty,median_us,p10_us` and `memory,full|empty,median_kb,p10_kb` of the
/// program and of an empty window with as many controls, started in turns from `folder`.
void printStart(const char* folder, bool quick);

}  // namespace quintara::bench
