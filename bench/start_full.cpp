#include "app/module1.hpp"
#include "first_paint.hpp"
#include "platform/qt/application.hpp"

// The program as it is, up to its first painted window.
int main(int argc, char** argv) {
  quintara::QtApplication application(argc, argv);
  const auto window = quintara::Main(application.platform(), {"127.0.0.1:1", "127.0.0.1:1"});
  quintara::bench::tellFirstPaint();
  return application.run();
}
