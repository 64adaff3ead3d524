#include "ui/qt/window/qt_host.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include "common/file.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/window/file_dialog.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/message_box.h"

namespace estructura {

namespace {

using namespace std::chrono_literals;

/// A click waits at most this long for its turn during a run.
constexpr auto turn = 1ms;
/// Between two paintings of the window: 60 a second.
constexpr auto frame = 16800us;
/// Steps between two looks at the clock. A look costs as much as ten to twenty steps taken many at once; even
/// if each has to be taken singly, so many are over in a fraction of a turn.
constexpr int steps_between_looks = 2048;
/// After a box that may come back at once: long enough to find the button that stops the run, and to hit it.
constexpr auto usual_rest = 1000ms;
/// While the chip sleeps nothing but the person can change it, so the run waits for the person.
constexpr auto nap = 10ms;

/// "description|pattern|..." as Qt writes it: the description shown, then the patterns in brackets.
QStringList name_filters(std::string_view filter) {
  const QStringList parts = to_qt(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    // Qt takes "*.*" at its word, and would hide the files whose name has no dot.
    const QString pattern = parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
    filters << parts[i] + QLatin1String(" (") + pattern + QLatin1Char(')');
  }
  return filters;
}

}  // namespace

qt_host::qt_host() : rest_(usual_rest) {}

void qt_host::refresh_window() {
  if (window_ != nullptr) window_->refresh();
}

answer qt_host::show_box(box kind, std::string_view text) {
  // What is still asked while the program ends gets the answer of a box that was closed.
  if (ended_) return window_host::show_box(kind, text);
  refresh_window();
  message_box shown(window_, kind, text);
  const int chosen = shown.exec();
  held_.box_closed();
  switch (chosen) {
    case QMessageBox::Yes: return answer::yes;
    case QMessageBox::No: return answer::no;
    case QMessageBox::Ok: return answer::ok;
    default: return window_host::show_box(kind, text);
  }
}

std::string qt_host::choose_file(bool save, std::string_view filter, std::string_view extension,
                                 std::string_view proposed) {
  if (ended_) return {};
  refresh_window();
  file_dialog dialog(window_, save);
  dialog.setStyleSheet(QString::fromLatin1(fixed_button_order));
  dialog.setNameFilters(name_filters(filter));
  dialog.setDefaultSuffix(to_qt(extension));
  if (!proposed.empty()) {
    const QFileInfo place(to_qt(find_file(proposed)));
    if (place.dir().exists()) dialog.setDirectory(place.dir());
    dialog.selectFile(place.fileName());
  }
  const int ended_with = dialog.exec();
  held_.box_closed();
  if (ended_with != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdString();
}

std::string qt_host::clipboard_text() {
  return from_qt(QGuiApplication::clipboard()->text());
}

void qt_host::set_clipboard_text(std::string_view text) {
  QGuiApplication::clipboard()->setText(to_qt(text));
}

void qt_host::beep() {
  QApplication::beep();
}

int qt_host::yield() {
  const clock::time_point now = clock::now();
  if (now - attended_ < turn || window_ == nullptr || ended_) return steps_between_looks;
  if (now >= next_frame_) {
    window_->refresh();
    // Kept to its beat, unless it has fallen behind it by more than one.
    next_frame_ = next_frame_ + frame > now ? next_frame_ + frame : now + frame;
  }
  if (window_->estructura().chip().sleeping) {
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.start(nap);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  } else {
    QCoreApplication::processEvents();
  }
  attended_ = clock::now();
  return steps_between_looks;
}

void qt_host::rest() {
  if (window_ == nullptr || ended_) return;
  window_->refresh();
  QTimer alarm;
  alarm.setSingleShot(true);
  alarm.start(rest_);
  // The next box would take an open menu away, and a button from under the mouse that has pressed it.
  const auto in_the_middle = [] {
    return QApplication::activePopupWidget() != nullptr || QApplication::mouseButtons() != Qt::NoButton;
  };
  while ((alarm.isActive() || in_the_middle()) && !ended_ && window_->estructura().chip().running)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void qt_host::end() {
  if (ended_) return;
  ended_ = true;
  if (window_ != nullptr) window_->close();
  // Leaves every loop, those of boxes that are open included.
  QCoreApplication::exit(0);
}

}  // namespace estructura
