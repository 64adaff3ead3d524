// In which frame each control stands: the tree of widgets and that of the accessible objects are the
// inventory's.
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include <QAccessible>
#include <QSplitter>
#include <QWidget>

#include "tests/support/qt_window.h"
#include "ui/inventory.h"

namespace estructura {
namespace {

class widget_tree : public support::real_window<> {
 protected:
  /// The name of the frame of the inventory that an object is; empty for any other.
  static std::string frame_that_is(const QObject* object) {
    if (object == nullptr) return {};
    const std::string name = object->objectName().toStdString();
    const auto found = find_control(name);
    return found && declared(found->which).is == kind::frame ? name : std::string();
  }

  /// The name of the frame that a control stands in; empty on the form itself.
  static std::string frame_of(const control& one) {
    const id frame = declared(one.which()).frame;
    return frame == id::none ? std::string() : std::string(declared(frame).name);
  }

  /// Notes below an accessible object which named widgets are found, and within which frame.
  static void walk(QAccessibleInterface& object, const std::string& frame,
                   std::multimap<std::string, std::string>& found) {
    for (int i = 0; i < object.childCount(); ++i) {
      QAccessibleInterface* const child = object.child(i);
      // The lines of a list are no widgets.
      if (child == nullptr || qobject_cast<QWidget*>(child->object()) == nullptr) continue;
      found.emplace(child->object()->objectName().toStdString(), frame);
      const std::string own = frame_that_is(child->object());
      walk(*child, own.empty() ? frame : own, found);
    }
  }
};

TEST_F(widget_tree, a_widget_stands_in_the_frame_of_its_control) {
  for (const control& one : record.look_all()) {
    std::string frame;
    for (const QWidget* around = at(one.which(), one.index()).parentWidget();
         around != nullptr && frame.empty(); around = around->parentWidget())
      frame = frame_that_is(around);
    EXPECT_EQ(frame, frame_of(one)) << one.name();
  }
}

TEST_F(widget_tree, an_accessible_object_is_found_once_and_in_the_frame_of_its_control) {
  std::multimap<std::string, std::string> found;
  walk(*QAccessible::queryAccessibleInterface(&window), {}, found);
  for (const control& one : record.look_all()) {
    ASSERT_EQ(found.count(one.name()), 1U) << one.name();
    EXPECT_EQ(found.find(one.name())->second, frame_of(one)) << one.name();
  }
}

TEST_F(widget_tree, an_accessible_object_says_who_its_parent_is) {
  for (const control& one : record.look_all()) {
    const QAccessibleInterface* object = QAccessible::queryAccessibleInterface(&at(one.which(), one.index()));
    std::string frame;
    while (frame.empty() && (object = object->parent()) != nullptr) frame = frame_that_is(object->object());
    EXPECT_EQ(frame, frame_of(one)) << one.name();
  }
}

/// What stands on the form among the controls of a frame is no child of the frame that moves.
TEST_F(widget_tree, what_stands_over_a_frame_follows_it_pixel_by_pixel) {
  const auto place = [this](id which) { return at(which).mapTo(&window, QPoint()); };
  const auto distances = [&] {
    return std::vector<QPoint>{
        place(id::MP) - place(id::mapa),        place(id::Frame1) - place(id::cargar),
        place(id::Label10) - place(id::cargar), place(id::Label5) - place(id::source),
        place(id::TRISB) - place(id::RE),       place(id::Label4) - place(id::PIL),
        place(id::Label13) - place(id::nomre),  place(id::Label12) - place(id::dirdat)};
  };
  const QSize size = window.least().expandedTo({1366, 720});
  window.resize(size);
  std::vector<QPoint> wanted = distances();
  for (int wider = 1; wider <= 20; ++wider) {
    window.resize(size + QSize(wider, 0));
    EXPECT_EQ(distances(), wanted) << wider;
  }
  auto& panes = *window.findChild<QSplitter*>();
  for (const int moved : {1, 2, 40}) {
    panes.setSizes({panes.sizes().front() - moved, panes.sizes().back() + moved});
    EXPECT_EQ(distances(), wanted) << moved;
  }
}

/// A reader that follows the mouse asks each object which of its children is there.
TEST_F(widget_tree, what_is_pointed_at_is_found_though_it_stands_over_a_frame) {
  window.resize(window.least().expandedTo({1366, 720}));
  int looked_at = 0;
  for (const control& one : record.look_all()) {
    QWidget& widget = at(one.which(), one.index());
    if (one.is() == kind::frame || !widget.isVisible()) continue;
    ++looked_at;
    const QPoint place = widget.mapToGlobal(widget.rect().center());
    QAccessibleInterface* object = QAccessible::queryAccessibleInterface(&window);
    while (object != nullptr && object->object() != &widget) object = object->childAt(place.x(), place.y());
    EXPECT_NE(object, nullptr) << one.name();
  }
  EXPECT_GT(looked_at, 100);
}

}  // namespace
}  // namespace estructura
