#include "SystemClock.h"

#include <ctime>

namespace simulator {

Moment SystemClock::Now() const {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    auto const wall = std::chrono::system_clock::now();
    std::time_t const seconds = std::chrono::system_clock::to_time_t(wall);
    std::tm local{};
    localtime_r(&seconds, &local);
    Moment moment;
    moment.sinceStart = duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
    moment.local =
        duration_cast<milliseconds>(wall.time_since_epoch()) + std::chrono::seconds(local.tm_gmtoff);
    return moment;
}

}  // namespace simulator
