// What a person may do at the window, drawn by chance: one gesture on one control.
//
//   gesture one = random_gesture(chance);            // anywhere
//   gesture other = gesture_on(chance, id::PB);       // on one of these boxes
//
// `chance` answers below(limit), 0..limit-1, and text(longest), bytes in Windows-1252; a fuzz target reads
// both from its input, so the order in which they are asked for is part of its corpus.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "common/text.h"
#include "core/devices.h"
#include "ui/inventory.h"

namespace estructura::support {

struct gesture {
  enum class action {
    click,         ///< on a button, check box or option
    enter,         ///< the Enter key in a text box
    select,        ///< `length` characters from `place` on
    click_text,    ///< with the caret at `place`
    keyup_text,    ///< likewise, a key let go
    type,          ///< `text`, in place of all there was
    click_row,     ///< line `place`; with Ctrl where `control_held`
    dblclick_row,  ///< line `place`
    pick,          ///< entry `place`
    press,         ///< the map, at height `place` of its scale
    dblclick,      ///< on a label
    focus,         ///< the Tab key brings the focus
    blur           ///< no control has the focus any more
  };
  action what = action::click;
  id which = id::none;
  int index = 0;
  int place = 0;
  int length = 0;
  bool control_held = false;
  std::string text;
};

/// Texts that some box takes, and some that none does.
inline constexpr std::array<std::string_view, 14> sample_texts = {
    "",   "0",   "1F",        "7FF",   "FFFF",  "MOVLW 5", "GOTO 0",
    "-1", "1e9", "BCF 5,234", "12345", "x\r\n", "4000",    "LÍO: NOP ; ñ\r\n GOTO LÍO\r\n"};

namespace detail {

template <class Chance>
gesture gesture_in_text(Chance& chance, gesture one) {
  constexpr int places = 40;
  constexpr int far_places = 2000;
  constexpr int longest = 20;
  switch (chance.below(6)) {
    case 0: one.what = gesture::action::enter; break;
    case 1:
      one.what = gesture::action::select;
      one.place = chance.below(places);
      one.length = chance.below(places);
      break;
    case 2:
      one.what = gesture::action::click_text;
      one.place = chance.below(far_places);
      break;
    case 3:
      one.what = gesture::action::keyup_text;
      one.place = chance.below(far_places);
      break;
    case 4:
      one.what = gesture::action::type;
      one.text = from_windows1252(chance.text(longest));
      break;
    default:
      one.what = gesture::action::type;
      one.text = sample_texts[static_cast<std::size_t>(chance.below(static_cast<int>(sample_texts.size())))];
      break;
  }
  return one;
}

}  // namespace detail

/// A gesture on a control: its kind says which ones there are.
template <class Chance>
gesture gesture_on(Chance& chance, id which) {
  constexpr int lines = 2049;
  constexpr int heights = 2100;
  gesture one;
  one.which = which;
  one.index = chance.below(declared(which).count);
  switch (declared(which).is) {
    case kind::button:
    case kind::check:
    case kind::option: break;
    case kind::text: return detail::gesture_in_text(chance, one);
    case kind::list:
      one.what = chance.below(3) == 0 ? gesture::action::dblclick_row : gesture::action::click_row;
      one.place = chance.below(lines);
      one.control_held = one.what == gesture::action::click_row && chance.below(2) == 1;
      break;
    case kind::combo:
      one.what = gesture::action::pick;
      one.place = chance.below(device_count);
      break;
    case kind::picture:
      one.what = gesture::action::press;
      one.place = chance.below(heights);
      break;
    case kind::label: one.what = gesture::action::dblclick; break;
    case kind::frame:
      one.what = chance.below(2) == 0 ? gesture::action::blur : gesture::action::focus;
      one.which = id::MP;
      one.index = 0;
      break;
  }
  return one;
}

/// A gesture anywhere.
template <class Chance>
gesture random_gesture(Chance& chance) {
  return gesture_on(chance, static_cast<id>(chance.below(id_count)));
}

}  // namespace estructura::support
