// Text between the window's record and the widgets. The record holds UTF-8 with CR LF line ends and counts
// characters, a line end being two; the widgets hold UTF-16 with one unit a line end. This is the one place
// that converts.
//
//   to_qt("uno\r\ndos")                     -> "uno\ndos"
//   from_qt("uno\ndos")                      -> "uno\r\ndos"
//   unit_of_char("uno\r\ndos", 5)    -> 4
//   char_of_unit("uno\r\ndos", 4)    -> 5
//   change_between("uno\r\ndos", "uno\r\nX\r\ndos", 3)   -> units 4 to 4 become "X\n"
#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace estructura {

/// The text as a widget holds it.
QString to_qt(std::string_view text);

/// A widget's text, or the clipboard's, as the record holds it: every line end becomes CR LF.
std::string from_qt(const QString& text);

/// The same for a document of many lines. It has line ends of its own, the separators of lines and
/// paragraphs, and marks frames with two more characters; where a text holds one of these four, it holds a
/// stand-in, one unit each.
QString to_document(std::string_view text);
std::string from_document(const QString& text);
/// What the stand-ins in a document's text stand for.
QString without_stand_ins(QString text);

/// Position within a widget's text (UTF-16 units) of a character of the record's text, and back. Both walk
/// the record's text, so a lone CR or LF in it is one character and one unit. A position past the end is the
/// end.
int unit_of_char(std::string_view text, int character);
int char_of_unit(std::string_view text, int unit);

/// How many units a text takes in a widget.
int unit_count(std::string_view text);

/// One replacement that makes a document's text another: the units from `start` to `end` become `text`.
struct text_change {
  int start;
  int end;
  QString text;
};

/// The least that was changed between two of the record's texts. Where it could have been in several places
/// (a blank among blanks), it is taken nearest to the unit `caret` of the old one.
text_change change_between(std::string_view before, std::string_view after, int caret);

}  // namespace estructura
