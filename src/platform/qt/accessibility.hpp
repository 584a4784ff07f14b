#pragma once

namespace quintara {

/// Has windows, picture boxes and combo boxes announced as what they are; needs no undoing.
void installAccessibility();

}  // namespace quintara
