#include "platform/window.hpp"

#include <stdexcept>

namespace quintara {

Control& Window::add(const ControlDesign& design) {
  std::string name(design.name);
  if (controls_.contains(name)) {
    throw std::invalid_argument("two controls are called " + name);
  }
  return *controls_.emplace(std::move(name), create(design)).first->second;
}

}  // namespace quintara
