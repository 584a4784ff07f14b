#pragma once

#include <memory>
#include <string_view>

#include "platform/platform.hpp"

namespace quintara {

/// The progress window of Draw Chart. It exists from its first use in a run until Unload.
class frmGettingData {
 public:
  frmGettingData(Toolkit& toolkit, Screen& screen) : toolkit_(toolkit), screen_(screen) {}

  /// Sets the text of the current step; creates and centres the window on first use.
  void setInfo(std::string_view text);
  /// Modeless, with no owner. Follows a setInfo.
  void Show();
  /// Destroys the window, if there is one.
  void Unload() { window_.reset(); }

 private:
  void Form_Load();

  Toolkit& toolkit_;
  Screen& screen_;
  std::unique_ptr<Window> window_;
};

}  // namespace quintara
