#include "guion/qt_driver.h"

#include <algorithm>
#include <cmath>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QTest>

#include "guion/words.h"
#include "tests/support/hang.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/memory_map.h"

namespace estructura::guiones {

namespace {

// --- Positions: a widget counts UTF-16 units, a line end being one; a script counts characters, a line end
// two. ----

QString in_widget(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).replace("\r\n", "\n");
}

std::string in_script(QString text) {
  return text.replace("\n", "\r\n").toStdString();
}

/// Characters that the unit at a position stands for: none for the second half of a pair.
int characters_of(QChar unit) {
  return unit == '\n' ? 2 : unit.isLowSurrogate() ? 0 : 1;
}

int characters(const QString& text, qsizetype units) {
  int count = 0;
  for (qsizetype i = 0; i < units; ++i) count += characters_of(text.at(i));
  return count;
}

/// The unit at which a character stands; a position within a line end is that line's end.
int unit_of(const QString& text, int character) {
  int unit = 0;
  for (int count = 0; unit < text.size(); ++unit) {
    count += characters_of(text.at(unit));
    if (count > character) break;
  }
  return unit;
}

// --- Where to click
// ------------------------------------------------------------------------------------------------

/// A check box or option is clicked on its mark: what lies beyond its caption is no part of it.
QPoint point_to_click(const QWidget& button) {
  QStyle::SubElement mark{};
  if (qobject_cast<const QCheckBox*>(&button) != nullptr)
    mark = QStyle::SE_CheckBoxIndicator;
  else if (qobject_cast<const QRadioButton*>(&button) != nullptr)
    mark = QStyle::SE_RadioButtonIndicator;
  else
    return button.rect().center();
  QStyleOptionButton option;
  option.initFrom(&button);
  return button.style()->subElementRect(mark, &option, &button).center();
}

/// A line scrolled into view, and a point on it.
QPoint point_on_row(QAbstractItemView& view, int row) {
  const QModelIndex index = view.model()->index(row, 0);
  view.scrollTo(index);
  const QPoint point = (view.visualRect(index) & view.viewport()->rect()).center();
  if (view.indexAt(point) != index)
    throw script_error("no point on the line to click at: " + view.objectName().toStdString());
  return point;
}

QTextCursor cursor_at(QPlainTextEdit& edit, int character) {
  QTextCursor cursor(edit.document());
  cursor.setPosition(unit_of(edit.toPlainText(), character));
  return cursor;
}

// --- What a kind of widget shows
// -----------------------------------------------------------------------------------

void read_list(const QAbstractItemView& view, appearance& shown) {
  for (int row = 0; row < view.model()->rowCount(); ++row)
    shown.rows.push_back(view.model()->index(row, 0).data(Qt::DisplayRole).toString().toStdString());
  for (const QModelIndex& index : view.selectionModel()->selectedIndexes())
    shown.selected.push_back(index.row());
  std::ranges::sort(shown.selected);
  // Where one line at most is selected, a current line that is not is only where the arrow keys stand.
  const bool only_cursor =
      view.selectionMode() == QAbstractItemView::SingleSelection && shown.selected.empty();
  shown.row = only_cursor ? -1 : view.currentIndex().row();
  shown.face_background = view.viewport()->backgroundRole() == QPalette::Window;
}

void read_line(const QLineEdit& edit, appearance& shown) {
  shown.text = in_script(edit.text());
  const int start = edit.hasSelectedText() ? edit.selectionStart() : edit.cursorPosition();
  shown.sel_start = characters(edit.text(), start);
  shown.sel_length = characters(edit.text(), start + edit.selectedText().size()) - shown.sel_start;
}

void read_lines(const QPlainTextEdit& edit, appearance& shown) {
  // Not toPlainText(), which makes a blank of a no-break space.
  const QString text = edit.document()
                           ->toRawText()
                           .replace(QChar::ParagraphSeparator, '\n')
                           .replace(QChar::LineSeparator, '\n');
  shown.text = in_script(without_stand_ins(text));
  const QTextCursor cursor = edit.textCursor();
  shown.sel_start = characters(text, cursor.selectionStart());
  shown.sel_length = characters(text, cursor.selectionEnd()) - shown.sel_start;
}

void read_combo(const QComboBox& combo, appearance& shown) {
  shown.text = combo.currentText().toStdString();
  for (int entry = 0; entry < combo.count(); ++entry)
    shown.rows.push_back(combo.itemText(entry).toStdString());
}

void read_button(const QAbstractButton& button, appearance& shown) {
  shown.text = button.text().toStdString();
  shown.value = button.isChecked();
}

}  // namespace

// --- The window
// ----------------------------------------------------------------------------------------------------

qt_driver::qt_driver(scripted_desktop& desk)
    : host_(desk), window_(host_), shown_((window_.Form_Load(), window_)) {
  QGuiApplication::clipboard()->clear();
  host_.set_window(&shown_);
  host_.watch(window_);
  // Whatever the screen, nothing is scrolled out of sight.
  shown_.resize(shown_.least());
  shown_.show();
  shown_.activateWindow();
  if (!QTest::qWaitForWindowActive(&shown_, support::hang_ms))
    throw script_error("the window does not become active");
}

int qt_driver::host::attend() {
  // The host underneath lets a sleeping chip's run wait for the person; here only the script can wake it.
  constexpr int many = 1 << 16;
  if (watched_ == nullptr || !watched_->chip().sleeping) return scripted_host::attend();
  QCoreApplication::processEvents();
  return many;
}

template <class Widget>
Widget& qt_driver::widget(const script_place& place) {
  shown_.refresh();
  auto* const found = shown_.findChild<Widget*>(QString::fromStdString(place.name));
  if (found == nullptr) throw script_error("the window has no fitting widget of this name: " + place.name);
  return *found;
}

// --- What a person does
// --------------------------------------------------------------------------------------------

void qt_driver::click(const script_place& place) {
  QWidget& button = widget(place);
  QTest::mouseClick(&button, Qt::LeftButton, {}, point_to_click(button));
}

void qt_driver::click_text(const script_place& place, int caret) {
  auto& edit = widget<QPlainTextEdit>(place);
  const QTextCursor there = cursor_at(edit, caret);
  edit.verticalScrollBar()->setValue(there.blockNumber());
  edit.horizontalScrollBar()->setValue(edit.horizontalScrollBar()->value() + edit.cursorRect(there).x() -
                                       edit.viewport()->width() / 2);
  QTest::mouseClick(edit.viewport(), Qt::LeftButton, {}, edit.cursorRect(there).center());
}

void qt_driver::keyup_text(const script_place& place, int caret) {
  auto& edit = widget<QPlainTextEdit>(place);
  edit.setFocus(Qt::TabFocusReason);
  edit.setTextCursor(cursor_at(edit, caret));
  QTest::keyRelease(&edit, Qt::Key_Right);
}

void qt_driver::dblclick(const script_place& place) {
  QWidget& label = widget(place);
  QTest::mouseClick(&label, Qt::LeftButton);
  QTest::mouseDClick(&label, Qt::LeftButton);
  QTest::mouseRelease(&label, Qt::LeftButton);
}

void qt_driver::click_row(const script_place& place, int row, bool control_held) {
  auto& view = widget<QAbstractItemView>(place);
  const auto keys = control_held ? Qt::ControlModifier : Qt::NoModifier;
  QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, point_on_row(view, row));
}

void qt_driver::dblclick_row(const script_place& place, int row) {
  auto& view = widget<QAbstractItemView>(place);
  const QPoint point = point_on_row(view, row);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, point);
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, point);
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, point);
}

void qt_driver::pick(const script_place& place, int entry) {
  auto& combo = widget<QComboBox>(place);
  combo.setFocus(Qt::MouseFocusReason);
  combo.showPopup();
  combo.view()->setCurrentIndex(combo.model()->index(entry, combo.modelColumn()));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  // The list was a window of its own. Its going reaches the application as an event, which must not wait for
  // some later run's turn; and without a window manager nobody gives the focus back.
  QCoreApplication::processEvents();
  shown_.activateWindow();
  const auto focus_is_back = [&] { return combo.hasFocus(); };
  if (!QTest::qWaitFor(focus_is_back, support::hang_ms))
    throw script_error("the focus does not come back from the list");
}

void qt_driver::type(const script_place& place, std::string_view text) {
  QWidget& box = widget(place);
  box.setFocus(Qt::TabFocusReason);
  const QString typed = in_widget(text);
  if (auto* const line = qobject_cast<QLineEdit*>(&box)) {
    if (line->isReadOnly() || line->text() == typed) return;
    line->selectAll();
  } else if (auto* const lines = qobject_cast<QPlainTextEdit*>(&box)) {
    if (lines->isReadOnly() || lines->toPlainText() == typed) return;
    lines->selectAll();
  }
  // Keys would make as many changes as letters; an input method commits its text in one.
  if (typed.isEmpty()) return QTest::keyClick(&box, Qt::Key_Delete);
  QInputMethodEvent commit;
  commit.setCommitString(typed);
  QApplication::sendEvent(&box, &commit);
}

void qt_driver::select(const script_place& place, int start, int length) {
  QWidget& box = widget(place);
  box.setFocus(Qt::TabFocusReason);
  if (auto* const line = qobject_cast<QLineEdit*>(&box)) {
    const int first = unit_of(line->text(), start);
    const int end = unit_of(line->text(), start + length);
    if (first == end)
      line->setCursorPosition(first);
    else
      line->setSelection(first, end - first);
  } else if (auto* const lines = qobject_cast<QPlainTextEdit*>(&box)) {
    QTextCursor cursor = cursor_at(*lines, start);
    cursor.setPosition(unit_of(lines->toPlainText(), start + length), QTextCursor::KeepAnchor);
    lines->setTextCursor(cursor);
  }
}

void qt_driver::enter(const script_place& place) {
  QWidget& box = widget(place);
  box.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&box, Qt::Key_Return);
}

void qt_driver::focus(const script_place& place) {
  widget(place).setFocus(Qt::TabFocusReason);
}

void qt_driver::press_map(double y) {
  auto& map = widget<memory_map>(place_of("mapa"));
  // A row is thinner than a pixel: the pointer stands between two of them, as on a screen of finer ones.
  // No height of this widget may give just this half between two rows: then the nearest one on the side to
  // which halves are rounded.
  double height = map.y_of_row(y);
  for (int i = 0; i < 4 && std::nearbyint(map.row_at(height)) != std::nearbyint(y); ++i)
    height = std::nextafter(height, map.row_at(height) < y ? map.height() : 0);
  const QPointF point(map.rect().center().x(), height);
  const QPointF global = map.mapToGlobal(point);
  QMouseEvent down(QEvent::MouseButtonPress, point, global, Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&map, &down);
  QMouseEvent up(QEvent::MouseButtonRelease, point, global, Qt::LeftButton, {}, {});
  QApplication::sendEvent(&map, &up);
}

void qt_driver::close() {
  shown_.close();
}

void qt_driver::set_clipboard(std::string_view text) {
  QGuiApplication::clipboard()->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

// --- What can be looked at
// -----------------------------------------------------------------------------------------

bool qt_driver::usable(const script_place& place) {
  const QWidget& control = widget(place);
  return control.isEnabled() && control.isVisibleTo(&shown_);
}

appearance qt_driver::look(const script_place& place) {
  const QWidget& control = widget(place);
  appearance shown;
  shown.tip = in_script(control.toolTip());
  shown.tag = window_.look(place.which, place.index).tag();
  // The control's own flags: those of the frames around it count for others.
  shown.enabled = control.isEnabledTo(control.parentWidget());
  shown.visible = !control.isHidden();
  if (const auto* const button = qobject_cast<const QAbstractButton*>(&control)) read_button(*button, shown);
  if (const auto* const label = qobject_cast<const QLabel*>(&control))
    shown.text = label->text().toStdString();
  if (const auto* const frame = qobject_cast<const QGroupBox*>(&control))
    shown.text = frame->title().toStdString();
  if (const auto* const combo = qobject_cast<const QComboBox*>(&control)) read_combo(*combo, shown);
  if (const auto* const line = qobject_cast<const QLineEdit*>(&control)) read_line(*line, shown);
  if (const auto* const lines = qobject_cast<const QPlainTextEdit*>(&control)) read_lines(*lines, shown);
  if (const auto* const view = qobject_cast<const QAbstractItemView*>(&control)) read_list(*view, shown);
  return shown;
}

map_view qt_driver::look_map() {
  const auto& map = widget<memory_map>(place_of("mapa"));
  map_view seen;
  seen.scale = map.scale();
  seen.marker = map.marker();
  for (int address = 0; address < program_words; ++address) seen.rows[address] = map.row(address);
  return seen;
}

std::string qt_driver::focused() {
  shown_.refresh();
  // What has the focus may be a part of the control's widget.
  for (const QWidget* part = QApplication::focusWidget(); part != nullptr; part = part->parentWidget()) {
    const std::string name = part->objectName().toStdString();
    const auto found = find_control(name);
    if (found) return declared(found->which).is == kind::frame ? std::string{} : name;
  }
  return {};
}

std::string qt_driver::clipboard() {
  // The desktop's clipboard holds the desktop's line ends; the host gives them as the window counts them.
  return host_.clipboard_text();
}

}  // namespace estructura::guiones
