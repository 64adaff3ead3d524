// The source editor for screen readers. Qt's own object does the same, but says of a text's title only where
// the two have the same parent; here the text belongs to a frame and its title to the form.
#pragma once

class QAccessibleInterface;
class QPlainTextEdit;

namespace estructura {

/// Qt takes it over.
[[nodiscard]] QAccessibleInterface* make_accessible_source(QPlainTextEdit* edit);

}  // namespace estructura
