#include "chartbook/order.hpp"

#include <algorithm>

#include "service/text/text.hpp"

namespace quintara::chartbook {

using quotes::escaped;

std::vector<std::string> pieces(std::string_view text) {
  constexpr std::string_view kBetween = ",; \t";
  std::vector<std::string> found;
  for (;;) {
    text.remove_prefix(std::min(text.find_first_not_of(kBetween), text.size()));
    if (text.empty()) {
      return found;
    }
    found.emplace_back(text.substr(0, text.find_first_of(kBetween)));
    text.remove_prefix(found.back().size());
  }
}

void setTicker(Order& order, std::string_view text) {
  order.fields.at(kTicker) = quotes::upperCase(text);
}

void setPoints(Order& order, std::string_view text) {
  for (const std::string& piece : pieces(text)) {
    const std::string name = piece.substr(0, piece.find('='));
    const auto* const points = kFieldNames.begin() + kFirstPoint;
    const auto* const named =
        std::find(points, kFieldNames.begin() + kShow, quotes::upperCase(name));
    if (named == kFieldNames.begin() + kShow || name.size() == piece.size()) {
      throw BadOrder(
          "a point is written A1=82.59, its name one of A1 to A4, B1, B2, C1 and C2, not " +
          escaped(piece));
    }
    order.fields.at(static_cast<std::size_t>(named - kFieldNames.begin())) =
        piece.substr(name.size() + 1);
  }
}

std::vector<Target> targetsOf(std::string_view text) {
  std::vector<Target> targets;
  std::string set;
  for (std::string piece : pieces(text)) {
    const auto equals = piece.find('=');
    if (equals != piece.npos) {
      set = piece.substr(0, equals);
      piece.erase(0, equals + 1);
    }
    if (set.empty() || piece.empty()) {
      throw BadOrder("targets are written A1=1:1,1.618, not " + escaped(text));
    }
    targets.push_back({set, piece});
  }
  return targets;
}

}  // namespace quintara::chartbook
