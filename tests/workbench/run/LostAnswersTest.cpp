// The state of a write whose answer is late, lost or another one, by what the device answers.

#include <gtest/gtest.h>

#include "CycleWatch.h"
#include "FakeEnvironment.h"
#include "HeldWritesText.h"
#include "Hex.h"
#include "Projects.h"
#include "ValueSetter.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

constexpr char Twenty[] = "44 41A00000";
constexpr char TwentyOne[] = "44 41A80000";

// The fake driver speaks to a device by the datagrams that the test names. Each cycle reads analog-value 1
// and writes 21 to it when the write condition passes it.
class LostAnswers : public testing::Test {
protected:
    LostAnswers() {
        dorvel::SetEnvironment(&network);
        dorvel::SetLogSink([this](std::string_view piece) { log.Add(piece); });
        addIn.onCycle = [this](FakeDriver& driver) { Cycle(driver); };
    }
    ~LostAnswers() override {
        watch.reset();
        setter.reset();
        dorvel::SetLogSink({});
        dorvel::SetEnvironment(nullptr);
    }

    void Load(std::string const& condition) {
        project.Load(
            SourceText(Block("Name='AHU', Address='192.168.1.20:47808', WriteCondition='" + condition + "'",
                             "{Name='T', Type='DataValue', ElementType='Float', ObjectType='analog-value', "
                             "ObjectProperties='present-value', ObjectNumber=1, Write=true}")));
        setter = std::make_unique<ValueSetter>(project.Runtime(), log, &observation);
        watch = std::make_unique<CycleWatch>(project, observation, [this](BlockSnapshot& snapshot) {
            setter->AfterCycle(*snapshot.config, IsFault(snapshot));
            setter->Show(snapshot);
            state = WriteText(*snapshot.variables[0].config, snapshot.variables[0].write, 0, true);
        });
        setter->Set(ReadAssignment(project.Blocks(), "AHU.T = 21"));
    }

    static std::string Frame(std::string const& hex) {
        auto const octets = Hex("81 0A 00 00 " + hex);
        std::string frame(octets.begin(), octets.end());
        frame[3] = static_cast<char>(frame.size());
        return frame;
    }
    static std::string Digits(unsigned octet) {
        char text[4];
        std::snprintf(text, sizeof text, " %02X", octet);
        return text;
    }

    // True if an answer comes. Without one the driver leaves the socket.
    bool Exchange(std::string const& request, std::string const& answer) {
        observation.Send(handle, device, request.data(), static_cast<int>(request.size()));
        if (!answer.empty()) {
            network.Arrives(device, answer);
        }
        char buffer[1500];
        sockaddr_in sender{};
        bool const isThere = observation.Receive(handle, sender, buffer, sizeof buffer, 1000) >= 0;
        network.time += 10000000;
        if (!isThere) {
            observation.Close(handle++);
        }
        return isThere;
    }

    void Cycle(FakeDriver& driver) {
        ++id;
        Exchange(Frame("01 04 02 74" + Digits(id) + " 0E 0C 00800001 1E 09 55 1F"),
                 Frame("01 00 30" + Digits(id) + " 0E 0C 00800001 1E 29 55 4E " + held + " 4F 1F"));
        driver.Deliver(0, Float(held == Twenty ? 20.0F : 21.0F));
        driver.Report(false, "");
        driver.WritePhase([this](std::size_t, OpcUa_VariantHlp const&) {
            ++id;
            std::string const request = Frame("01 04 00 04" + Digits(id) + " 0F 0C 00800001 19 55 3E " +
                                              std::string(sent) + " 3F 49 08");
            std::string const ack = Frame("01 00 20" + Digits(id) + " 0F");
            if (!Exchange(request, isAcknowledged ? ack : "")) {
                logMsgLn("message size error");
            }
        });
    }

    std::string State() {
        project.Runtime().RunOnce();
        return state;
    }

    sockaddr_in device = Address("192.168.1.20", 47808);
    FakeEnvironment network;
    FakeAddIn addIn;
    LogBuffer log{nullptr};
    LoadedProject project{"p.lua", {}};
    Observation observation{network};
    std::unique_ptr<ValueSetter> setter;
    std::unique_ptr<CycleWatch> watch;
    int handle = 7;
    unsigned id = 0;
    std::string held = Twenty;
    std::string sent = TwentyOne;
    bool isAcknowledged = false;
    std::string state;
};

constexpr char Refused[] = "21 refused (message size error; the device has not answered the write)";

TEST_F(LostAnswers, AWriteIsWrittenWhenTheDeviceIsReadBackWithWhatWasMeant) {
    Load("OnChange");
    EXPECT_EQ(State(), "21 pending");
    EXPECT_EQ(State(), Refused);
    EXPECT_EQ(State(), Refused) << "the device still holds 20";
    held = TwentyOne;
    EXPECT_EQ(State(), "21 written");
    EXPECT_NE(HeldWritesText(observation, project.Blocks()).find(" = 21 at priority 8, possibly: "),
              std::string::npos);
}

TEST_F(LostAnswers, AWriteThatIsRepeatedIsWrittenThoughNoAnswerComes) {
    Load("Always");
    State();
    EXPECT_EQ(State(), Refused);
    EXPECT_EQ(State(), Refused);
    held = TwentyOne;
    EXPECT_EQ(State(), "21 written");
    EXPECT_EQ(State(), "21 written");
}

TEST_F(LostAnswers, AValueThatTheDeviceHadBeforeTheWriteDoesNotConfirmIt) {
    Load("OnChange");
    held = TwentyOne;
    State();
    EXPECT_EQ(State(), Refused) << "read before the write";
    EXPECT_EQ(State(), "21 written");
}

TEST_F(LostAnswers, ALateAcknowledgementIsJudgedByWhatIsReadBack) {
    Load("OnChange");
    State();
    EXPECT_EQ(State(), Refused);
    network.Arrives(device, Frame("01 00 20" + Digits(id) + " 0F"));
    EXPECT_EQ(State(), "21 unconfirmed (reads back 20)");
    held = TwentyOne;
    EXPECT_EQ(State(), "21 written");
    EXPECT_EQ(HeldWriteLines(observation, project.Blocks()).front().find("possibly"), std::string::npos);
}

TEST_F(LostAnswers, ALateErrorIsTheReason) {
    Load("OnChange");
    State();
    EXPECT_EQ(State(), Refused);
    network.Arrives(device, Frame("01 00 50" + Digits(id) + " 0F 91 02 91 28"));
    EXPECT_EQ(State(), "21 refused (property: write-access-denied)");
    EXPECT_EQ(HeldWritesText(observation, project.Blocks()), "");
}

TEST_F(LostAnswers, AnotherValueThanWasMeantDiffers) {
    Load("OnChange");
    sent = "44 42C80000";
    State();
    EXPECT_EQ(State(), Refused);
    held = sent;
    EXPECT_EQ(State(), "21 differs (the driver sent 100, the device holds it)");
}

}  // namespace
