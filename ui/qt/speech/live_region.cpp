#include "ui/qt/speech/live_region.h"

#include <QAccessible>

#include "ui/qt/text/text_conversion.h"

namespace estructura {

live_region::live_region(QWidget* parent) : QWidget(parent), notice_(new live_notice(this)) {
  setObjectName(QStringLiteral("novedades"));
  setAccessibleName(QStringLiteral("Novedades"));
  setGeometry(0, 0, 0, 0);
  notice_->setGeometry(0, 0, 0, 0);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void live_region::say(const std::string& sentence) {
  if (sentence.empty()) return;
  notice_->setAccessibleName(to_qt(sentence));
  // The same sentence may come twice, as another event of the same kind.
  QAccessibleEvent shown(notice_, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&shown);
}

}  // namespace estructura
