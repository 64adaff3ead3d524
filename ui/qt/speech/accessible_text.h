// Texts for screen readers, without two faults of Qt 6.4's own:
//
// - Asked for the word at the end of a text, QAccessibleTextInterface never answers: it waits for a boundary
//   beyond the end, and the whole program stands still (a reader asks at each End key).
// - The accessible object of a QLineEdit says that the attributes of a character hold for none, so that a
//   reader which speaks by runs of attributes leaves the last one out: "400" for 4000.
//
// With a Qt that answers both questions right this file can go: tests/accessibility asks them.
#pragma once

#include <QAccessible>

class QLineEdit;

namespace estructura {

class terminating_text : public QAccessibleTextInterface {
 public:
  QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                       int* end) const override;
};

/// For any box of one line; Qt takes it over.
[[nodiscard]] QAccessibleInterface* make_accessible_line(QLineEdit* line);

}  // namespace estructura
