#include "values/steps.hpp"

#include "values/errors.hpp"

namespace quintara {

void run(const Steps& steps) {
  for (const auto& step : steps) {
    step();
  }
}

void runSkippingFailures(const Steps& steps) {
  for (const auto& step : steps) {
    trapErrors(step);
  }
}

}  // namespace quintara
