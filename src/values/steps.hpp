#pragma once

#include <functional>
#include <vector>

namespace quintara {

/// Actions that run one after the other; how a failure is met is the runner's choice.
using Steps = std::vector<std::function<void()>>;

/// Runs every step in order; the first failure stops it and goes to the caller.
void run(const Steps& steps);

/// Runs every step in order; a step that raises a run-time error is skipped, any other exception
/// goes to the caller.
void runSkippingFailures(const Steps& steps);

}  // namespace quintara
