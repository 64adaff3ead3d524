#include "ui/qt/accesible.h"

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
#include "ui/qt/accessible_events.h"
#include "ui/qt/accessible_text.h"
#include "ui/qt/live_region.h"
#include "ui/qt/mapa.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

/// A widget with a text that can be read character by character, and neither changed nor selected.
class accesible_con_texto : public QAccessibleWidget, public terminating_text {
 public:
  using QAccessibleWidget::QAccessibleWidget;
  [[nodiscard]] virtual QString contenido() const = 0;

  void* interface_cast(QAccessible::InterfaceType type) override {
    // Where the name is the text, to offer it once more would have it said twice.
    if (type == QAccessible::TextInterface && contenido() != text(QAccessible::Name))
      return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  using QAccessibleWidget::text;
  QString text(int start, int end) const override { return contenido().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(contenido().size()); }
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

class rotulo_accesible final : public accesible_con_texto {
 public:
  explicit rotulo_accesible(QLabel* label) : accesible_con_texto(label, QAccessible::StaticText) {}

  QString contenido() const override { return static_cast<const QLabel*>(widget())->text(); }

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
    int index = 0;
    const id which = find_control(widget()->objectName().toStdString(), index);
    return which == id::TRISA || which == id::TRISB || which == id::TRISC;
  }

  [[nodiscard]] QAction* find(const QString& name) const {
    const QList<QAction*> actions = widget()->actions();
    const auto found = std::find_if(actions.begin(), actions.end(),
                                    [&](const QAction* action) { return action->text() == name; });
    return found == actions.end() ? nullptr : *found;
  }
};

/// On Linux Qt gives a combo its current entry for a name.
class combo_accesible final : public accesible_con_texto {
 public:
  explicit combo_accesible(QComboBox* combo) : accesible_con_texto(combo, QAccessible::ComboBox) {}

  QString contenido() const override { return combo().currentText(); }

  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? contenido() : QAccessibleWidget::text(what);
  }
  using accesible_con_texto::text;

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

class mapa_accesible final : public QAccessibleWidget {
 public:
  explicit mapa_accesible(mapa_qt* map) : QAccessibleWidget(map, QAccessible::Graphic) {}

  QString text(QAccessible::Text what) const override {
    if (what != QAccessible::Description) return QAccessibleWidget::text(what);
    const auto& map = *static_cast<const mapa_qt*>(widget());
    map_view shown;
    shown.scale = map.escala();
    shown.marker = map.marca();
    for (int a = 0; a < program_words; ++a) shown.rows[a] = map.fila(a);
    return a_qt(accessible_map(shown)) + QLatin1Char(' ') + QAccessibleWidget::text(what);
  }
};

/// Asked once for each class that an object is of, its own first.
QAccessibleInterface* fabrica(const QString&, QObject* object) {
  if (object == nullptr) return nullptr;
  if (auto* const map = dynamic_cast<mapa_qt*>(object)) return new mapa_accesible(map);
  if (auto* const line = qobject_cast<QLineEdit*>(object)) return make_accessible_line(line);
  if (auto* const region = dynamic_cast<live_region*>(object))
    return new QAccessibleWidget(region, QAccessible::StatusBar);
  if (auto* const notice = dynamic_cast<live_notice*>(object))
    return new QAccessibleWidget(notice, QAccessible::Notification);
  int index = 0;
  if (find_control(object->objectName().toStdString(), index) == id::none) return nullptr;
  if (auto* const label = qobject_cast<QLabel*>(object)) return new rotulo_accesible(label);
  if (auto* const combo = qobject_cast<QComboBox*>(object)) return new combo_accesible(combo);
  return nullptr;
}

}  // namespace

void instala_accesibles() {
  QAccessible::installFactory(fabrica);
  install_accessible_events();
}

}  // namespace estructura
