#include "chartbook/level_places.hpp"

#include <algorithm>

#include "app/layout.hpp"
#include "chartbook/order.hpp"

namespace quintara::chartbook {
namespace {

std::vector<LevelPlace> readLayout() {
  const std::vector<ControlDesign> controls = mainWindowControls();
  std::vector<LevelPlace> places;
  for (const ControlDesign& control : controls) {
    if (control.kind != ControlKind::Label || !control.look.bordered) {
      continue;
    }
    const std::vector<std::string> words = pieces(control.meaning);
    const auto box = std::find_if(controls.begin(), controls.end(), [&](const auto& other) {
      return other.kind == ControlKind::CheckBox && other.meaning == "Show " + control.meaning;
    });
    places.push_back({words.at(0), words.at(1), words.at(2), control.name, "chkShow" + words.at(0),
                      box == controls.end() ? "" : box->name});
  }
  return places;
}

}  // namespace

const std::vector<LevelPlace>& levelPlaces() {
  static const std::vector<LevelPlace> kPlaces = readLayout();
  return kPlaces;
}

}  // namespace quintara::chartbook
