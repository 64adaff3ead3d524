// The binding between a control's record and its widget: what changed in the record is copied to the widget,
// what the person does in the widget goes through the window's door. No rule of the simulator stands on this
// side.
//
//   std::unique_ptr<binding> link = make_binding(window.look(id::eje1), sink, measures, panel);
//   if (link->is_stale(record)) link->copy(record);
//
// Whatever a widget emits while the record is being copied is not the person's doing and is dropped: the sink
// counts the copies in progress.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QWidget>

#include "ui/estructura.h"

namespace estructura {

class binding;

/// Where bindings leave what the person did.
class action_sink {
 public:
  action_sink(const action_sink&) = delete;
  action_sink& operator=(const action_sink&) = delete;

  /// Performs one action of the person and shows what became of it. Does nothing while copying.
  virtual void perform(binding& from, const std::function<void(Estructura&)>& action) = 0;

  [[nodiscard]] bool copying() const { return copies_ > 0; }

 protected:
  action_sink() = default;
  ~action_sink() = default;

  class copy_in_progress {
   public:
    explicit copy_in_progress(action_sink& sink) : sink_(sink) { ++sink_.copies_; }
    ~copy_in_progress() { --sink_.copies_; }
    copy_in_progress(const copy_in_progress&) = delete;
    copy_in_progress& operator=(const copy_in_progress&) = delete;

   private:
    action_sink& sink_;
  };

 private:
  int copies_ = 0;
};

class binding {
 public:
  binding(const control& record, action_sink& sink)
      : sink_(sink), which_(record.which()), index_(record.index()) {}
  virtual ~binding() = default;
  binding(const binding&) = delete;
  binding& operator=(const binding&) = delete;

  [[nodiscard]] id which() const { return which_; }
  [[nodiscard]] int index() const { return index_; }
  [[nodiscard]] virtual QWidget* widget() const = 0;

  [[nodiscard]] bool is_stale(const control& from) const { return !seen_ || changes_ != from.changes(); }
  /// The widget may have changed by itself: the next copy looks at everything.
  void forget() { seen_ = false; }
  void copy(const control& from);
  /// What the kind shows, before the widget has its place: whether it is seen would make it a window.
  void prepare(const control& from) { show_record(from); }

  /// A widget without a record of its own that is seen only while this one is.
  void accompany(QWidget* companion) { companions_.push_back(companion); }

 protected:
  /// Copies what is particular to the kind, touching the widget only where it differs.
  virtual void show_record(const control& from) = 0;

  [[nodiscard]] action_sink& sink() { return sink_; }
  void perform(const std::function<void(Estructura&)>& action) { sink_.perform(*this, action); }

 private:
  action_sink& sink_;
  std::vector<QWidget*> companions_;
  id which_;
  int index_;
  unsigned changes_ = 0;
  bool seen_ = false;
};

}  // namespace estructura
