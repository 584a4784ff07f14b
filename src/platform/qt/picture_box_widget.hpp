#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "platform/controls.hpp"
#include "platform/qt/glyphs.hpp"
#include "platform/qt/keyboard_pointer.hpp"
#include "platform/raster.hpp"
#include "platform/window.hpp"

class QPainter;

namespace quintara {

class Dispatcher;

/// Shows a raster and hands mouse events on in its user coordinates, those of the keyboard's
/// pointer among them.
class PictureBoxWidget final : public QWidget {
 public:
  PictureBoxWidget(const ControlDesign& design, QWidget& parent, Dispatcher& dispatcher);

  /// Whose handlers are raised; outlives the widget's events.
  void setControl(const PictureBox& control) { control_ = &control; }
  [[nodiscard]] const Raster& raster() const { return raster_; }
  /// Draws on the raster and has the screen follow.
  template <class Draw>
  void draw(Draw&& drawing) {
    drawing(raster_);
    showChanges();
  }
  /// Moves the widget and fits the raster; true when the size changed. Raises nothing.
  bool place(const QRect& place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void fitRaster();
  void showChanges();
  void adoptPixelRatio();
  [[nodiscard]] MouseEvent inUserCoordinates(const QMouseEvent& event) const;
  void hoverOverBoxUnder(const QMouseEvent& release);

  void stepTo(KeyboardPointer::Step step);
  void pick();
  void endPointer();
  void showPointer();
  void drawPointer(QPainter& painter) const;
  [[nodiscard]] QRect pointerPlace() const;
  [[nodiscard]] QString readOut() const;

  Dispatcher& dispatcher_;
  const PictureBox* control_ = nullptr;
  QtGlyphs glyphs_;
  Raster raster_;
  double pixelRatio_ = 0;  ///< the raster's
  bool repaintIsDue_ = false;
  KeyboardPointer pointer_;
  QRect pointerShown_;   ///< where it was drawn last
  bool picked_ = false;  ///< since the pointer is in use
};

}  // namespace quintara
