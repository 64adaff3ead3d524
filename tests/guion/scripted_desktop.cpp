#include "guion/scripted_desktop.h"

#include "guion/words.h"

namespace estructura::guiones {

namespace {

std::string_view kind_name(box kind) {
  switch (kind) {
    case box::ok: return "ok";
    case box::ok_right: return "ok-right";
    case box::yesno: return "yesno";
    case box::yesnocancel: return "yesnocancel";
    case box::fault: break;
  }
  return "fault";
}

}  // namespace

answer scripted_desktop::ask(box kind, std::string_view text) {
  std::string shown{kind_name(kind)};
  if (kind != box::fault) shown.append(" ").append(text);
  boxes.push_back(shown);
  if (kind != box::yesno && kind != box::yesnocancel) return answer::ok;
  asking(kind);

  // The way out that changes least, for the action to end by when the script did not foresee the question.
  const answer way_out = kind == box::yesno ? answer::no : answer::cancel;
  if (answers.empty()) {
    unexpected("a question with no answer waiting: " + printed(text_value(shown)));
    return way_out;
  }
  const answer given = answers.front();
  answers.pop_front();
  if (given == answer::cancel && kind == box::yesno) {
    unexpected("this question has no Cancel: " + printed(text_value(shown)));
    return way_out;
  }
  return given;
}

std::string scripted_desktop::choose(bool save, std::string_view filter, std::string_view extension,
                                     std::string_view proposed) {
  std::string shown = save ? "save" : "open";
  for (const std::string_view part : {filter, extension, proposed}) shown.append("|").append(part);
  dialogs.push_back(shown);
  choosing(proposed);
  if (paths.empty()) {
    unexpected("a file dialog with no path waiting: " + printed(text_value(shown)));
    return {};
  }
  std::string path = std::move(paths.front());
  paths.pop_front();
  return path;
}

}  // namespace estructura::guiones
