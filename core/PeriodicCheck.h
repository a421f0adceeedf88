// How a long loop keeps the window alive without paying for it at every
// step: the clock is read once in a batch of steps, and a look is due when
// the interval has passed since the last one.
#pragma once

#include <chrono>
#include <cstdint>

namespace kestrow {

class PeriodicCheck {
 public:
  explicit PeriodicCheck(int intervalMs = 20, std::uint32_t batch = 1024) : interval_(intervalMs), batch_(batch) {}
  // Starts the interval anew.
  void Reset() {
    steps_ = 0;
    last_ = Clock::now();
  }
  // One step of the loop; true when a look is due.
  bool Due() {
    if (++steps_ < batch_) return false;
    steps_ = 0;
    const Clock::time_point now = Clock::now();
    if (now - last_ < interval_) return false;
    last_ = now;
    return true;
  }

 private:
  using Clock = std::chrono::steady_clock;
  std::chrono::milliseconds interval_;
  std::uint32_t batch_;
  std::uint32_t steps_ = 0;
  Clock::time_point last_ = Clock::now();
};

}  // namespace kestrow
