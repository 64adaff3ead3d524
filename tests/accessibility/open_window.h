// The real window, open, for tests of what a screen reader and the keyboard find in it.
#pragma once

#include <gtest/gtest.h>
#include <string_view>

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include "core/devices.h"
#include "tests/support/qt_window.h"

namespace estructura {

class accessible_window : public support::real_window<> {
 protected:
  void device(std::string_view name) {
    record.pick(id::PIC, name);
    window.refresh();
  }

  QAccessibleInterface& voice(id which, int index = 0) {
    return *QAccessible::queryAccessibleInterface(&at(which, index));
  }
  std::string name(id which, int index = 0) {
    return voice(which, index).text(QAccessible::Name).toStdString();
  }
  std::string description(id which, int index = 0) {
    return voice(which, index).text(QAccessible::Description).toStdString();
  }
  /// What a label shows beside its name.
  std::string value(id which) {
    QAccessibleTextInterface* const text = voice(which).textInterface();
    return text == nullptr ? "(ninguno)" : text->text(0, text->characterCount()).toStdString();
  }
  std::string row(id which, int index, int place) {
    QAccessibleInterface* const line = voice(which, index).child(place);
    return line == nullptr ? "(ninguna)" : line->text(QAccessible::Name).toStdString();
  }
};

inline bool takes_focus(const control& one) {
  return one.is() != kind::label && one.is() != kind::frame && one.is() != kind::picture;
}

}  // namespace estructura
