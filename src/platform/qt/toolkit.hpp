#pragma once

#include "platform/platform.hpp"

namespace quintara {

class Dispatcher;

/// Makes windows. They may outlive the application object, but not be used then.
class QtToolkit final : public Toolkit {
 public:
  explicit QtToolkit(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}
  std::unique_ptr<Window> newWindow(const WindowDesign& design) override;

 private:
  Dispatcher& dispatcher_;
};

}  // namespace quintara
