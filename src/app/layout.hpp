#pragma once

#include <string>
#include <vector>

#include "platform/window.hpp"

namespace quintara {

/// The main window as designed: 721 x 559 logical pixels.
WindowDesign mainWindowDesign();

/// Its controls, containers before what they contain. Positions in twips.
std::vector<ControlDesign> mainWindowControls();

/// The order in which the focus moves through them.
std::vector<std::string> mainWindowTabOrder();

}  // namespace quintara
