#pragma once

#include <QSplitter>

namespace estructura {

/// Two panes and the handle between them, which shows quietly where it can be taken.
class pane_splitter final : public QSplitter {
 public:
  pane_splitter();

 protected:
  QSplitterHandle* createHandle() override;
};

}  // namespace estructura
