// A person who does anything at all, by chance, at the window without a toolkit; what was done is kept as a
// script, so that the same can be done elsewhere and done again.
//
//   modelo::azar chance(seed);
//   persona someone(chance);
//   const suceso one = someone.actua();
//   one.script          -> "answer no\n@3 click PA(2)\n@40 click ejecutar\nclick ejecutar\n"
//   one.after           -> the window afterwards
//
// Questions and dialogs are answered by chance too, and a continuous run is interrupted by further gestures
// until one of them stops it.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "guion/conductor_libre.h"
#include "guion/guion.h"
#include "tests/apoyo/gestos.h"
#include "tests/azar/foto.h"
#include "tests/modelo/azar.h"

namespace estructura::azar {

/// One event, with all that was answered and done before it was over.
struct suceso {
  struct momento {
    std::int64_t yield;  ///< of the run, after which something was done in it
    foto seen;           ///< just after that
  };
  std::string script;
  std::vector<momento> during;
  foto after;
};

class persona {
 public:
  /// The window is just loaded; files are those of the current folder.
  explicit persona(modelo::azar& chance);

  /// What is done before anything else: files to load, a program to run.
  suceso prepara();
  suceso actua();
  [[nodiscard]] bool ended() { return driver_.window().ended(); }

 private:
  /// Chance as the gestures ask for it.
  class suerte {
   public:
    explicit suerte(modelo::azar& chance) : chance_(chance) {}
    int below(int limit) { return static_cast<int>(chance_.below(limit)); }
    bool one_in(int times) { return below(times) == 0; }
    std::string text(int longest);

   private:
    modelo::azar& chance_;
  };

  suceso haz(const std::vector<std::string>& statements);
  void answer_question(box kind);
  void answer_dialog(std::string_view proposed);
  int yielded(int passed);
  int pausa();

  std::string sentencia();
  std::string en_guion(const apoyo::gesto& one);
  apoyo::gesto seleccion_en_fuente();
  id control_al_azar();
  std::string texto_para(id which);
  std::string programa_al_azar();

  suerte chance_;
  guiones::escritorio desk_;
  guiones::conductor_libre driver_;
  std::ostringstream shown_;
  guiones::guion interpreter_;
  suceso now_;
  std::string answers_;
  std::string inside_;       ///< lines of what was done in the run
  std::int64_t yields_ = 0;  ///< of the event
  std::int64_t next_ = 0;    ///< yield after which something is done
  std::int64_t last_ = 0;    ///< yield after which the run is stopped
};

}  // namespace estructura::azar
