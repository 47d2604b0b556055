// Starting a block, and polling a silent device, without memory.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "BACnet_protocol.h"
#include "Heap.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"
#include "dorvelshare/VariableStore.h"

using dorvel::BACnet::BACnetProtocol;
using dorvel::BACnet::TBACnet;
using dorvel::BACnet::VelaBufferParameters;

namespace {

// Sockets without a device. It allocates nothing.
class SilentNetwork final : public dorvel::HostEnvironment {
public:
    SilentNetwork() { dorvel::SetEnvironment(this); }
    ~SilentNetwork() override { dorvel::SetEnvironment(nullptr); }
    SilentNetwork(SilentNetwork const&) = delete;
    SilentNetwork& operator=(SilentNetwork const&) = delete;

    int OpenSockets() const { return sockets; }

    int Open(unsigned short) override { return ++sockets; }
    unsigned short LocalPort(int) override { return 50000; }
    void Close(int) override { --sockets; }
    bool Send(int, sockaddr_in const&, void const*, int) override { return true; }
    int Receive(int, sockaddr_in&, void*, int, int) override { return -1; }
    long long Now() override { return 0; }
    long long SteadyNow() override { return 0; }
    long long LocalTimeDiff() override { return 0; }

private:
    int sockets = 0;
};

constexpr int Variables = 5;

// A block that is configured and not yet started. At its end the configuration destroys what it still owns.
class ConfiguredBlock {
public:
    explicit ConfiguredBlock(int network) {
        block.MAC = "192.168.10.7:47808";
        block.NetworkNumber = network;
        block.CountRepeat = 2;
        block.SetDataProvider(&provider);
        for (int number = 1; number <= Variables; ++number) {
            ScadaProtocol::ReadChannel const read{number, "", OpcUaType_Double};
            std::map<std::string, OpcUa_VariantHlp> properties;
            properties["ObjectType"].SetInt(1 + number % 2);
            properties["ObjectNumber"].SetInt(number);
            block.AddChannel(&read, nullptr, properties);
        }
    }
    ~ConfiguredBlock() {
        for (VelaBufferParameters const* left : block.PendingChannels()) {
            delete left->descriptor;
            delete left;
        }
    }
    ConfiguredBlock(ConfiguredBlock const&) = delete;
    ConfiguredBlock& operator=(ConfiguredBlock const&) = delete;

    BACnetProtocol block;

private:
    LuaDataProvider provider{std::make_shared<VariableStore>(), nullptr};
};

class StartWithoutMemory : public ::testing::TestWithParam<int> {
protected:
    StartWithoutMemory() {
        dorvel::SetLogSink([](std::string_view) {});
        ConfiguredBlock(0).block.Inited();  // allocates what is kept
    }
    ~StartWithoutMemory() override { dorvel::SetLogSink(nullptr); }

    SilentNetwork network;
};

}  // namespace

TEST_P(StartWithoutMemory, LeavesNoDeviceAndEveryDescriptorWithOneOwner) {
    long long const before = test::HeapBlocks();
    long long allocation = 0;
    for (bool wasRefused = true; wasRefused;) {
        ++allocation;
        {
            ConfiguredBlock configured(GetParam());
            bool hasThrown = false;
            test::FailAllocation(allocation);
            try {
                configured.block.Inited();
            } catch (std::bad_alloc const&) {
                hasThrown = true;
            }
            wasRefused = test::HasFailedAllocation();
            test::FailAllocation(0);
            ASSERT_EQ(configured.block.Device() == nullptr, hasThrown) << allocation;
            ASSERT_EQ(configured.block.PendingChannels().size(), hasThrown ? Variables : 0u) << allocation;
        }
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
        ASSERT_EQ(network.OpenSockets(), 0) << allocation;
    }
    EXPECT_GT(allocation, 3 * Variables);
}

INSTANTIATE_TEST_SUITE_P(Networks, StartWithoutMemory, ::testing::Values(0, 5));

// Neither an attempt nor the log line about its failure may throw out of the client.
TEST(SilentDevice, IsAFaultWithoutAnyMemory) {
    SilentNetwork const network;
    dorvel::SetLogSink([](std::string_view) {});
    ConfiguredBlock configured(0);
    configured.block.Inited();
    auto& client = const_cast<TBACnet&>(*configured.block.Device());  // the block's cycle needs memory
    long long allocation = 0;
    for (bool wasRefused = true; wasRefused;) {
        std::vector<WriteDataRec> values;
        bool hasThrown = false;
        client.ClearFault();
        test::FailAllocationsFrom(++allocation);
        try {
            client.Read(values);
        } catch (...) {
            hasThrown = true;
        }
        wasRefused = test::HasFailedAllocation();
        test::FailAllocation(0);
        ASSERT_FALSE(hasThrown) << allocation;
        ASSERT_TRUE(client.HasFault()) << allocation;
    }
    EXPECT_GT(allocation, 10);
    dorvel::SetLogSink(nullptr);
}
