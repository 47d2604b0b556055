// 10,000 variables in one block: set-up, polls, a lost device, writes and destruction in proportional work.

#include "LimitFixture.h"
#include "Variants.h"

using namespace test;

namespace {

constexpr int Many = 10000;
constexpr double Proportional = 2.1;  // twice as many variables, with a margin for the growth of tables

std::vector<LineAnswer> AnswerReads(int, Octets const& request) {
    return {{IsWrite(request) ? WriteDone(request) : ValueOf42(request)}};
}

// The work of each phase in the life of a block.
struct Work {
    HeapTotals setUp;
    HeapTotals firstPoll;
    HeapTotals poll;
    HeapTotals lostPoll;
    long long held = 0;  // octets, between set-up and destruction
    long long left = 0;  // octets, afterwards
};

class ManyVariables : public LimitFixture {
protected:
    using Adder = void (*)(Block& block, int index);

    static Work Live(int count, Adder add) {
        Work work;
        bool isSilent = false;
        LineNetwork network([&](int line, Octets const& request) {
            return isSilent ? std::vector<LineAnswer>() : AnswerReads(line, request);
        });
        AllocationWatch const life;
        {
            Block block;
            work.setUp = Measure([&] {
                for (int index = 0; index < count; ++index) {
                    add(block, index);
                }
                block.driver.Inited();
            });
            work.held = life.Growth();
            work.firstPoll = Measure([&] { block.driver.Execute(); });
            EXPECT_FALSE(block.HasFault());
            long long const afterPoll = life.Growth();
            work.poll = Measure([&] { block.driver.Execute(); });
            EXPECT_EQ(life.Growth(), afterPoll) << "a cycle leaves nothing";
            isSilent = true;
            work.lostPoll = Measure([&] { block.driver.Execute(); });
            EXPECT_TRUE(block.HasFault());
        }
        work.left = life.Growth() - SocketsOf(network);
        return work;
    }

    static void ExpectProportional(Adder add) {
        Live(1, add);  // builds the tables of the first use
        Work const small = Live(Many / 2, add);
        Work const large = Live(Many, add);
        EXPECT_LT(Ratio(large.setUp, small.setUp), Proportional);
        EXPECT_LT(Ratio(large.firstPoll, small.firstPoll), Proportional);
        EXPECT_LT(Ratio(large.poll, small.poll), Proportional);
        EXPECT_LT(Ratio(large.lostPoll, small.lostPoll), Proportional);
        EXPECT_LT(static_cast<double>(large.held), Proportional * static_cast<double>(small.held));
        EXPECT_LT(large.held / Many, 2048) << "octets a variable, with those in the runtime";
        EXPECT_EQ(large.left, 0);
    }

private:
    template <class Body>
    static HeapTotals Measure(Body const& body) {
        AllocationWatch const watch;
        body();
        return watch.Made();
    }
    // They are closed with their block.
    static long long SocketsOf(LineNetwork const& network) {
        EXPECT_EQ(network.OpenSockets(), 0u);
        return 0;
    }
};

void AddToOwnObject(Block& block, int index) {
    block.Add(code::AnalogInput, code::PresentValue, index, {OpcUaType_DataValue, OpcUaType_Double});
}
void AddToOneObject(Block& block, int /*index*/) {
    block.Add(code::AnalogInput, code::PresentValue, 1, {OpcUaType_DataValue, OpcUaType_Double});
}
void AddWritable(Block& block, int index) {
    long long const id = block.Add(code::AnalogInput, code::PresentValue, index, OpcUaType_Double, true);
    block.store->Write(id + 1, "", Double(index), 0);
}

TEST_F(ManyVariables, OfAsManyObjectsNeedWorkAndMemoryInProportion) {
    ExpectProportional(AddToOwnObject);
}

TEST_F(ManyVariables, OfOneObjectNeedWorkAndMemoryInProportion) {
    ExpectProportional(AddToOneObject);
}

TEST_F(ManyVariables, OfAsManyObjectsAreAllPolledAndDelivered) {
    LineNetwork network(AnswerReads);
    Block block;
    std::vector<long long> ids;
    for (int number = 0; number < Many; ++number) {
        ids.push_back(block.Add(code::AnalogInput, code::PresentValue, number, OpcUaType_Double));
    }
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_FALSE(block.HasFault());
    EXPECT_EQ(network.TotalSent(), static_cast<unsigned long>(Many));
    for (long long const id : ids) {
        ASSERT_EQ(block.NumberOf(id), 42) << id;
    }
}

// One request for all of them: two octets each after the object, and Status_Flags.
TEST_F(ManyVariables, OfOneObjectFitOneRequestAndTheFirstGetsTheValue) {
    std::vector<std::size_t> sizes;
    LineNetwork network([&sizes](int line, Octets const& request) {
        sizes.push_back(request.size());
        return AnswerReads(line, request);
    });
    Block block;
    std::vector<long long> ids;
    for (int index = 0; index < Many; ++index) {
        ids.push_back(block.Add(code::AnalogInput, code::PresentValue, 1, OpcUaType_Double));
    }
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_FALSE(block.HasFault());
    EXPECT_EQ(sizes, std::vector<std::size_t>{10 + 5 + 2 + 2 * (Many + 1)});
    EXPECT_EQ(block.NumberOf(ids.front()), 42);
    EXPECT_EQ(block.StateOf(ids[1]).Time, 0);
    EXPECT_EQ(block.StateOf(ids.back()).Time, 0);
}

TEST_F(ManyVariables, AreAllWrittenInASecondEach) {
    LineNetwork network(AnswerReads);
    Block block;
    block.driver.WriteCondition = ProtocolWriteCondition::Always;
    for (int number = 0; number < Many; ++number) {
        AddWritable(block, number);
    }
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_FALSE(block.HasFault());
    EXPECT_EQ(network.TotalSent(), 2ul * Many);
    EXPECT_EQ(network.Elapsed(0), 1000ll * Many) << "each write waits for stale answers";
}

TEST_F(ManyVariables, BecomeBadWhenTheDeviceIsLost) {
    LineNetwork network([](int, Octets const&) { return std::vector<LineAnswer>(); });
    Block block;
    std::vector<long long> ids;
    for (int number = 0; number < Many; ++number) {
        AddToOwnObject(block, number);
    }
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_TRUE(block.HasFault());
    EXPECT_EQ(network.TotalSent(), 1u) << "the first object that fails ends the poll";
    for (dorvel::BACnet::tagReadData const* tag :
         block.driver.Device()->Tags().at(ObjectTypeEnum::Analog_Input).at(Many - 1)) {
        EXPECT_EQ(block.StateOf(tag->descriptor->ReadId).Status, OpcUa_StatusCode{0x80000000});
    }
}

}  // namespace
