#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <set>
#include <string>

#include "Seeds.h"

namespace test {

namespace {

// A test with random inputs has thousands, of which the first are enough as seeds.
constexpr std::size_t MostPerTest = 40;

std::string TestName() {
    auto const* const info = ::testing::UnitTest::GetInstance()->current_test_info();
    if (info == nullptr) {
        return "Outside.Tests";
    }
    std::string name = std::string(info->test_suite_name()) + "." + info->name();
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

void Record(char const* pool, std::string_view content) {
    static std::mutex mutex;
    static std::map<std::string, std::set<std::string>> recorded;
    std::lock_guard<std::mutex> const lock(mutex);
    std::string const test = TestName();
    std::set<std::string>& known = recorded[pool + test];
    if (content.empty() || known.size() >= MostPerTest || !known.insert(std::string(content)).second) {
        return;
    }
    auto const folder = std::filesystem::path(std::getenv("DORVEL_RECORD_SEEDS")) / pool;
    std::filesystem::create_directories(folder);
    std::ofstream(folder / (test + "-" + std::to_string(known.size())), std::ios::binary) << content;
}

[[maybe_unused]] bool const Started = [] {
    seedRecorder = std::getenv("DORVEL_RECORD_SEEDS") != nullptr ? Record : nullptr;
    return true;
}();

}  // namespace

}  // namespace test
