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
    EXPECT_TRUE(observation.Of(Block())->HeldWrites().empty());
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
}

}  // namespace
