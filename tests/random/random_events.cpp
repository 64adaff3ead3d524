// The real window under random use: what a person does by chance at the window without a toolkit is done
// again with mouse and keys on the widgets, and after each event, also in the middle of a run, everything
// that can be seen of the two must be the same.
//
//   random_events                   a few thousand events; a hundred thousand where ESTRUCTURA_LONG is 1
//   random_events EVENTS [SEED]
//
// On a difference it prints the seed and the script that leads there from a fresh window: run by
// `guion --ventana` its `expect` fails, run by `guion` it does not.
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include <QApplication>

#include "guion/guion.h"
#include "guion/qt_driver.h"
#include "tests/random/person.h"
#include "tests/random/snapshot.h"
#include "tests/random/warnings.h"
#include "tests/support/temporary_folder.h"
#include "ui/qt/window/application.h"

namespace {

using namespace estructura;
using random_events::difference;
using random_events::person;
using random_events::recorded_event;
using random_events::snapshot;
using random_events::take_snapshot;
namespace fs = std::filesystem;

constexpr int few_events = 6000;
constexpr int many_events = 100'000;
constexpr std::uint64_t usual_seed = 20240611;
/// Events after which a window is left for a new one, so that a script that shows a difference stays short.
constexpr int longest_life = 300;

/// The real window, that repeats what the person did.
class mirror {
 public:
  mirror() : driver_(desk_), interpreter_(driver_, desk_, shown_) {
    desk_.yielded = [this, script = desk_.yielded](int passed) {
      driver_.window().bring_up_to_date();
      script(passed);
      yields_ += passed;
      look_during_run();
      return 1;
    };
  }

  /// Repeats an event; where and how its course or its end differs from the person's.
  std::optional<difference> repeat(const recorded_event& one) {
    event_ = &one;
    moment_ = 0;
    yields_ = 0;
    found_.reset();
    desk_.boxes.clear();
    desk_.dialogs.clear();
    desk_.beeps = 0;
    const auto failure = interpreter_.run(one.script);
    if (found_) return found_;
    if (failure) return difference{"", "the script runs", failure->what};
    if (moment_ < one.during.size())
      return difference{"", "a run of " + std::to_string(one.during[moment_].yield) + " yields",
                        "one of " + std::to_string(yields_)};
    if (!desk_.answers.empty() || !desk_.paths.empty())
      return difference{"", "another question or dialog", "none"};
    return difference_between(one.after, take_snapshot(driver_, desk_));
  }

  /// The yield of the run at which the event differed, -1 when it did at its end.
  [[nodiscard]] std::int64_t yield_of_difference() const { return found_ ? yields_ : -1; }

 private:
  void look_during_run() {
    if (found_ || moment_ == event_->during.size() || event_->during[moment_].yield != yields_) return;
    found_ = difference_between(event_->during[moment_++].seen, take_snapshot(driver_, desk_));
    if (found_) driver_.window().poke().running = false;
  }

  guiones::scripted_desktop desk_;
  guiones::qt_driver driver_;
  std::ostringstream shown_;
  guiones::guion interpreter_;
  const recorded_event* event_ = nullptr;
  std::size_t moment_ = 0;
  std::int64_t yields_ = 0;
  std::optional<difference> found_;
};

std::map<std::string, std::string> files_of(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path().filename()] = support::lee(entry.path());
  return files;
}

/// What happened in all, to see that little of it was idle.
struct count {
  int windows = 0;
  int changes = 0;  ///< events that left another window than they found
  int inside = 0;   ///< things done in the middle of a run
  std::map<std::string, int> boxes;
  int dialogs = 0;
  int beeps = 0;

  void add(const recorded_event& one) {
    inside += static_cast<int>(one.during.size());
    for (const std::string& shown : one.after.boxes) ++boxes[shown.substr(0, shown.find(' '))];
    dialogs += static_cast<int>(one.after.dialogs.size());
    beeps += one.after.beeps;
  }
};

/// One window of each kind, from their start to their end or the end of their life.
class machine_pair {
 public:
  explicit machine_pair(second_model::random_source& chance) {
    fs::current_path(folders_[0].path());
    person_ = std::make_unique<person>(chance);
    fs::current_path(folders_[1].path());
    mirror_ = std::make_unique<mirror>();
    life_ = 1 + static_cast<int>(chance.below(longest_life));
  }

  [[nodiscard]] bool over() const { return done_ >= life_ || person_->ended(); }

  /// One more event; false when the windows differ.
  bool advance(count& count) {
    fs::current_path(folders_[0].path());
    const recorded_event one = done_ == 0 ? person_->prepare() : person_->act();
    ++done_;
    fs::current_path(folders_[1].path());
    found_ = mirror_->repeat(one);
    if (!found_ && !one.after.dialogs.empty() && files_of(folders_[0].path()) != files_of(folders_[1].path()))
      found_ = difference{"", "the files that the window without a toolkit wrote", "others"};
    script_ += last_;
    last_ = one.script;
    count.add(one);
    if (difference_between(before_, one.after)) ++count.changes;
    before_ = one.after;
    return !found_;
  }

  void report(std::ostream& out) const {
    const std::int64_t yield = mirror_->yield_of_difference();
    const std::string at_yield = yield < 0 ? "" : '@' + std::to_string(yield) + ' ';
    out << "differs" << (yield < 0 ? "" : " during a run") << ": " << found_->name
        << "\n  without a toolkit: " << found_->wanted << "\n  in the real window: " << found_->got
        << "\n--- the script that leads there ---\n"
        << script_;
    // What is looked at during a run is announced before the statement that starts it.
    const std::string expected =
        found_->name.empty() ? "" : at_yield + "expect " + found_->name + ' ' + found_->wanted + '\n';
    const std::size_t statement = last_.rfind('\n', last_.size() - 2) + 1;
    if (yield < 0)
      out << last_ << expected;
    else
      out << last_.substr(0, statement) << expected << last_.substr(statement);
    out << "--- its end ---\n";
  }

 private:
  const support::temporary_folder folders_[2];
  std::unique_ptr<person> person_;
  std::unique_ptr<mirror> mirror_;
  std::string script_;  ///< of all events but the last
  std::string last_;
  std::optional<difference> found_;
  snapshot before_;
  int life_ = 0;
  int done_ = 0;
};

int run(int events, std::uint64_t seed) {
  std::cout << "seed " << seed << ", " << events << " events" << std::endl;
  const fs::path home = fs::current_path();
  second_model::random_source chance(seed);
  std::unique_ptr<machine_pair> pair;
  count count;
  for (int event = 1; event <= events; ++event) {
    if (!pair || pair->over()) {
      pair = std::make_unique<machine_pair>(chance);
      ++count.windows;
    }
    if (pair->advance(count)) continue;
    std::cerr << "seed " << seed << ", event " << event << ", in window " << count.windows << '\n';
    pair->report(std::cerr);
    return EXIT_FAILURE;
  }
  pair.reset();
  fs::current_path(home);
  std::cout << "no difference: " << count.windows << " windows, " << count.changes << " changes, "
            << count.inside << " events within runs, " << count.dialogs << " file dialogs, " << count.beeps
            << " beeps, boxes:";
  for (const auto& [name, times] : count.boxes) std::cout << ' ' << name << ' ' << times;
  std::cout << std::endl;
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(random_events::warn);
  QApplication application(argc, argv);
  set_up_application(application);
  // A window that closes ends its program, not this one.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const char* const thorough = std::getenv("ESTRUCTURA_LONG");
  int events = thorough != nullptr && std::strcmp(thorough, "1") == 0 ? many_events : few_events;
  std::uint64_t seed = usual_seed;
  if (argc > 1) events = std::atoi(argv[1]);
  if (argc > 2) seed = std::strtoull(argv[2], nullptr, 10);
  const int status = run(events, seed);
  return random_events::warnings == 0 ? status : EXIT_FAILURE;
}
