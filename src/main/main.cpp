#include "app/module1.hpp"
#include "platform/qt/application.hpp"

int main(int argc, char** argv) {
  quintara::QtApplication application(argc, argv);
  const auto window =
      quintara::Main(application.platform(), {QUINTARA_HISTORY_HOST, QUINTARA_QUOTES_HOST});
  return application.run();
}
