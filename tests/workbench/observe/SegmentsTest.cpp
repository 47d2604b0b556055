// What a block's state says of segmented answers.

#include "Dialogue.h"
#include "LogCapture.h"

using namespace test;
using namespace workbench;

namespace {

class Segments : public Dialogue {
protected:
    // The parts of AnswerA, in three segments.
    Octets Segment(unsigned number, bool more) {
        Octets const all = Hex(AnswersA);
        std::size_t const begin = number * 12;
        Octets const part(all.begin() + static_cast<std::ptrdiff_t>(begin),
                          number == 2 ? all.end() : all.begin() + static_cast<std::ptrdiff_t>(begin + 12));
        return Frame(Octets{static_cast<char>(more ? 0x3C : 0x38), 1, static_cast<char>(number), 1, 14} +
                     part);
    }
    void Acknowledge(unsigned number) { Send(Frame(Octets{0x40, 1, static_cast<char>(number), 1}, "01 04")); }
};

TEST_F(Segments, AreJoined) {
    Exchange(ReadA(1), Segment(0, true));
    Acknowledge(0);
    Receive(Segment(1, true));
    Acknowledge(1);
    Receive(Segment(2, false));
    Acknowledge(2);
    Wait();
    EXPECT_EQ(Why(), "");
    EXPECT_EQ(Point(0).values->front().real, 21.5);
    EXPECT_EQ(Point(1).values->front().text, "x");
}

TEST_F(Segments, ThatAreMissingAreNamed) {
    Exchange(ReadA(1), Segment(0, true));
    Acknowledge(0);
    Receive(Segment(2, false));
    Acknowledge(2);
    Wait();
    EXPECT_EQ(Why(), "analog-input 1: segment 1 of the answer is missing");
}

TEST_F(Segments, ThatDoNotComeAreNamed) {
    Exchange(ReadA(1), Segment(0, true));
    Acknowledge(0);
    Wait();
    EXPECT_EQ(Why(), "analog-input 1: segment 1 of the answer does not come");
}

TEST_F(Segments, ThatComeTooLateAreNamed) {
    Exchange(ReadA(1), Segment(0, true));
    Acknowledge(0);
    Receive(Segment(2, false));
    Acknowledge(2);
    Receive(Segment(1, true));
    EXPECT_EQ(Why(),
              "analog-input 1: segment 1 of the answer is missing; "
              "analog-input 1: segment 1 of the answer comes too late");
}

TEST_F(Segments, ThatComeTwiceAreNamed) {
    Exchange(ReadA(1), Segment(0, true));
    Acknowledge(0);
    Receive(Segment(0, true));
    Acknowledge(0);
    Receive(Segment(1, true));
    Acknowledge(1);
    Receive(Segment(2, false));
    EXPECT_EQ(Why(), "analog-input 1: segment 0 of the answer comes twice");
    EXPECT_EQ(Point(0).values->front().real, 21.5);
}

TEST_F(Segments, WithoutEndAreLoggedOnceWhileTheyCome) {
    LogCapture const log;
    Send(ReadA(1));
    for (int i = 0; i < 1000; ++i) {
        Octets segment = Segment(1, true);
        segment[8] = static_cast<char>(i);
        Receive(segment);
        Acknowledge(1);
    }
    EXPECT_EQ(log.Text(), "The device sends segments without end; the cycle cannot end before they do\n");
    EXPECT_EQ(Why(), "analog-input 1: an answer of more than 256 segments");
}

}  // namespace
