#pragma once

class QStyle;

namespace quintara {

/// The look of a dense classic form; the application takes it over.
QStyle* newStyle();

}  // namespace quintara
