#pragma once

#include <string>

#include "chartbook/session.hpp"

namespace quintara::chartbook {

/// Writes name and value of each level that is drawn above the left end of its line, or further
/// right where another text is. For a chart just drawn: in the chart's own coordinates.
void labelLevels(const Session& session, GlyphSource& glyphs);

/// Writes a heading, and below it the newest bar, where the window has its readout. The picture is
/// finished then: its coordinates are pixels.
void nameChart(const Session& session, const std::string& heading);

}  // namespace quintara::chartbook
