#include "ObjectInspector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <system_error>

#include "FakeEnvironment.h"
#include "SimulatedLink.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

constexpr char Valve[] =
    "device{name = 'AHU-1', instance = 1001, objects = {"
    "analog_output{instance = 3, name = 'Valve', present_value = 40, units = 'percent'},"
    "analog_input{instance = 1, name = 'Supply', present_value = 21.5}}}\n";

// A clock that several threads read.
class Clock : public FakeEnvironment {
public:
    long long Now() override { return now; }
    std::atomic<long long> now{Noon};
};

// Counts links and lets a test hold a reading until it allows it to go on.
struct Network {
    std::string deviceFile = Valve;
    std::atomic<int> links{0};
    std::atomic<bool> isHeld{false};
    std::atomic<bool> isBroken{false};

    std::unique_ptr<standard::Link> Make() {
        if (isBroken) {
            throw std::system_error(std::make_error_code(std::errc::too_many_files_open));
        }
        auto link = std::make_unique<SimulatedLink>(deviceFile);
        ++links;
        link->onSend = [this](standard::Datagram const&) {
            while (isHeld) {
                std::this_thread::yield();
            }
        };
        return link;
    }
};

class Inspector : public testing::Test {
protected:
    Inspector() {
        dorvel::SetEnvironment(&clock);
        block.name = "AHU";
        block.address = "10.0.0.1:47808";
        block.variables = {Variable(2, 3), Variable(2, 3), Variable(1, 1), Variable(1, 99)};
        inspector = std::make_unique<ObjectInspector>([this] { return network.Make(); });
    }
    ~Inspector() override {
        network.isHeld = false;
        inspector.reset();
        dorvel::SetEnvironment(nullptr);
    }

    static VariableConfig Variable(int code, int number) {
        return {"V", OpcUaType_Float, ObjectTypes().FindCode(code), Properties().FindCode(0), number};
    }

    // The end of a reading.
    std::shared_ptr<Inspection const> Result(std::size_t index) {
        auto inspection = inspector->Inspect(block, block.variables[index]);
        while (inspection->state == InspectionState::Reading) {
            std::this_thread::yield();
            inspection = inspector->Inspect(block, block.variables[index]);
        }
        return inspection;
    }

    static std::string ValueOf(Inspection const& inspection, std::string const& name) {
        for (Inspection::Property const& property : inspection.properties) {
            if (property.name == name) {
                return property.value;
            }
        }
        return "(none)";
    }

    Clock clock;
    Network network;
    BlockConfig block;
    std::unique_ptr<ObjectInspector> inspector;
};

TEST_F(Inspector, ReadsAllPropertiesOfTheObjectInWords) {
    EXPECT_EQ(inspector->Inspect(block, block.variables[0])->state, InspectionState::Reading);
    auto const result = Result(0);
    EXPECT_EQ(result->state, InspectionState::Done);
    EXPECT_EQ(result->reason, "");
    EXPECT_EQ(result->time, Noon);
    EXPECT_EQ(ValueOf(*result, "object-name"), "Valve");
    EXPECT_EQ(ValueOf(*result, "present-value"), "40 %");
    EXPECT_EQ(ValueOf(*result, "units"), "percent");
    std::string const priorities = ValueOf(*result, "priority-array");
    EXPECT_EQ(std::count(priorities.begin(), priorities.end(), '\n'), 15) << priorities;
}

TEST_F(Inspector, ReadsAnObjectOnceForAllItsVariables) {
    auto const first = Result(0);
    EXPECT_EQ(Result(1), first);
    EXPECT_EQ(network.links, 1);
    Result(2);
    EXPECT_EQ(network.links, 2);
}

TEST_F(Inspector, ReadsAgainWhatIsNotFreshAndShowsTheOldMeanwhile) {
    auto const first = Result(0);
    clock.now += 5 * Second - 1;
    EXPECT_EQ(inspector->Inspect(block, block.variables[0]), first);
    clock.now += 1;
    network.isHeld = true;
    auto const meanwhile = inspector->Inspect(block, block.variables[0]);
    EXPECT_EQ(meanwhile->state, InspectionState::Reading);
    EXPECT_EQ(meanwhile->time, Noon);
    EXPECT_EQ(meanwhile->properties.size(), first->properties.size());
    network.isHeld = false;
    EXPECT_EQ(Result(0)->time, Noon + 5 * Second);
    EXPECT_EQ(network.links, 2);
}

TEST_F(Inspector, NamesAnObjectThatTheDeviceDoesNotHave) {
    auto const result = Result(3);
    EXPECT_EQ(result->state, InspectionState::Failed);
    EXPECT_EQ(result->reason, "it has no analog-input 99");
    EXPECT_TRUE(result->properties.empty());
    EXPECT_EQ(result->time, 0);
}

TEST_F(Inspector, NamesADeviceThatDoesNotAnswer) {
    network.deviceFile = "device{name = 'AHU-1', instance = 1001}\n";
    block.fields = {{"NetworkNumber", 5LL}, {"MAC", std::string("7")}};
    auto const result = Result(0);
    EXPECT_EQ(result->state, InspectionState::Failed);
    EXPECT_EQ(result->reason, "not everything was read: it does not answer");
}

TEST_F(Inspector, NamesTheReasonWhenThereIsNoSocket) {
    network.isBroken = true;
    auto const result = Result(0);
    EXPECT_EQ(result->state, InspectionState::Failed);
    EXPECT_EQ(result->reason.substr(0, 28), "the device cannot be asked: ");
}

TEST_F(Inspector, LetsOnlyAFewObjectsWait) {
    for (int i = 0; i < 20; ++i) {
        block.variables.push_back(Variable(1, 200 + i));
    }
    network.isHeld = true;
    inspector->Inspect(block, block.variables[0]);
    while (network.links == 0) {
        std::this_thread::yield();
    }
    std::size_t accepted = 0;
    for (std::size_t i = 4; i < block.variables.size(); ++i) {
        auto const inspection = inspector->Inspect(block, block.variables[i]);
        accepted += inspection->state == InspectionState::Reading ? 1 : 0;
        if (inspection->state == InspectionState::Failed) {
            EXPECT_EQ(inspection->reason, "other objects are being read; look at it again in some seconds");
        }
    }
    EXPECT_EQ(accepted, ObjectInspector::MostWaiting);
    network.isHeld = false;
    EXPECT_EQ(Result(0)->state, InspectionState::Done);
}

TEST_F(Inspector, ForgetsTheOldestOfManyObjects) {
    for (std::size_t i = 0; i < ObjectInspector::MostKept; ++i) {
        block.variables.push_back(Variable(1, 200 + static_cast<int>(i)));
    }
    Result(0);
    for (std::size_t i = 4; i < block.variables.size(); ++i) {
        clock.now += 1;
        Result(i);
    }
    int const before = network.links;
    Result(block.variables.size() - 1);
    EXPECT_EQ(network.links, before);
    EXPECT_TRUE(inspector->Inspect(block, block.variables[0])->properties.empty());
}

// A network on which nothing happens, not even time.
class StillLink : public standard::Link {
public:
    explicit StillLink(std::atomic<int>& sendCount) : sent(sendCount) {}
    void Send(standard::Datagram const&) override { ++sent; }
    std::optional<standard::Datagram> Receive(Time) override {
        std::this_thread::yield();
        return std::nullopt;
    }
    Time Now() const override { return {}; }

private:
    std::atomic<int>& sent;
};

TEST_F(Inspector, EndsInTheMiddleOfAReading) {
    std::atomic<int> sent{0};
    inspector = std::make_unique<ObjectInspector>([&] { return std::make_unique<StillLink>(sent); });
    inspector->Inspect(block, block.variables[0]);
    inspector->Inspect(block, block.variables[2]);
    while (sent == 0) {
        std::this_thread::yield();
    }
    inspector.reset();
    EXPECT_EQ(sent, 1);
}

}  // namespace
