#pragma once

#include "platform/platform.hpp"

namespace quintara {

class Dispatcher;

/// Message boxes over the main window. Once that is being closed, none is shown any more.
class QtMessageBox final : public MessageBox {
 public:
  explicit QtMessageBox(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override;

 private:
  Dispatcher& dispatcher_;
};

}  // namespace quintara
