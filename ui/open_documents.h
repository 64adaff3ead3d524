// The two documents of the window as they stand: which files they are, and whether something is unsaved.
//
//   window.hex().name         -> "tabla.hex"
//   window.source().modified  -> true
//
// Loading and saving them, and the questions before unsaved work is abandoned, are ui/documents.h.
#pragma once

#include <string>

#include "common/file.h"

namespace estructura {

/// A file's name, lower-cased, and whether the content differs from it.
struct document {
  std::string name;  ///< as shown: in lower case
  std::string file;  ///< the one on disk that was read or written last under that name
  bool modified = false;
};

struct open_documents {
  document hex;
  document source;
  text_encoding source_encoding = text_encoding::utf8;  ///< in which the source was read, and is written
};

}  // namespace estructura
