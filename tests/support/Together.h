#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

/// Runs @p work(number) on @p count threads that start together.
inline void together(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> waiting{count};
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < count; ++number) {
    threads.emplace_back([&, number] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}
