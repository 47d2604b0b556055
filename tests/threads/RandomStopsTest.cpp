// Blocks on eight threads whose runtime stops and starts at random moments, while other threads set
// variables, read shared data, and switch log and trace. Nothing deadlocks, every stop ends with the pending
// transaction, and a race detector finds nothing.

#include <random>
#include <shared_mutex>

#include "BACnet_protocol.h"
#include "Concurrency.h"
#include "LogCapture.h"
#include "Plant.h"
#include "TBACnet.h"
#include "UnsteadyDevice.h"
#include "Variants.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr int Threads = 8;
constexpr int Attempts = 2;
constexpr char Fields[] = "CountRepeat = 2, WriteCondition = 1,";
// The datagrams that a block may still send after a stop: those of the pending transaction.
constexpr unsigned long MostAfterAStop = Attempts * UnsteadyDevice::MostOfAnAttempt;
constexpr std::chrono::seconds Patience(500);

// The number of datagrams sent on each line when the runtime stops, recorded after the driver's processor.
class StopRecorder {
public:
    explicit StopRecorder(LineNetwork const& observed) {
        static int const registered =
            RegisterConfigProcessor("StopRecorder", 321, Record, nullptr, nullptr, nullptr);
        EXPECT_EQ(registered, 0);
        network = &observed;
    }
    ~StopRecorder() { network = nullptr; }
    StopRecorder(StopRecorder const&) = delete;
    StopRecorder& operator=(StopRecorder const&) = delete;

    // The largest number of datagrams sent on a line since.
    static unsigned long MostSince() {
        unsigned long most = 0;
        for (auto const& [line, sent] : network.load()->Sent()) {
            auto const before = sentBefore.find(line);
            most = std::max(most, sent - (before == sentBefore.end() ? 0 : before->second));
        }
        return most;
    }

private:
    static int Record(void const*, ConfigProcessorMode mode, ControllerConfig*) {
        LineNetwork const* const observed = network;
        if (observed && mode == ConfigProcessorMode::Stop) {
            sentBefore = observed->Sent();
        }
        return 0;
    }

    static inline std::atomic<LineNetwork const*> network{nullptr};
    static inline std::map<int, unsigned long> sentBefore;
};

// Switches log and trace as an operator does, with sinks that count.
class LogSwitcher {
public:
    void operator()(unsigned round) {
        dorvel::EnableUserTrace(round % 3 == 0);
        std::atomic<unsigned long>& lines = round % 2 == 0 ? even : odd;
        dorvel::SetLogSink([&lines](std::string_view) { ++lines; });
    }
    static unsigned long Lines() { return even + odd; }

private:
    static inline std::atomic<unsigned long> even{0};
    static inline std::atomic<unsigned long> odd{0};
};

// Calls that several add-ins and hosts may make at any time.
void LookAtWhatIsShared(unsigned round) {
    EXPECT_EQ(RegisterExternalSTLib("BACnet", [](lua_State*) { return 1; }), -1) << "the name is taken";
    BACnetProtocol::RegAsLuaType();
    EXPECT_FALSE(BACnetProtocol::getId().empty());
    EXPECT_LE(WriteInvokeId.load(), 255);
    static_cast<void>(TBACnet::IsTerminated.load());
    if (round % 1024 == 0) {
        Plant const another(1);
        EXPECT_EQ(another.Faults(), 0);
    }
}

class RandomStops : public ::testing::Test {
protected:
    RandomStops() { TBACnet::IsTerminated = false; }
    ~RandomStops() override { TBACnet::IsTerminated = false; }

    static std::unique_ptr<Plant> MakePlant() {
        auto plant = std::make_unique<Plant>(Threads);
        for (int block = 0; block < 2 * Threads; ++block) {
            plant->Add("CountRepeat = 2, WriteCondition = " + std::to_string(block % 2) + ",");
        }
        return plant;
    }

    LogCapture log;
};

TEST_F(RandomStops, EndWithTheTransactionsThatAreUnderWay) {
    constexpr int rounds = 2000;
    constexpr int roundsOfAPlant = 100;
    DeadlockWatch const watch(Patience);
    UnsteadyDevice device(1);
    LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
    std::shared_mutex plantMutex;  // locked exclusively to destroy the plant
    std::unique_ptr<Plant> plant = MakePlant();
    StopRecorder const recorder(network);
    std::mt19937 random(2);

    Meanwhile const switching{LogSwitcher()};
    Meanwhile const looking(LookAtWhatIsShared);
    Meanwhile const setting([&](unsigned round) {
        std::shared_lock<std::shared_mutex> const lock(plantMutex);
        for (long long const id : plant->Ids()) {
            plant->Variables().Write(id + 1, "", Double(round), 1);
            plant->Runtime().RequestWrite(id + 1);
        }
    });

    for (int round = 1; round <= rounds; ++round) {
        long const datagrams = static_cast<long>(random() % 60) + 1;
        device.SetFuse(datagrams);
        plant->Runtime().Start();
        device.Wait();
        plant->Runtime().Stop();
        ASSERT_LE(StopRecorder::MostSince(), MostAfterAStop) << "round " << round;
        if (round % roundsOfAPlant == 0) {
            std::unique_lock<std::shared_mutex> const lock(plantMutex);
            plant.reset();
            ASSERT_EQ(network.OpenSockets(), 0u);
            plant = MakePlant();
        }
    }
    EXPECT_GT(LogSwitcher::Lines(), 0u);
}

// A few cycles each, so that stops occur before tasks begin, while they run, and after they have ended.
TEST_F(RandomStops, MeetTasksThatEndByThemselves) {
    DeadlockWatch const watch(Patience);
    UnsteadyDevice device(3);
    LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
    std::unique_ptr<Plant> const plant = MakePlant();
    StopRecorder const recorder(network);
    std::mt19937 random(4);
    for (int round = 1; round <= 2000; ++round) {
        plant->Runtime().Start(random() % 4 + 1);
        Meanwhile const asking([&](unsigned asked) {
            if (asked == 5) {
                plant->Runtime().RequestStop();
            }
        });
        for (unsigned pause = random() % 50; pause > 0; --pause) {
            std::this_thread::yield();
        }
        plant->Runtime().Stop();
        ASSERT_LE(StopRecorder::MostSince(), MostAfterAStop) << "round " << round;
        ASSERT_TRUE(plant->Runtime().WaitFinished(std::chrono::milliseconds(0)));
    }
}

// Eight runtimes with a Lua state and a thread each are created, run, stopped, run again and destroyed at the
// same time. They share the driver's IsTerminated, so they also stop and start one another.
TEST_F(RandomStops, OfRuntimesSideBySideLeaveNothingOpen) {
    constexpr int rounds = 150;
    DeadlockWatch const watch(Patience);
    UnsteadyDevice device(5);
    LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
    {
        Meanwhile const switching{LogSwitcher()};
        AtOnce(Threads, [](int number) {
            std::mt19937 random(static_cast<unsigned>(number));
            for (int round = 0; round < rounds; ++round) {
                Plant plant(2);
                plant.Add(Fields);
                plant.Add(Fields);
                for (unsigned run = random() % 3; run > 0; --run) {
                    plant.Runtime().Start(random() % 2 * 3);
                    for (unsigned pause = random() % 20; pause > 0; --pause) {
                        std::this_thread::yield();
                    }
                    plant.Runtime().Stop();
                }
            }
        });
    }
    EXPECT_EQ(network.OpenSockets(), 0u);
    EXPECT_GT(network.TotalSent(), 0u);
}

// IsTerminated changes at random: cycles end early or run, and deliver complete values in both cases.
TEST_F(RandomStops, OfTheMarkAloneEndCyclesAndNothingElse) {
    constexpr int cycles = 3000;
    DeadlockWatch const watch(Patience);
    LineNetwork network([](int, Octets const& request) {
        return std::vector<LineAnswer>{{IsWrite(request) ? WriteDone(request) : ValueOf42(request)}};
    });
    Meanwhile const flickering([](unsigned round) {
        ConfigProcessorCallback(
            nullptr, round % 2 == 0 ? ConfigProcessorMode::Stop : ConfigProcessorMode::Start, nullptr);
    });
    Meanwhile const switching{LogSwitcher()};
    AtOnce(Threads, [](int) {
        auto const store = std::make_shared<VariableStore>();
        LuaDataProvider provider(store, nullptr);
        BACnetProtocol block;
        block.SetDataProvider(&provider);
        block.MAC = "192.168.10.7:47808";
        ScadaProtocol::ReadChannel const read{store->Declare("Read", OpcUaType_Double), "", OpcUaType_Double};
        block.AddChannel(&read, nullptr, {{"ObjectType", Int32(1)}});
        block.Inited();
        for (int cycle = 0; cycle < cycles; ++cycle) {
            block.Execute();
            ASSERT_FALSE(block.State().Fault);
        }
        VariableState state;
        store->Read(read.Id, "", state);
        double number = 42;
        state.Value.GetDouble(number);
        EXPECT_EQ(number, 42);
    });
}

}  // namespace
