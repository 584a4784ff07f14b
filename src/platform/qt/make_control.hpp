#pragma once

#include <memory>

#include "platform/window.hpp"

class QFont;
class QString;
class QWidget;

namespace quintara {

class Dispatcher;

/// Each makes the widget, as a child of `parent` that owns it, and the control that speaks for it.
/// The control must not be used once the widget is gone.
std::unique_ptr<Control> makeLabel(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeTextBox(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeComboBox(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeCheckBox(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makePushCheckBox(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeButton(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeFrame(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makeImage(const ControlDesign&, QWidget& parent, Dispatcher&);
std::unique_ptr<Control> makePictureBox(const ControlDesign&, QWidget& parent, Dispatcher&);

/// "MS Sans Serif" as this program shows it, whatever font the desktop prefers.
QFont formFont(float points, bool bold);
/// What a screen reader calls the control: its meaning, or its caption without a colon.
QString spokenName(const ControlDesign& design);
/// Text for a button or frame, where '&' would otherwise mark a key.
QString withoutMnemonics(std::string_view caption);
/// What every widget needs: name, place, font, accessible name, tooltip, and that no mouse event
/// falls through to its container.
void prepare(QWidget& widget, const ControlDesign& design);

}  // namespace quintara
