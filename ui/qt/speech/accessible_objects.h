// What Qt's own accessible objects do not tell of some kinds of widget: that a label which shows a value has
// another name than its text, that the combo has one too, what the map shows, and which of two widgets that
// overlap lies above (widgets/form_area.h).
//
//   install_accessible_objects();       // once there is an application, before the widgets
//
// The text of a label or of the combo is offered beside its name, as that of an entry is. The actions of a
// label (QWidget::actions) are offered too; they need neither the mouse nor the focus.
//
// Boxes of one line (accessible_text.h), the source (accessible_source.h), the place where the window speaks
// by itself (live_region.h) and what readers are not told (accessible_events.h) are put in with it.
#pragma once

namespace estructura {

void install_accessible_objects();

}  // namespace estructura
