#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "first_paint.hpp"

namespace {

template <class Kind>
void place(QWidget& window, int count) {
  for (int i = 0; i < count; ++i) {
    auto* control = new Kind(&window);
    control->setGeometry(20 * (i % 30), 20 * (i / 30), 60, 20);
  }
}

}  // namespace

// A plain window of the same size with as many controls of the same kinds, none of them set up.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  QWidget window;
  window.resize(721, 559);
  place<QLabel>(window, 62);
  place<QLineEdit>(window, 10);
  place<QComboBox>(window, 3);
  place<QCheckBox>(window, 12);
  place<QPushButton>(window, 10);
  place<QGroupBox>(window, 6);
  place<QWidget>(window, 1);
  window.show();
  quintara::bench::tellFirstPaint();
  return QApplication::exec();
}
