#include "platform/headless/picture_box.hpp"

#include "platform/twips.hpp"
#include "values/errors.hpp"

namespace quintara {

HeadlessPictureBox::HeadlessPictureBox(const ControlDesign& design, GlyphSource& glyphs,
                                       double devicePixelRatio)
    : ratio_(devicePixelRatio),
      left_(design.left),
      top_(design.top),
      raster_(glyphs, design.backColor, design.foreColor) {
  fitRaster(design.width, design.height);
}

bool HeadlessPictureBox::fitRaster(float width, float height) {
  const int newWidth = toPixels(width);
  const int newHeight = toPixels(height);
  if (newWidth == width_ && newHeight == height_) {
    return false;
  }
  width_ = newWidth;
  height_ = newHeight;
  raster_.resize(width_, height_, ratio_);
  return true;
}

void HeadlessPictureBox::Move(float left, float top, float width, float height) {
  if (!(width >= 0 && height >= 0)) {
    throw RuntimeError(ErrorKind::InvalidSize);
  }
  left_ = left;
  top_ = top;
  if (fitRaster(width, height) && Resize) {
    Resize();
  }
}

}  // namespace quintara
