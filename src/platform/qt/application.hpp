#pragma once

#include <memory>

#include "platform/platform.hpp"

namespace quintara {

class Dispatcher;

/// The platform on this desktop: the application object, the event loop and all services.
class QtApplication {
 public:
  /// Takes the options it knows out of the arguments; they must outlive this object.
  QtApplication(int& argc, char** argv);
  QtApplication(const QtApplication&) = delete;
  QtApplication& operator=(const QtApplication&) = delete;
  ~QtApplication();

  Platform& platform();
  /// Handles events until the main window is closed or an error ends the program; returns the
  /// program's exit code. Throws nothing.
  int run();

  /// For services of one's own beside these: what tells the program's handlers apart.
  Dispatcher& dispatcher();
  /// Has errors that no handler caught shown by another message box, which must outlive this.
  void reportErrorsBy(MessageBox& messageBox);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace quintara
