// Spanish for what Qt itself says: buttons of boxes, file dialog, context menus, names of keys, scroll bars.
// The program speaks Spanish on any desktop and whatever is installed beside it.
//
//   speak_spanish(app);
//   QCoreApplication::translate("QWidgetTextControl", "&Undo")   -> "&Deshacer"
//
// The table holds what the window can show; tests/unit/qt/text looks for what it lacks. Behind it stands Qt's
// own catalogue where there is one, for what nobody foresaw.
#pragma once

class QCoreApplication;

namespace estructura {

void speak_spanish(QCoreApplication& app);

}  // namespace estructura
