#include "ui/qt/speech/accessible_objects.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "ui/accessible_names.h"
#include "ui/inventory.h"
#include "ui/qt/speech/accessible_events.h"
#include "ui/qt/speech/accessible_source.h"
#include "ui/qt/speech/accessible_text.h"
#include "ui/qt/speech/live_region.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/form_area.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {

namespace {

/// A widget with a text that can be read character by character, and neither changed nor selected.
class accessible_with_text : public QAccessibleWidget, public terminating_text {
 public:
  using QAccessibleWidget::QAccessibleWidget;
  [[nodiscard]] virtual QString content() const = 0;

  void* interface_cast(QAccessible::InterfaceType type) override {
    // Where the name is the text, to offer it once more would have it said twice.
    if (type == QAccessible::TextInterface && content() != text(QAccessible::Name))
      return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  using QAccessibleWidget::text;
  QString text(int start, int end) const override { return content().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(content().size()); }
  QRect characterRect(int) const override { return rect(); }
  int offsetAtPoint(const QPoint& point) const override { return rect().contains(point) ? 0 : -1; }
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }
  int cursorPosition() const override { return 0; }
  void setCursorPosition(int) override {}
  void selection(int, int* start, int* end) const override { *start = *end = 0; }
  int selectionCount() const override { return 0; }
  void addSelection(int, int) override {}
  void removeSelection(int) override {}
  void setSelection(int, int, int) override {}
  void scrollToSubstring(int, int) override {}
};

class accessible_label final : public accessible_with_text {
 public:
  explicit accessible_label(QLabel* label) : accessible_with_text(label, QAccessible::StaticText) {}

  QString content() const override { return static_cast<const QLabel*>(widget())->text(); }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    return state;
  }

  QList<std::pair<QAccessibleInterface*, QAccessible::Relation>> relations(
      QAccessible::Relation match) const override {
    auto found = QAccessibleWidget::relations(match);
    QWidget* const titled = static_cast<const QLabel*>(widget())->buddy();
    if (match.testFlag(QAccessible::Labelled) && titled != nullptr)
      found.emplace_back(QAccessible::queryAccessibleInterface(titled), QAccessible::Labelled);
    if (!match.testFlag(QAccessible::Controller) || !repeats_a_register()) return found;
    auto* const list = widget()->window()->findChild<QWidget*>(QStringLiteral("RE"));
    if (list != nullptr)
      found.emplace_back(QAccessible::queryAccessibleInterface(list), QAccessible::Controller);
    return found;
  }

  QStringList actionNames() const override {
    QStringList names;
    for (const QAction* action : widget()->actions()) names << action->text();
    return names;
  }
  QString localizedActionDescription(const QString& name) const override { return name; }
  QStringList keyBindingsForAction(const QString& name) const override {
    const QAction* const action = find(name);
    return action == nullptr ? QStringList()
                             : QStringList(action->shortcut().toString(QKeySequence::PortableText));
  }
  void doAction(const QString& name) override {
    if (QAction* const action = find(name)) action->trigger();
  }

 private:
  /// These stand beside the list of registers. A label without a relation to anything is read out whenever
  /// the focus enters its frame, and it is the name that is read, not the value.
  [[nodiscard]] bool repeats_a_register() const {
    const auto found = find_control(widget()->objectName().toStdString());
    if (!found) return false;
    return found->which == id::TRISA || found->which == id::TRISB || found->which == id::TRISC;
  }

  [[nodiscard]] QAction* find(const QString& name) const {
    const QList<QAction*> actions = widget()->actions();
    const auto found = std::find_if(actions.begin(), actions.end(),
                                    [&](const QAction* action) { return action->text() == name; });
    return found == actions.end() ? nullptr : *found;
  }
};

/// On Linux Qt gives a combo its current entry for a name.
class accessible_combo final : public accessible_with_text {
 public:
  explicit accessible_combo(QComboBox* combo) : accessible_with_text(combo, QAccessible::ComboBox) {}

  QString content() const override { return combo().currentText(); }

  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? content() : QAccessibleWidget::text(what);
  }
  using accessible_with_text::text;

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = combo().view()->isVisible();
    return state;
  }

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(combo().view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child->object() == combo().view() ? 0 : -1;
  }

  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  QString localizedActionDescription(const QString&) const override {
    return QStringLiteral("Abre o cierra la lista");
  }
  void doAction(const QString& name) override {
    if (name != showMenuAction() && name != pressAction()) return;
    if (combo().view()->isVisible())
      combo().hidePopup();
    else
      combo().showPopup();
  }

 private:
  [[nodiscard]] QComboBox& combo() const { return *static_cast<QComboBox*>(widget()); }
};

class accessible_memory_map final : public QAccessibleWidget {
 public:
  explicit accessible_memory_map(memory_map* map) : QAccessibleWidget(map, QAccessible::Graphic) {}

  QString text(QAccessible::Text what) const override {
    if (what != QAccessible::Description) return QAccessibleWidget::text(what);
    const auto& map = *static_cast<const memory_map*>(widget());
    map_view shown;
    shown.scale = map.scale();
    shown.marker = map.marker();
    for (int a = 0; a < program_words; ++a) shown.rows[a] = map.row(a);
    return to_qt(accessible_map(shown)) + QLatin1Char(' ') + QAccessibleWidget::text(what);
  }
};

/// Of children that overlap the one above is found, as with the mouse; Qt would find the one below.
class accessible_form_area final : public QAccessibleWidget {
 public:
  explicit accessible_form_area(form_area* area) : QAccessibleWidget(area) {}

  QAccessibleInterface* childAt(int x, int y) const override {
    for (int i = childCount() - 1; i >= 0; --i) {
      QAccessibleInterface* const found = child(i);
      if (found != nullptr && !found->state().invisible && found->rect().contains(x, y)) return found;
    }
    return nullptr;
  }
};

/// Asked once for each class that an object is of, its own first.
QAccessibleInterface* accessible_factory(const QString&, QObject* object) {
  if (object == nullptr) return nullptr;
  if (auto* const area = dynamic_cast<form_area*>(object)) return new accessible_form_area(area);
  if (auto* const source = dynamic_cast<source_editor*>(object)) return make_accessible_source(source);
  if (auto* const map = dynamic_cast<memory_map*>(object)) return new accessible_memory_map(map);
  if (auto* const line = qobject_cast<QLineEdit*>(object)) return make_accessible_line(line);
  if (auto* const region = dynamic_cast<live_region*>(object))
    return new QAccessibleWidget(region, QAccessible::StatusBar);
  if (auto* const notice = dynamic_cast<live_notice*>(object))
    return new QAccessibleWidget(notice, QAccessible::Notification);
  if (!find_control(object->objectName().toStdString())) return nullptr;
  if (auto* const label = qobject_cast<QLabel*>(object)) return new accessible_label(label);
  if (auto* const combo = qobject_cast<QComboBox*>(object)) return new accessible_combo(combo);
  return nullptr;
}

}  // namespace

void install_accessible_objects() {
  QAccessible::installFactory(accessible_factory);
  install_accessible_events();
}

}  // namespace estructura
