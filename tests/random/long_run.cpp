// A long continuous run in the real window, with a person at it all the time: pins, resets, values typed into
// registers, source edited, other devices after a power-on, lists and boxes clicked.
//
//   long_run 80000       gestures, some ten minutes; the exit status is 0 only if what is claimed below
//   holds
//
// Claimed: no fault occurs; the run goes on until the last gesture; while the person rests, which is when
// nothing but the run has the window painted, it is painted again and again; and in runs of more than nine
// thousand gestures the memory in use, looked at every three hundred, is never more than 1 MB above what it
// is after those nine thousand. Everything goes by gestures and by frames: how fast they come is the
// machine's affair. The times that they took are printed for people to read, and beside them what is left of
// each without the time that the window's thread spent ready to run, waiting for a processor that something
// else had. A gesture that is not served within ten minutes ends the program: it hangs.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <semaphore>
#include <string>
#include <thread>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>

#include "tests/model/random_source.h"
#include "tests/random/warnings.h"
#include "tests/support/hang.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace {

using namespace estructura;
using clock_type = std::chrono::steady_clock;

constexpr int settled_after = 9000;
constexpr int between_samples = 300;
constexpr std::int64_t most_growth_bytes = 1 << 20;
constexpr int gestures_between_rests = 300;
constexpr int frames_of_a_rest = 15;
constexpr unsigned hang_s = 600;

/// Clears the watchdog in each round, whose count would run into its 32-bit limit within a minute otherwise.
/// Ports stay inputs, as a reset leaves them, so that pins can be clicked.
constexpr std::array<std::uint16_t, 12> program = {
    0x004,  // 000  CLRWDT
    0x2A8,  // 001  INCF 08
    0x208,  // 002  MOVF 08,W
    0x90A,  // 003  CALL 00A
    0x1A9,  // 004  XORWF 09
    0x205,  // 005  MOVF 05,W
    0x12A,  // 006  IORWF 0A
    0x2EB,  // 007  DECFSZ 0B
    0xA00,  // 008  GOTO 000
    0xA00,  // 009  GOTO 000
    0xE07,  // 00A  ANDLW 07
    0x855,  // 00B  RETLW 55
};

std::int64_t memory_in_use() {
  long pages = 0;
  if (std::FILE* const file = std::fopen("/proc/self/statm", "r"); file != nullptr) {
    if (std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
    std::fclose(file);
  }
  return std::int64_t{pages} * ::sysconf(_SC_PAGESIZE);
}

/// Nanoseconds that the thread of the window has waited for a processor; 0 where the system does not say.
std::int64_t waited_for_processor() {
  static const std::string name = "/proc/self/task/" + std::to_string(::getpid()) + "/schedstat";
  long long waited = 0;
  if (std::FILE* const file = std::fopen(name.c_str(), "r"); file != nullptr) {
    if (std::fscanf(file, "%*d %lld", &waited) != 1) waited = 0;
    std::fclose(file);
  }
  return waited;
}

/// Times in tenths of a millisecond, counted: memory stays the same however many there are.
class timings {
 public:
  void add(std::chrono::nanoseconds time) {
    const auto tenth = static_cast<std::size_t>(std::max<std::int64_t>(0, time.count() / 100'000));
    ++counts_[std::min(tenth, counts_.size() - 1)];
    ++total_;
    most_ = std::max(most_, time);
  }
  [[nodiscard]] std::int64_t total() const { return total_; }
  [[nodiscard]] double most_ms() const { return std::chrono::duration<double, std::milli>(most_).count(); }
  /// Upper end of the tenth within which this share of all times lies.
  [[nodiscard]] double percentile_ms(double share) const {
    const auto wanted = static_cast<std::int64_t>(share * static_cast<double>(total_));
    std::int64_t passed = 0;
    for (std::size_t tenth = 0; tenth < counts_.size(); ++tenth) {
      passed += counts_[tenth];
      if (passed > wanted) return static_cast<double>(tenth + 1) / 10;
    }
    return static_cast<double>(counts_.size()) / 10;
  }

 private:
  std::array<std::int64_t, 10'000> counts_{};
  std::int64_t total_ = 0;
  std::chrono::nanoseconds most_{};
};

/// Questions get the answer of a box that was closed; no fault is expected.
class host final : public qt_host {
 public:
  answer show_box(box kind, std::string_view) override {
    if (kind == box::fault) ++faults;
    return kind == box::yesno || kind == box::yesnocancel ? answer::no : answer::ok;
  }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override { return {}; }
  void rest() override {}
  int yield() override {
    const int turns = qt_host::yield();
    steps += turns;
    return turns;
  }
  int faults = 0;
  std::int64_t steps = 0;
};

/// Counts the times that the window is painted, and tells of the last of those that somebody waits for.
class picture_counter final : public QObject {
 public:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::UpdateRequest) return false;
    ++images;
    if (images == awaited && painted) painted();
    return false;
  }
  std::int64_t images = 0;
  std::int64_t awaited = 0;
  std::function<void()> painted;
};

class session {
 public:
  explicit session(int gestures) : gestures_(gestures), shown_((window_.Form_Load(), window_)) {
    host_.set_window(&shown_);
    painted_.painted = [this] { end_rest(); };
    shown_.installEventFilter(&painted_);
    for (const int vector : {0x1FF, 0x3FF, 0x7FF}) window_.poke().progmem[vector] = 0xA00;
    int address = 0;
    for (const std::uint16_t word : program) window_.poke().progmem[address++] = word;
    shown_.resize(shown_.least());
    shown_.show();
    shown_.activateWindow();
  }

  /// Runs to the end; whether all that is claimed held.
  bool run() {
    if (!QTest::qWaitForWindowActive(&shown_, support::hang_ms))
      return said(false, "the window does not become active");
    const auto start = clock_type::now();
    ::alarm(hang_s);
    std::thread person([this] { make_gestures(); });
    click(id::ejecutar);
    // In a run that ends too early the person still waits for the end of a rest, and then of a gesture.
    over_ = true;
    served_.release(2);
    person.join();
    QCoreApplication::processEvents();
    const std::chrono::duration<double> lasted = clock_type::now() - start;
    return judge(lasted.count());
  }

 private:
  template <class Widget = QWidget>
  Widget& at(id which, int index = 0) {
    return *static_cast<Widget*>(shown_.widget_of(which, index));
  }
  void click(id which, int index = 0) { QTest::mouseClick(&at(which, index), Qt::LeftButton); }
  void click_row(id which, int index, int row) {
    auto& view = at<QListView>(which, index);
    const QModelIndex line = view.model()->index(row, 0);
    view.scrollTo(line);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(line).center());
  }
  void type(id which, const QString& text) {
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(&at(which), &commit);
  }

  // --- the other thread: one thing after the other, each when the one before it is done ---

  void make_gestures() {
    second_model::random_source pauses(1);
    for (int made = 0; made < gestures_ && !over_; ++made) {
      if (made % gestures_between_rests == 0) take_a_rest();
      std::this_thread::sleep_for(std::chrono::microseconds(1000 + pauses.below(11'000)));
      const auto posted = clock_type::now();
      const std::int64_t waited = waited_for_processor();
      QMetaObject::invokeMethod(
          &shown_, [this, posted, waited] { serve(posted, waited); }, Qt::QueuedConnection);
      served_.acquire();
    }
  }

  void take_a_rest() {
    QMetaObject::invokeMethod(
        &shown_, [this] { begin_rest(); }, Qt::QueuedConnection);
    served_.acquire();
  }

  // --- the window's thread ---

  struct moment {
    clock_type::time_point time;
    std::int64_t waited_ns = 0;
  };

  [[nodiscard]] static moment now() { return {clock_type::now(), waited_for_processor()}; }

  void done() {
    ::alarm(hang_s);
    served_.release();
  }

  void begin_rest() {
    resting_ = now();
    painted_.awaited = painted_.images + frames_of_a_rest;
  }

  void end_rest() {
    const moment end = now();
    rested_ += end.time - resting_.time - std::chrono::nanoseconds(end.waited_ns - resting_.waited_ns);
    painted_at_rest_ += frames_of_a_rest;
    done();
  }

  void serve(clock_type::time_point posted, std::int64_t waited_before) {
    if (over_) return;
    gesture();
    const auto time = clock_type::now() - posted;
    all_.add(time);
    own_.add(time - std::chrono::nanoseconds(waited_for_processor() - waited_before));
    if (all_.total() % between_samples == 0) look_at_memory();
    if (all_.total() == gestures_) {
      to_the_end_ = window_.chip().running;
      click(id::ejecutar);
    }
    done();
  }

  // What is taken and given back between two looks is seen by none, what stays is by all that follow.
  void look_at_memory() {
    last_ = memory_in_use();
    if (all_.total() < settled_after) return;
    if (settled_ == 0) settled_ = last_;
    most_ = std::max(most_, last_);
  }

  void gesture() {
    const long what = chance_.below(100);
    if (what < 80) return click_pin();
    if (what < 84) return click(id::MCLR);
    if (what < 87) return edit_register();
    if (what < 89) return edit_source();
    if (what < 91) return change_device();
    if (what < 93) return click_row(id::MP, 0, static_cast<int>(chance_.below(512)));
    if (what < 95) return click(id::sl, static_cast<int>(chance_.below(2)));
    if (what < 97) return click(id::VISMP);
    if (what < 98) return click(id::TOCKI);
    if (what < 99) return press_map();
    QTest::mouseDClick(&at(id::ciclos), Qt::LeftButton);
  }

  void click_pin() {
    constexpr std::array ports = {id::PA, id::PB, id::PC};
    const id port = chance_.one_of(ports);
    click(port, static_cast<int>(chance_.below(declared(port).count)));
  }

  void edit_register() {
    // W and the general registers, which the program bears at any value.
    if (chance_.one_in(2))
      click_row(id::RE, 0, 1);
    else
      click_row(id::MDP, 0, 8 + static_cast<int>(chance_.below(8)));
    type(id::dat, QString::number(chance_.below(256), 16));
    QTest::keyClick(&at(id::dat), Qt::Key_Return);
  }

  void edit_source() {
    click(id::sl, 0);
    if (chance_.one_in(8)) return click(id::borrarasm);
    click(id::source);
    type(id::source, QStringLiteral(" MOVLW %1\n").arg(chance_.below(256)));
    if (chance_.one_in(3)) click(id::tab);
  }

  void change_device() {
    click(id::por);
    // The next step closes the choice again, so it is made before one is taken.
    auto& combo = at<QComboBox>(id::PIC);
    combo.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&combo, chance_.one_in(2) ? Qt::Key_Down : Qt::Key_Up);
    ++devices_;
  }

  void press_map() {
    const auto& map = at<memory_map>(id::mapa);
    const int row = static_cast<int>(chance_.below(512));
    QTest::mouseClick(&at(id::mapa), Qt::LeftButton, {},
                      QPoint(5, static_cast<int>(map.y_of_row(row + 0.5))));
  }

  // --- the end ---

  static bool said(bool holds, const char* claim) {
    if (!holds) std::fprintf(stderr, "does not hold: %s\n", claim);
    return holds;
  }

  [[nodiscard]] bool judge(double seconds) const {
    print_times(seconds);
    bool holds = said(to_the_end_, "the run goes on to its end");
    holds &= said(host_.faults == 0, "no fault occurs");
    holds &= said(random_events::warnings == 0, "Qt has nothing to complain of");
    holds &= said(devices_ > 0, "there is a power-on with another device");
    holds &= said(painted_at_rest_ >= frames_of_a_rest, "the window is painted while the person rests");
    if (gestures_ > settled_after) {
      constexpr double mb = 1 << 20;
      std::printf("memory settled at %.2f MB, at the most %.2f MB, at the end %.2f MB\n",
                  static_cast<double>(settled_) / mb, static_cast<double>(most_) / mb,
                  static_cast<double>(last_) / mb);
      holds &= said(settled_ > 0 && most_ - settled_ <= most_growth_bytes,
                    "memory stays within 1 MB of what it settled at");
    }
    return holds;
  }

  void print_times(double seconds) const {
    std::printf("%.1f s, %lld steps, %.1f ns a step\n", seconds, static_cast<long long>(host_.steps),
                seconds * 1e9 / static_cast<double>(host_.steps));
    std::printf("%lld gestures, %d of them a power-on with another device\n",
                static_cast<long long>(all_.total()), devices_);
    std::printf("served in        p50 %.1f ms, p99 %.1f ms, most %.1f ms\n", own_.percentile_ms(0.5),
                own_.percentile_ms(0.99), own_.most_ms());
    std::printf("with the machine p50 %.1f ms, p99 %.1f ms, most %.1f ms\n", all_.percentile_ms(0.5),
                all_.percentile_ms(0.99), all_.most_ms());
    const double rested_s = std::chrono::duration<double>(rested_).count();
    std::printf("painted %.1f times a second while the person rests, %.1f s in all\n",
                static_cast<double>(painted_at_rest_) / std::max(rested_s, 1e-3), rested_s);
  }

  int gestures_;
  second_model::random_source chance_{20240611};
  host host_;
  Estructura window_{host_};
  picture_counter painted_;
  main_window shown_;
  moment resting_;
  std::chrono::nanoseconds rested_{};
  std::int64_t painted_at_rest_ = 0;
  std::atomic<bool> over_ = false;
  std::counting_semaphore<> served_{0};
  bool to_the_end_ = false;
  int devices_ = 0;
  std::int64_t settled_ = 0;
  std::int64_t most_ = 0;
  std::int64_t last_ = 0;
  timings all_;
  timings own_;
};

}  // namespace

int main(int argc, char** argv) {
  constexpr int fewest = 300;
  const int gestures = argc > 1 ? std::atoi(argv[1]) : 80'000;
  if (gestures < fewest) {
    std::fprintf(stderr, "carrera_larga GESTURES    (%d at least)\n", fewest);
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(random_events::warn);
  QApplication application(argc, argv);
  set_up_application(application);
  session session(gestures);
  return session.run() ? EXIT_SUCCESS : EXIT_FAILURE;
}
