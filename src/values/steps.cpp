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
    try {
      step();
    } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch): skipping it is the policy
    }
  }
}

}  // namespace quintara
