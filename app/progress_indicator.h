#pragma once
// The status bar's sign that a long operation of the panels goes on and how far it is: what it
// does, its steps as a bar, and the wait it is in. Hidden while nothing goes on.

#include <QWidget>
#include <string>

class QLabel;
class QProgressBar;

namespace ombrelay {

class ProgressIndicator : public QWidget {
 public:
  // Waits shorter than this pass too quickly to be worth a word.
  static constexpr float kShownWaitSeconds = 0.5F;

  explicit ProgressIndicator(QWidget* parent = nullptr);

  // As the plug-in tells it: total 0 has no count, waitSeconds 0 is no wait.
  void Show(const std::string& doing, int done, int total, float waitSeconds);
  QString Text() const;

 private:
  QLabel* label_;
  QProgressBar* bar_;
};

}  // namespace ombrelay
