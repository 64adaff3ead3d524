// What a screen reader says of each control: its name and its description, of each line of a list its
// address, its register's name and its value, and of the map what it shows. Without a toolkit: every front
// end applies the same texts.
//
//   const device& model = window.chip().devmodel;
//   accessible_name(window.look(id::PB, 3), model)          -> "Puerto B, bit 3"; "GPIO, bit 3" on a 12C50x
//   accessible_description(window.look(id::PB, 3), model)   -> "Pin de entrada. Marcada, está a 1."
//   accessible_row(window, id::MD, 1, 2)                    -> "dirección 12, banco 1, valor 3F"
//
// The texts are one table, which does not compile with a control missing. Tool-tips are another matter: they
// are shown to those who see. What an action changed is told by ui/announcement.h.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "ui/estructura.h"

namespace estructura {

[[nodiscard]] std::string accessible_name(const control& record, const family& of);
[[nodiscard]] std::string accessible_description(const control& record, const family& of);
/// Whether either text follows the record: most do not, and the values change at every frame of a run.
[[nodiscard]] bool accessible_texts_vary(id which);
/// A line of a list; empty where the text that is shown says it all.
[[nodiscard]] std::string accessible_row(Estructura& window, id list, int index, int row);
/// What is added to a line whose value the last action changed.
inline constexpr std::string_view accessible_row_changed = ", ha cambiado";
/// What the map shows, to be said before its description.
[[nodiscard]] std::string accessible_map(const map_view& map);

/// A value as it is read aloud: the signs before it only align it.
[[nodiscard]] std::string bare_value(std::string_view shown);

/// Titles and what they stand beside. A reader says the title in place of the name: "F" and "Direc." are not
/// here, since by themselves they say too little.
inline constexpr std::array<std::pair<id, id>, 12> accessible_titles = {{{id::Label5, id::source},
                                                                         {id::Label2, id::INS},
                                                                         {id::Label3, id::codop},
                                                                         {id::Label14, id::FREC},
                                                                         {id::Label9, id::contawdt},
                                                                         {id::Label8, id::ciclos},
                                                                         {id::Label22, id::SENTIM},
                                                                         {id::Label20, id::divtim},
                                                                         {id::Label16, id::dirdat},
                                                                         {id::Label15, id::dat},
                                                                         {id::loption, id::OPT},
                                                                         {id::lstatus, id::STATUS}}};

}  // namespace estructura
