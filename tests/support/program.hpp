#pragma once

#include <gmock/gmock.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/module1.hpp"
#include "support/fakes.hpp"

namespace quintara::test {

/// The whole program over the fake platform: what a trader does, without windows.
struct Program : testing::Test {
  using Points = std::vector<std::pair<std::string, const char*>>;

  template <class Kind>
  Kind& get(const std::string& name) {
    return platform.window->control<Kind>(name);
  }
  std::string& caption(const std::string& label) { return get<HeadlessLabel>(label).caption; }
  std::string& text(const std::string& box) { return get<HeadlessTextBox>(box).text; }
  FakePictureBox& chart() { return get<FakePictureBox>("picChart"); }
  void press(const std::string& button) { get<Button>(button).Click(); }
  void choose(const std::string& box, std::int16_t index) {
    get<ComboBox>(box).setListIndex(index);
  }
  void tick(const std::string& box, std::int16_t value = 1) { get<CheckBox>(box).setValue(value); }
  void drawChart(const std::string& ticker = "xyz") {
    text("txtTicker") = ticker;
    press("cmdChart");
  }
  void calculate(const Points& points = {{"A1", "50"}, {"B1", "60"}, {"C1", "55"}}) {
    for (const auto& [point, price] : points) text("txt" + point) = price;
    press("cmdCalculate");
  }
  /// How often the chart was drawn since the last call.
  std::size_t redraws() {
    const std::size_t count = chart().with("cls").size();
    chart().calls.clear();
    return count;
  }
  /// What was drawn since the chart was cleared last.
  std::vector<std::string> picture() {
    const auto& calls = chart().calls;
    return {std::find(calls.rbegin(), calls.rend(), "cls").base(), calls.end()};
  }
  /// The lowest and the highest price of the last drawing: the ends of a line of its grid.
  std::string range() {
    std::string last;
    for (const std::string& call : chart().with("line ", " dot")) {
      float x1 = 0, x2 = 0, low = 0, high = 0;
      std::sscanf(call.c_str(), "line %f,%f %f,%f", &x1, &low, &x2, &high);
      if (x1 == x2) last = defaultText(low) + " to " + defaultText(high);
    }
    return last;
  }

  const ScopedSeparator untilTheEnd{""};
  FakePlatform platform;
  std::unique_ptr<frmQuintara> form = Main(platform.platform(), {"history", "quotes"});
};

}  // namespace quintara::test
