#pragma once

class QString;
class QWidget;

namespace quintara {

/// Has windows, picture boxes and combo boxes announced as what they are; needs no undoing.
void installAccessibility();

/// Has a screen reader say a text: a picture box what its pointer stands on, as long as it has the
/// focus and until an empty text takes that away; a window what happened in it.
void say(QWidget& by, const QString& text);

}  // namespace quintara
