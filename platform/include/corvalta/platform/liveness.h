#pragma once

#include <cstdint>
#include <memory>
#include <utility>

namespace corvalta::platform {

// The life of an object as work that may outlive it sees it: a handler that may destroy the
// object, a call queued on the loop, an event held back by the dispatcher. The object owns a
// Liveness; such work takes a token first and asks it before it touches the object again.
// Attempts (a connection, a request) are counted, so that work meant for an earlier attempt
// can tell that it has gone stale.
class Liveness {
 public:
  class Token {
   public:
    // The object lives and has not ended its liveness.
    [[nodiscard]] bool alive() const { return !attempts_.expired(); }
    // Alive, and no other attempt has started since the token was taken.
    [[nodiscard]] bool holds() const {
      const auto attempts = attempts_.lock();
      return attempts != nullptr && *attempts == attempt_;
    }

   private:
    friend class Liveness;
    Token(std::weak_ptr<const std::uint64_t> attempts, std::uint64_t attempt)
        : attempts_(std::move(attempts)), attempt_(attempt) {}

    std::weak_ptr<const std::uint64_t> attempts_;
    std::uint64_t attempt_;
  };

  Liveness() = default;
  Liveness(const Liveness&) = delete;
  Liveness& operator=(const Liveness&) = delete;

  [[nodiscard]] Token token() const { return {attempts_, attempts_ ? *attempts_ : 0}; }
  // Tokens taken before no longer hold.
  void nextAttempt() {
    if (attempts_) ++*attempts_;
  }
  // Expires every token, for an object that stays in memory but is done (a closed window).
  void end() { attempts_.reset(); }

 private:
  std::shared_ptr<std::uint64_t> attempts_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace corvalta::platform
