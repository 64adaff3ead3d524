// What the source editor costs with texts far beyond any program: loading one, and one key typed into it,
// until everything is painted.
//
// Budgets, each in what the same machine does in the same run with the same text, since a time of its own
// says little of another machine:
//
//   load                      2 times what Qt's own plain editor takes to load and paint it
//   key, caret, of lines      4 times the conversion of the whole text, which each of them asks for
//   key, of one line          2 times the same key in Qt's own editor; a megabyte in a line is no program,
//   and
//                             Qt works out the whole line at each key
//   growth                    2.5 times the time for twice the text
//
#include <benchmark/benchmark.h>
#include <fstream>
#include <memory>
#include <string>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include "bench/processor_time.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace {

using namespace estructura;

constexpr std::size_t megabyte = 1'000'000;

std::string many_lines(std::size_t length) {
  std::string text;
  for (int i = 0; text.size() < length; ++i)
    text += "L" + std::to_string(i) + ":\tMOVLW\t" + std::to_string(i % 100) + "\t; línea\r\n";
  return text;
}

std::string one_line(std::size_t length) {
  std::string text;
  while (text.size() < length) text += "MOVLW 10 ";
  return text;
}

class host_with_file : public qt_host {
 public:
  answer show_box(box kind, std::string_view) override {
    return kind == box::ok || kind == box::ok_right ? answer::ok : answer::no;
  }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
    return path;
  }
  std::string path;
};

struct open_window {
  QTemporaryDir folder;
  host_with_file host;
  Estructura window{host};
  std::unique_ptr<main_window> shown;

  explicit open_window(const std::string& text) {
    host.path = folder.filePath("largo.asm").toStdString();
    std::ofstream(host.path, std::ios::binary) << text;
    window.Form_Load();
    shown = std::make_unique<main_window>(window);
    host.set_window(shown.get());
    shown->resize(shown->least());
    shown->show();
    QApplication::processEvents();
  }
  QPlainTextEdit& source() const { return *shown->findChild<QPlainTextEdit*>("source"); }
  void load() {
    shown->findChild<QAbstractButton*>("cargarasm")->click();
    paint();
  }
  void paint() {
    shown->repaint();
    QApplication::processEvents();
  }
  void put_caret_in_the_middle() {
    source().setFocus();
    QTextCursor cursor = source().textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.setPosition(cursor.position() / 2);
    source().setTextCursor(cursor);
    paint();
  }
  void press(Qt::Key key, const QString& letter) {
    QKeyEvent event(QEvent::KeyPress, key, {}, letter);
    QApplication::sendEvent(&source(), &event);
    paint();
  }
};

/// Qt's own editor with the same text, as large as the source's.
struct bare_editor {
  QPlainTextEdit edit;

  explicit bare_editor(const open_window& like) {
    edit.resize(like.source().size());
    edit.show();
    QApplication::processEvents();
  }
  void load(const std::string& text) {
    edit.setPlainText(to_qt(text));
    paint();
  }
  void paint() {
    edit.repaint();
    QApplication::processEvents();
  }
  void press() {
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, {}, "a");
    QApplication::sendEvent(&edit, &letter);
    paint();
  }
};

/// A text that is made as long as is asked for.
using text_of_length = std::string (*)(std::size_t);

void load(benchmark::State& state, text_of_length make) {
  open_window open(make(megabyte));
  for (auto _ : state) open.load();
  if (open.window.look(id::source).text().size() < megabyte) state.SkipWithError("nothing was loaded");
  const double once = seconds_of([&] { open.load(); });
  bare_editor bare(open);
  state.counters["times_bare_editor"] = once / seconds_of([&] { bare.load(make(megabyte)); });
  open_window twice(make(2 * megabyte));
  state.counters["growth"] = seconds_of([&] { twice.load(); }) / once;
}

double seconds_of_a_key(open_window& open) {
  open.load();
  open.put_caret_in_the_middle();
  return seconds_of([&] { open.press(Qt::Key_A, "a"); });
}

// A letter typed in the middle of the text.
void key(benchmark::State& state, text_of_length make) {
  open_window open(make(megabyte));
  const double once = seconds_of_a_key(open);
  const std::size_t before = open.window.look(id::source).text().size();
  for (auto _ : state) open.press(Qt::Key_A, "a");
  if (open.window.look(id::source).text().size() == before) state.SkipWithError("nothing was typed");
  state.counters["times_conversion"] =
      once /
      seconds_of([&] { benchmark::DoNotOptimize(from_document(open.source().document()->toRawText())); });
  bare_editor bare(open);
  bare.load(make(megabyte));
  state.counters["times_bare_editor"] = once / seconds_of([&] { bare.press(); });
  open_window twice(make(2 * megabyte));
  state.counters["growth"] = seconds_of_a_key(twice) / once;
}

void caret_move(benchmark::State& state, text_of_length make) {
  open_window open(make(megabyte));
  open.load();
  open.put_caret_in_the_middle();
  const auto move = [&] { open.press(Qt::Key_Right, {}); };
  for (auto _ : state) move();
  const double once = seconds_of(move);
  state.counters["times_conversion"] =
      once /
      seconds_of([&] { benchmark::DoNotOptimize(from_document(open.source().document()->toRawText())); });
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  set_up_application(app);
  const auto add = [](const char* name, auto* measure, text_of_length make) {
    benchmark::RegisterBenchmark(name, measure, make)->Unit(benchmark::kMillisecond);
  };
  add("BM_load_megabyte", load, many_lines);
  add("BM_key_in_megabyte", key, many_lines);
  add("BM_caret_in_megabyte", caret_move, many_lines);
  add("BM_load_long_line", load, one_line);
  add("BM_key_in_long_line", key, one_line);
  add("BM_caret_in_long_line", caret_move, one_line);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
