#include "guion/guion.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <ostream>
#include <utility>

#include "common/text.h"
#include "guion/looks.h"

namespace estructura::guiones {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::string_view without_blanks_around(std::string_view line) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = line.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

}  // namespace

guion::guion(window_driver& driver, scripted_desktop& desk, std::ostream& shown)
    : driver_(driver), desk_(desk), shown_(shown) {
  desk_.unexpected = [this](const std::string& what) { fail(what); };
  desk_.yielded = [this](int passed) { return yielded(passed); };
  desk_.yields_to_next = [this] { return yields_to_next(); };
}

std::optional<script_failure> guion::run(std::string_view script) {
  if (script.starts_with(byte_order_mark)) script.remove_prefix(byte_order_mark.size());
  for (int line = 1; !script.empty() && !failure_; ++line) {
    const std::string_view text = script.substr(0, script.find('\n'));
    script.remove_prefix(std::min(script.size(), text.size() + 1));
    run_line(line, without_blanks_around(text));
  }
  return failure_;
}

void guion::run_line(int line, std::string_view text) {
  if (text.empty() || text.front() == '#') return;
  line_ = line;
  if (!is_valid_utf8(text)) return fail("the line is not UTF-8");
  if (text.front() != '@') return perform(line, text);

  const std::string_view mark = text.substr(0, text.find_first_of(" \t"));
  const auto count = read_number(mark.substr(1));
  const std::string_view statement = without_blanks_around(text.substr(mark.size()));
  if (!count || *count < 1) return fail("a number from 1 on is wanted behind @: " + std::string(mark));
  if (*count > std::numeric_limits<std::int64_t>::max() - yields_) return fail("no run lasts so long");
  if (statement.empty()) return fail("the statement is missing behind " + std::string(mark));
  waiting_.push_back({yields_ + *count, line, std::string(statement)});
}

void guion::perform(int line, std::string_view statement) {
  // A statement inside a yield may start a run of its own, which counts for itself.
  const int outer_line = std::exchange(line_, line);
  const std::int64_t outer_yields = std::exchange(run_yields_, 0);
  desk_.granted = 1;
  try {
    script_line words(statement);
    dispatch(words);
  } catch (const std::exception& error) {
    fail(error.what());
  }
  run_yields_ = outer_yields;
  line_ = outer_line;
}

void guion::fail(const std::string& what) {
  if (!failure_) failure_ = script_failure{line_, what};
}

std::int64_t guion::yields_to_next() const {
  std::int64_t nearest = 0;
  for (const waiting_statement& waiting : waiting_) {
    const std::int64_t left = std::max<std::int64_t>(1, waiting.at_yield - yields_);
    nearest = nearest == 0 ? left : std::min(nearest, left);
  }
  return nearest;
}

int guion::yielded(int passed) {
  yields_ += passed;
  run_yields_ += passed;
  while (!failure_ && do_next_waiting()) {
  }
  const bool runs = driver_.chip().running;
  if (!failure_ && runs && waiting_.empty() && run_yields_ >= most_yields)
    fail("the run has yielded " + std::to_string(most_yields) + " times and no @ statement is left");
  if (failure_) driver_.change_machine([](chipstate& chip) { chip.running = false; });
  if (failure_ || !runs || !waiting_.empty()) return 1;
  return static_cast<int>(most_yields - run_yields_);
}

bool guion::do_next_waiting() {
  const auto next =
      std::ranges::find_if(waiting_, [&](const auto& waiting) { return waiting.at_yield <= yields_; });
  if (next == waiting_.end()) return false;
  const waiting_statement ready = *next;
  waiting_.erase(next);
  perform(ready.line, ready.text);
  return true;
}

}  // namespace estructura::guiones
