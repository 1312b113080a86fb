#pragma once

#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;
class QWidget;

namespace corvalta::app {

// One game per player and configuration folder, so that two games never write their tables
// over each other. The first start locks a file in the folder for as long as it lives (the
// kernel lets go of the lock when the process ends, however it ends, so the next start takes
// over at once) and listens on a local socket named after that file. A later start finds the
// lock held, connects to ask the running game to come to the front, and goes without touching
// the stored files. Where the folder takes no lock (no folder, a file system without locks),
// every start plays.
class OneGamePerFolder {
 public:
  explicit OneGamePerFolder(const std::string& folder);
  ~OneGamePerFolder();
  OneGamePerFolder(const OneGamePerFolder&) = delete;
  OneGamePerFolder& operator=(const OneGamePerFolder&) = delete;

  // False when another game runs on the folder; it has been asked to come to the front.
  [[nodiscard]] bool first() const { return first_; }
  // Calls `comeToFront` from the event loop at each later start. Needs the QApplication.
  void onLaterStart(std::function<void()> comeToFront);

 private:
  void answerLaterStarts();

  bool first_ = true;
  int lock_ = -1;
  int listener_ = -1;
  std::function<void()> comeToFront_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

// Shows `window` unminimised above the others with the keyboard focus, and above it the modal
// window that is up, if any.
void bringToFront(QWidget* window);

}  // namespace corvalta::app
