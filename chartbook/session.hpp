#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/module1.hpp"
#include "chartbook/desk_client.hpp"
#include "chartbook/level_places.hpp"
#include "chartbook/order.hpp"
#include "platform/headless/picture_box.hpp"
#include "platform/headless/platform.hpp"

namespace quintara::chartbook {

/// A chart that could not be made; says why in one line.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The size of a chart area in logical pixels, and the device pixels in one of them.
struct PictureSize {
  int width = 960;
  int height = 600;
  double scale = 1;
};

/// One level as the window shows it.
struct Level {
  const LevelPlace* place;
  std::string caption;  ///< its value, by the user's separator
  bool isDrawn;         ///< its boxes are ticked
};

/// A person at a fresh main window: makes the choices of one order, presses the buttons, and reads
/// what the window then shows. Whatever was done for another order is gone.
class Session {
 public:
  /// Everything handed over must outlive the session.
  Session(GlyphSource& glyphs, DeskClient& prices, Date today, PictureSize size);

  /// Chooses, draws the chart, calculates, ticks boxes, and gives the chart its size.
  /// Throws BadOrder for what the window does not offer, Failure for a message of the window or a
  /// chart that stays empty.
  void draw(const Order& order);
  /// Types the points and presses Calculate. Throws as above.
  void calculate(const Order& order);

  /// The levels that there are, in the layout's order.
  [[nodiscard]] std::vector<Level> levels() const;
  [[nodiscard]] std::string caption(std::string_view label) const;
  /// The entry of a list box that is chosen.
  [[nodiscard]] const std::string& chosen(std::string_view comboBox) const;
  [[nodiscard]] const Window& window() const { return *platform_.window; }
  [[nodiscard]] HeadlessPictureBox& chart() const;

 private:
  template <class Kind>
  [[nodiscard]] Kind& control(std::string_view name) const {
    return window().control<Kind>(name);
  }
  void choose(const Order& order);
  void tickBoxes(const Order& order);
  void tick(const std::string& box);
  /// Throws Failure if the window has shown a message or drawn nothing.
  void expectChart();

  DeskClient& prices_;
  const PictureSize size_;
  HeadlessPlatform platform_;
  std::unique_ptr<frmQuintara> form_;
};

}  // namespace quintara::chartbook
