// The strip of line numbers beside a text. It takes no focus and no clicks; whoever owns the text paints it.
#pragma once

#include <functional>

#include <QWidget>

namespace estructura {

class line_numbers final : public QWidget {
 public:
  line_numbers(QWidget& text, std::function<void(const QRect& region)> paint);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::function<void(const QRect& region)> paint_;
};

}  // namespace estructura
