#pragma once

#include <functional>
#include <thread>

namespace workbench {

// Starts a thread of the page, which gets no signals and gives way to the cycles where the processor is
// short. Threads that it starts are the same. std::system_error if the system has no thread.
std::thread StartPageThread(std::function<void()> work);

}  // namespace workbench
