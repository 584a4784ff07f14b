#pragma once

#include <memory>
#include <span>
#include <string>

#include "platform/raster.hpp"
#include "platform/window.hpp"

namespace quintara {

/// A window that is on no screen. It has no border.
class HeadlessWindow : public Window {
 public:
  /// The glyphs, rendered for the ratio, must outlive the window.
  HeadlessWindow(WindowDesign design, GlyphSource& glyphs, double devicePixelRatio);

  /// Gives the client area another size, in twips, as a user does at the window's border.
  void resize(float scaleWidth, float scaleHeight);

  void setTabOrder(std::span<const std::string> /*names*/) override {}
  void Show() override {}
  void Move(float /*left*/, float /*top*/) override {}
  [[nodiscard]] std::string Caption() const override { return design_.caption; }
  [[nodiscard]] float Width() const override { return design_.scaleWidth; }
  [[nodiscard]] float Height() const override { return design_.scaleHeight; }
  [[nodiscard]] float ScaleWidth() const override { return design_.scaleWidth; }
  [[nodiscard]] float ScaleHeight() const override { return design_.scaleHeight; }

 protected:
  std::unique_ptr<Control> create(const ControlDesign& design) override;

 private:
  WindowDesign design_;
  GlyphSource& glyphs_;
  const double ratio_;
};

}  // namespace quintara
