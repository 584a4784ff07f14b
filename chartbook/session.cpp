#include "chartbook/session.hpp"

#include <algorithm>
#include <utility>

#include "platform/headless/controls.hpp"
#include "platform/twips.hpp"
#include "service/text/text.hpp"
#include "values/errors.hpp"
#include "values/text.hpp"

namespace quintara::chartbook {
namespace {

using quotes::equalIgnoringCase;
using quotes::escaped;

struct Choice {
  Field field;
  const char* comboBox;
};
constexpr std::array kChoices{Choice{kSpan, "cboDuration"}, Choice{kInterval, "cboInterval"},
                              Choice{kType, "cboChartType"}};

/// The first word is enough: 18 for 18 months.
bool names(const std::string& text, const std::string& item) {
  return equalIgnoringCase(text, item) || equalIgnoringCase(text, item.substr(0, item.find(' ')));
}

std::string joined(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (text.empty() ? "" : ", ") + item;
  }
  return text;
}

std::string inOneLine(std::string prompt) {
  std::replace(prompt.begin(), prompt.end(), '\n', ' ');
  return prompt;
}

/// What the boxes of the window take for a price above 0: a number with a full stop.
bool isPrice(const std::string& text) {
  return text.find_first_not_of("0123456789.") == text.npos &&
         std::count(text.begin(), text.end(), '.') <= 1 && readLeadingNumber(text) > 0;
}

}  // namespace

Session::Session(GlyphSource& glyphs, DeskClient& prices, Date today, PictureSize size)
    : prices_(prices),
      size_(size),
      platform_(glyphs, size.scale, today),
      form_(Main(platform_.with(prices), {"history", "quotes"})) {}

HeadlessPictureBox& Session::chart() const { return control<HeadlessPictureBox>("picChart"); }

std::string Session::caption(std::string_view label) const {
  return control<Label>(label).Caption();
}

const std::string& Session::chosen(std::string_view comboBox) const {
  const auto& box = control<HeadlessComboBox>(comboBox);
  return box.items.at(static_cast<std::size_t>(box.ListIndex()));
}

void Session::choose(const Order& order) {
  for (const Choice& choice : kChoices) {
    const std::string& text = order.fields.at(choice.field);
    auto& box = control<HeadlessComboBox>(choice.comboBox);
    const auto item = std::find_if(box.items.begin(), box.items.end(),
                                   [&](const auto& each) { return names(text, each); });
    if (item != box.items.end()) {
      box.setListIndex(static_cast<std::int16_t>(item - box.items.begin()));
    } else if (!text.empty()) {
      throw BadOrder(std::string(kFieldNames.at(choice.field)) + " is one of " + joined(box.items) +
                     ", not " + escaped(text));
    }
  }
}

void Session::calculate(const Order& order) {
  for (std::size_t field = kFirstPoint; field < kShow; ++field) {
    const std::string& price = order.fields.at(field);
    const std::string name = kFieldNames.at(field);
    if (!price.empty() && !isPrice(price)) {
      throw BadOrder(name + " is a price above 0, such as 82.59, not " + escaped(price));
    }
    control<TextBox>("txt" + name).setText(price);
  }
  try {
    control<Button>("cmdCalculate").Click();
  } catch (const RuntimeError& error) {
    throw Failure(error.what());
  }
}

void Session::tick(const std::string& box) { control<CheckBox>(box).setValue(1); }

void Session::tickBoxes(const Order& order) {
  const auto& places = levelPlaces();
  const auto find = [&](const std::string& what, auto&& wanted) {
    const auto place = std::find_if(places.begin(), places.end(), wanted);
    if (place == places.end()) {
      throw BadOrder(what);
    }
    if (caption(place->label).empty()) {
      throw BadOrder(place->set + " has no " + place->kind + "s to show: points are missing");
    }
    return place;
  };
  for (const std::string& set : pieces(order.fields.at(kShow))) {
    tick(find("Show lists A1 to A4, not " + escaped(set), [&](const LevelPlace& place) {
           return equalIgnoringCase(place.set, set);
         })->showBox);
  }
  for (const Target& target : targetsOf(order.fields.at(kTargets))) {
    const std::string text = escaped(target.set + "=" + target.name);
    const auto place =
        find("there is no target " + text + "; they are 1:1, 1.382 and 1.618 of A1 to A4",
             [&](const LevelPlace& each) {
               return !each.box.empty() && equalIgnoringCase(each.set, target.set) &&
                      (each.name == target.name || each.name == target.name + ":1");
             });
    if (control<CheckBox>(place->showBox).Value() == 0) {
      throw BadOrder("the target " + text +
                     " is drawn with its set only, which Show does not list");
    }
    tick(place->box);
  }
}

void Session::draw(const Order& order) {
  choose(order);
  const std::string& ticker = order.fields.at(kTicker);
  prices_.expect(ticker);
  control<TextBox>("txtTicker").setText(ticker);
  try {
    control<Button>("cmdChart").Click();
    expectChart();
    calculate(order);
    tickBoxes(order);
    // Last, because each box that was ticked has drawn the chart anew.
    const PictureBox& picChart = chart();
    platform_.window->resize(picChart.Left() + toTwips(size_.width),
                             picChart.Top() + toTwips(size_.height));
  } catch (const RuntimeError& error) {
    throw Failure(error.what());
  }
}

void Session::expectChart() {
  const std::string reason = prices_.takeReason();
  if (!platform_.messages.empty()) {
    throw Failure(reason.empty() ? inOneLine(platform_.messages.front().prompt) : reason);
  }
  if (chart().description().empty() || caption("lblDate").empty()) {
    throw Failure("no chart: the prices of this span are fewer than two bars, or no numbers");
  }
}

std::vector<Level> Session::levels() const {
  std::vector<Level> found;
  for (const LevelPlace& place : levelPlaces()) {
    const auto isTicked = [&](const std::string& box) {
      return box.empty() || control<CheckBox>(box).Value() == 1;
    };
    if (std::string shown = caption(place.label); !shown.empty()) {
      found.push_back({&place, std::move(shown), isTicked(place.showBox) && isTicked(place.box)});
    }
  }
  return found;
}

}  // namespace quintara::chartbook
