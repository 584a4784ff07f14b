#include "chartbook/captions.hpp"

#include <algorithm>
#include <cmath>

#include "app/layout.hpp"
#include "chart/grid.hpp"
#include "platform/twips.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara::chartbook {
namespace {

constexpr Colour kBlack{0x00000000};
constexpr int kHeadingHeight = 225;  // twips; a row of the readout
constexpr int kReadoutRows = 6;      // with the heading
constexpr int kGap = 8;              // logical pixels between two labels side by side

const std::vector<ControlDesign>& layout() {
  static const std::vector<ControlDesign> kControls = mainWindowControls();
  return kControls;
}

/// Where labels may go, in pixels of the chart area; user coordinates are asked of the chart's
/// scale.
class Labels {
 public:
  Labels(HeadlessPictureBox& chart, GlyphSource& glyphs)
      : chart_(chart),
        glyphs_(glyphs),
        ratio_(chart.raster().deviceWidth() / std::abs(double{chart.ScaleWidth()})),
        lineHeight_(glyphs.lineHeight() / ratio_),
        topPrice_(chart.raster().toUser(0, 0).y),
        pricePerPixel_(chart.ScaleHeight() / (chart.raster().deviceHeight() / ratio_)),
        width_(std::abs(double{chart.ScaleWidth()})) {
    // The readout comes on top.
    constexpr double kReadoutWidth = 100;
    const double right = kReadoutWidth - (width_ - lineLength());
    for (int row = 0; row < kReadoutRows; ++row) {
      taken_.push_back({static_cast<double>(row) * kHeadingHeight / kTwipsPerPixel, right});
    }
  }

  void add(const std::string& text, float price) {
    const double line = (double{price} - topPrice_) / pricePerPixel_;
    const double top = line - lineHeight_;
    const double width = textWidth(text);
    const double left = freeColumn(top, width);
    const double right = lineLength() - left;
    const auto x = [&](double across) { return static_cast<float>(right - across); };
    const auto y = [&](double down) {
      return static_cast<float>(topPrice_ + down * pricePerPixel_);
    };
    chart_.Line(x(0), y(top), x(width), y(top + lineHeight_ - 1), kBlack, BoxMode::Filled);
    chart_.setCurrentX(x(1));
    chart_.setCurrentY(y(top));
    chart_.Print(text);
  }

 private:
  /// Where lines end, in pixels from the right edge.
  [[nodiscard]] double lineLength() const { return std::min<double>(kLinesEndX, width_); }

  struct Taken {
    double top, right;
  };

  [[nodiscard]] double textWidth(const std::string& text) const {
    int device = 0;
    for (const char c : text) {  // names and numbers are ASCII
      device += glyphs_.glyph(static_cast<unsigned char>(c)).advance;
    }
    return device / ratio_ + 2;
  }

  /// The first place in the row that no other label has.
  double freeColumn(double top, double width) {
    double left = 0;
    for (const Taken& label : taken_) {
      if (std::abs(label.top - top) < lineHeight_) {
        left = std::max(left, label.right + kGap);
      }
    }
    taken_.push_back({top, left + width});
    return left;
  }

  HeadlessPictureBox& chart_;
  GlyphSource& glyphs_;
  const double ratio_;
  const double lineHeight_;
  const double topPrice_;
  const double pricePerPixel_;  ///< below 0: prices grow upwards
  const double width_;
  std::vector<Taken> taken_;
};

}  // namespace

void labelLevels(const Session& session, GlyphSource& glyphs) {
  Labels labels(session.chart(), glyphs);
  for (const Level& level : session.levels()) {
    if (level.isDrawn) {
      labels.add(level.place->set + " " + level.place->name + " " + level.caption,
                 toSingle(readLocaleNumber(level.caption)));
    }
  }
}

void nameChart(const Session& session, const std::string& heading) {
  HeadlessPictureBox& chart = session.chart();
  chart.setScaleModePixels();
  chart.setCurrentX(0);
  chart.setCurrentY(0);
  chart.Print(heading);
  for (const ControlDesign& design : layout()) {
    if (design.look.readout) {
      chart.setCurrentX(static_cast<float>(toPixels(design.left)));
      chart.setCurrentY(static_cast<float>(toPixels(design.top + kHeadingHeight)));
      chart.Print(session.caption(design.name));
    }
  }
}

}  // namespace quintara::chartbook
