#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/picture_box_widget.hpp"
#include "platform/qt/units.hpp"
#include "values/errors.hpp"

namespace quintara {

namespace {

class QtPictureBox final : public PictureBox {
 public:
  explicit QtPictureBox(PictureBoxWidget& widget) : widget_(widget) { widget.setControl(*this); }

  [[nodiscard]] float Left() const override { return toTwips(widget_.x()); }
  [[nodiscard]] float Top() const override { return toTwips(widget_.y()); }
  void Move(float left, float top, float width, float height) override {
    if (!(width >= 0 && height >= 0)) {
      throw RuntimeError(ErrorKind::InvalidSize);
    }
    const QRect place(toPixels(left, top), toPixelSize(width, height));
    if (widget_.place(place) && Resize) {
      Resize();
    }
  }
  [[nodiscard]] std::int32_t Point(float x, float y) const override {
    return widget_.raster().Point(x, y);
  }
  void setDescription(std::string_view text) override {
    widget_.setAccessibleDescription(toQt(text));
  }

  void Cls() override {
    widget_.draw([](Raster& raster) { raster.Cls(); });
  }
  void setScaleModePixels() override {
    widget_.draw([](Raster& raster) { raster.setScaleModePixels(); });
  }
  void Scale(float x1, float y1, float x2, float y2) override {
    widget_.draw([&](Raster& raster) { raster.Scale(x1, y1, x2, y2); });
  }
  [[nodiscard]] float ScaleWidth() const override { return widget_.raster().ScaleWidth(); }
  [[nodiscard]] float ScaleHeight() const override { return widget_.raster().ScaleHeight(); }
  void Line(float x1, float y1, float x2, float y2, Colour colour, BoxMode box) override {
    widget_.draw([&](Raster& raster) { raster.Line(x1, y1, x2, y2, colour, box); });
  }
  void setDrawStyle(DrawStyle style) override {
    widget_.draw([=](Raster& raster) { raster.setDrawStyle(style); });
  }
  void setCurrentX(float x) override {
    widget_.draw([=](Raster& raster) { raster.setCurrentX(x); });
  }
  void setCurrentY(float y) override {
    widget_.draw([=](Raster& raster) { raster.setCurrentY(y); });
  }
  void Print(std::string_view text) override {
    widget_.draw([=](Raster& raster) { raster.Print(text); });
  }

 private:
  PictureBoxWidget& widget_;
};

}  // namespace

std::unique_ptr<Control> makePictureBox(const ControlDesign& design, QWidget& parent,
                                        Dispatcher& dispatcher) {
  return std::make_unique<QtPictureBox>(*new PictureBoxWidget(design, parent, dispatcher));
}

}  // namespace quintara
