#include "ui/qt/bindings/binding.h"

#include "ui/qt/text/text_conversion.h"

namespace estructura {

void binding::copy(const control& from) {
  QWidget& target = *widget();
  seen_ = true;
  changes_ = from.changes();
  show_record(from);
  if (const QString tip = to_qt(from.tip()); target.toolTip() != tip) target.setToolTip(tip);
  // Until told, a widget has no flag of its own and would be shown with its window.
  if (target.isHidden() == from.visible() || !target.testAttribute(Qt::WA_WState_ExplicitShowHide)) {
    target.setVisible(from.visible());
    for (QWidget* companion : companions_) companion->setVisible(from.visible());
  }
  // Its own flag: a frame's would be mixed in by isEnabled().
  if (target.testAttribute(Qt::WA_ForceDisabled) == from.enabled()) target.setEnabled(from.enabled());
}

}  // namespace estructura
