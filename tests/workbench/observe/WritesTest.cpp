// What is kept of a write.

#include "Dialogue.h"
#include "HeldWritesText.h"

using namespace test;
using namespace workbench;

namespace {

class Writes : public Dialogue {
protected:
    // Writes a value to D as the runtime announces it.
    void Write(Octets const& request, Octets const& answer) {
        Here().object = Here().variable = &Variable(3);
        Send(request);
        Receive(answer);
        Wait();
    }
    // The answer does not come in time.
    void SendOnly(Octets const& request) {
        Here().object = Here().variable = &Variable(3);
        Send(request);
        Wait();
    }
    PointWrite const& Written() { return Points().WriteOf(Variable(3)); }
};

TEST_F(Writes, AnAcknowledgedOneKeepsWhatWasSent) {
    Write(WriteD(1, "31 C8"), Apdu("20 01 0F"));
    EXPECT_TRUE(Written().isAcknowledged);
    ASSERT_EQ(Written().values.size(), 1u);
    EXPECT_EQ(Written().values.front().Signed(), -56);
    EXPECT_EQ(Why(), "") << "the wait for further datagrams is not silence";
}

TEST_F(Writes, ErrorRejectAndAbortAreKept) {
    Write(WriteD(1, "31 05"), Apdu("50 01 0F 91 02 91 28"));
    EXPECT_EQ(Written().failure, "property: write-access-denied");
    EXPECT_FALSE(Written().isAborted);
    Write(WriteD(2, "31 05"), Apdu("60 02 09"));
    EXPECT_EQ(Written().failure, "reject: unrecognized-service");
    Write(WriteD(3, "31 05"), Apdu("71 03 00"));
    EXPECT_EQ(Written().failure, "abort: other");
    EXPECT_TRUE(Written().isAborted);
    EXPECT_EQ(HeldWritesText(observation, blocks), "");
}

TEST_F(Writes, OneWithoutAnAnswerIsNotAcknowledged) {
    Here().object = Here().variable = &Variable(3);
    Send(WriteD(1, "31 05"));
    Wait();
    EXPECT_FALSE(Written().isAcknowledged);
    EXPECT_EQ(Written().failure, "");
    EXPECT_EQ(Why().find("no answer since"), 0u);
}

TEST_F(Writes, TheLatestOfEachPriorityStaysInTheDevice) {
    EXPECT_EQ(HeldWritesText(observation, blocks), "");
    Write(WriteD(1, "31 05"), Apdu("20 01 0F"));
    Write(WriteD(2, "31 06"), Apdu("20 02 0F"));
    Write(WriteD(3, "31 07", ""), Apdu("20 03 0F"));
    std::string const text = HeldWritesText(observation, blocks);
    EXPECT_NE(
        text.find("  AHU.D: integer-value 1 present-value = 6 at priority 8\n"
                  "    release: WriteProperty integer-value 1 present-value, value Null, priority 8\n"
                  "  AHU.D: integer-value 1 present-value = 7 at priority 16 (the default; if the object "
                  "has a priority array)\n"),
        std::string::npos)
        << text;
    EXPECT_EQ(text.find(" = 5 "), std::string::npos);
    EXPECT_EQ(HeldWriteLines(observation, blocks).front(),
              "still in the device: AHU.D: integer-value 1 present-value = 6 at priority 8; release: "
              "WriteProperty integer-value 1 present-value, value Null, priority 8");
}

TEST_F(Writes, OneWithoutAnAnswerPossiblyStaysInTheDevice) {
    Write(WriteD(1, "31 05"), Apdu("20 01 0F"));
    SendOnly(WriteD(2, "31 06"));
    EXPECT_NE(
        HeldWritesText(observation, blocks)
            .find("AHU.D: integer-value 1 present-value = 6 at priority 8, possibly: the device has not "
                  "answered the write; before it 5\n"),
        std::string::npos)
        << HeldWritesText(observation, blocks);
    Write(WriteD(3, "31 07"), Apdu("20 03 0F"));
    EXPECT_EQ(HeldWritesText(observation, blocks).find("possibly"), std::string::npos);
}

TEST_F(Writes, ALateAcknowledgementCounts) {
    SendOnly(WriteD(1, "31 06"));
    observation.Close(Handle);
    EXPECT_NE(HeldWritesText(observation, blocks).find(", possibly: "), std::string::npos);
    network.Comes(Handle, network.time + 500 * Millisecond, Apdu("20 01 0F"), device);
    Send(ReadA(2), 8);
    Wait(8);
    EXPECT_TRUE(Written().isAcknowledged);
    EXPECT_NE(HeldWritesText(observation, blocks).find(" = 6 at priority 8\n"), std::string::npos);
}

TEST_F(Writes, ALateRefusalLeavesTheValueBefore) {
    Write(WriteD(1, "31 05"), Apdu("20 01 0F"));
    SendOnly(WriteD(2, "31 06"));
    observation.Close(Handle);
    network.Comes(Handle, network.time + 500 * Millisecond, Apdu("50 02 0F 91 02 91 28"), device);
    EndCycle();
    network.time += Second;
    EndCycle();
    EXPECT_EQ(Written().failure, "property: write-access-denied");
    EXPECT_NE(HeldWritesText(observation, blocks).find(" = 5 at priority 8\n"), std::string::npos);
}

TEST_F(Writes, OfTwoBlocksThatWriteTheSameTheLastCounts) {
    blocks.push_back(Block());
    blocks.back().name = "Twin";
    Observation both(network);
    both.Watch(blocks);
    unsigned id = 0;
    for (BlockConfig const& block : blocks) {
        Here() = {&block, &block.variables[3], &block.variables[3]};
        ++id;
        Octets const request = WriteD(id, id == 1 ? "31 05" : "31 06");
        both.Send(Handle, device, request.data(), static_cast<int>(request.size()));
        network.Comes(Handle, network.time, Apdu(id == 1 ? "20 01 0F" : "20 02 0F"), device);
        char buffer[100];
        sockaddr_in sender{};
        both.Receive(Handle, sender, buffer, sizeof buffer, 1000);
        network.time += Second;
    }
    ASSERT_EQ(HeldWriteLines(both, blocks).size(), 1u);
    EXPECT_EQ(HeldWriteLines(both, blocks)
                  .front()
                  .find("still in the device: Twin.D: integer-value 1 present-value = 6 at priority 8; "),
              0u);
}

TEST_F(Writes, ToTwoDevicesAreTwo) {
    Write(WriteD(1, "31 05"), Apdu("20 01 0F"));
    device = Address("10.0.0.6", 47808);
    Write(WriteD(2, "31 06"), Apdu("20 02 0F"));
    EXPECT_EQ(HeldWriteLines(observation, blocks).size(), 2u);
}

}  // namespace
