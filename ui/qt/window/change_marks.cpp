#include "ui/qt/window/change_marks.h"

#include <algorithm>
#include <array>

#include "ui/inventory.h"
#include "ui/qt/widgets/list_view.h"
#include "ui/qt/widgets/text_label.h"

namespace estructura {

namespace {

constexpr std::array watched = {id::RE,     id::MDP,    id::MD,       id::PIL,    id::OPT,
                                id::TRISA,  id::TRISB,  id::TRISC,    id::STATUS, id::BPA,
                                id::BPB,    id::BPC,    id::INDF,     id::DIRFSR, id::PAGFSR,
                                id::SENTIM, id::divtim, id::contawdt, id::ciclos};

std::vector<std::string> content_of(const control& from) {
  return from.is() == kind::list ? from.rows() : std::vector<std::string>{from.text()};
}

}  // namespace

std::uint32_t difference(const std::string& before, const std::string& after) {
  std::uint32_t changed = 0;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const bool differs = before.size() != after.size() || before[i] != after[i];
    changed = changed << 1U | static_cast<std::uint32_t>(differs);
  }
  return changed;
}

change_marks::change_marks(const control_list& controls, const widget_finder& find) {
  for (std::size_t place = 0; place < controls.size(); ++place) {
    const control& one = controls[place];
    if (std::find(watched.begin(), watched.end(), one.which()) == watched.end()) continue;
    views_.push_back({place, find(one.which(), one.index()), one.changes(), content_of(one)});
  }
}

void change_marks::mark(const watched_view& view, std::uint32_t marks) {
  if (auto* const list = qobject_cast<QListView*>(view.widget))
    static_cast<list_view*>(list)->set_changes(marks);
  else
    static_cast<text_label*>(view.widget)->set_changes(marks);
}

void change_marks::update(const control_list& controls, bool running) {
  if (running) {
    if (!running_)
      for (const watched_view& view : views_) mark(view, 0);
    running_ = true;
    return;
  }
  running_ = false;

  bool changed = false;
  bool another_device = false;
  for (watched_view& view : views_) {
    const control& now = controls[view.place];
    view.marks = 0;
    if (view.seen == now.changes()) continue;
    view.seen = now.changes();
    std::vector<std::string> after = content_of(now);
    if (after == view.before) continue;
    changed = true;
    if (now.is() != kind::list) {
      view.marks = difference(view.before.front(), after.front());
    } else if (after.size() == view.before.size()) {
      for (std::size_t line = 0; line < after.size(); ++line)
        if (after[line] != view.before[line]) view.marks |= 1U << line;
    } else {
      another_device = true;
    }
    view.before = std::move(after);
  }
  if (!changed) return;
  for (const watched_view& view : views_) mark(view, another_device ? 0 : view.marks);
}

}  // namespace estructura
