#pragma once

#include <functional>
#include <thread>

namespace workbench {

// Starts a thread beside those of the cycles, which gets no signals and gives way to the cycles where the
// processor is short. Threads that it starts are the same. std::system_error if the system has no thread.
std::thread StartBackgroundThread(std::function<void()> work);

}  // namespace workbench
