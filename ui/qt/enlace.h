// The link between a control's record and its widget: what changed in the record is copied to the widget,
// what the person does in the widget goes through the window's door. No rule of the simulator stands on this
// side.
//
//   std::unique_ptr<enlace> link = enlaza(window.look(id::eje1), door, measures, panel);
//   if (link->atrasado(record)) link->copia(record);
//
// Whatever a widget emits while the record is being copied is not the person's doing and is dropped: the door
// counts the copies in progress.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QWidget>

#include "ui/estructura.h"
#include "ui/qt/medidas.h"

namespace estructura {

class enlace;

/// Where links leave what the person did.
class puerta {
 public:
  puerta(const puerta&) = delete;
  puerta& operator=(const puerta&) = delete;

  /// Performs one action of the person and shows what became of it. Does nothing while copying.
  virtual void actua(enlace& from, const std::function<void(Estructura&)>& action) = 0;

  [[nodiscard]] bool copiando() const { return copias_ > 0; }

 protected:
  puerta() = default;
  ~puerta() = default;

  class copia_en_curso {
   public:
    explicit copia_en_curso(puerta& door) : door_(door) { ++door_.copias_; }
    ~copia_en_curso() { --door_.copias_; }
    copia_en_curso(const copia_en_curso&) = delete;
    copia_en_curso& operator=(const copia_en_curso&) = delete;

   private:
    puerta& door_;
  };

 private:
  int copias_ = 0;
};

class enlace {
 public:
  enlace(const control& record, puerta& door) : door_(door), which_(record.which()), index_(record.index()) {}
  virtual ~enlace() = default;
  enlace(const enlace&) = delete;
  enlace& operator=(const enlace&) = delete;

  [[nodiscard]] id which() const { return which_; }
  [[nodiscard]] int index() const { return index_; }
  [[nodiscard]] virtual QWidget* widget() const = 0;

  [[nodiscard]] bool atrasado(const control& from) const { return !visto_ || cambios_ != from.changes(); }
  /// The widget may have changed by itself: the next copy looks at everything.
  void olvida() { visto_ = false; }
  void copia(const control& from);
  /// What the kind shows, before the widget has its place: whether it is seen would make it a window.
  void prepara(const control& from) { muestra(from); }

  /// A widget without a record of its own that is seen only while this one is.
  void acompana(QWidget* companion) { companions_.push_back(companion); }

 protected:
  /// Copies what is particular to the kind, touching the widget only where it differs.
  virtual void muestra(const control& from) = 0;

  [[nodiscard]] puerta& door() { return door_; }
  void actua(const std::function<void(Estructura&)>& action) { door_.actua(*this, action); }

 private:
  puerta& door_;
  std::vector<QWidget*> companions_;
  id which_;
  int index_;
  unsigned cambios_ = 0;
  bool visto_ = false;
};

/// The widget for a control, by kind, named after it, and its link. The widget stands on the panel, whose
/// letters it takes, but has no place there yet.
std::unique_ptr<enlace> enlaza(const control& record, puerta& door, const medidas& measures, QWidget* panel);

}  // namespace estructura
