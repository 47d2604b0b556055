#include "CommandGate.h"

#include "PublishFixture.h"

using namespace test;
using namespace workbench;

namespace {

constexpr char Topic[] = "dorvel/pc-plant/AHU/T/set";

class CommandGateTest : public PublishTest {
protected:
    CommandGateTest() { Settle(); }
    // An answer without its time, at the end.
    static std::string WithoutTime(std::string const& answer) {
        return answer.substr(0, answer.find(R"(,"time")"));
    }
    std::string After(int cycles) {
        broker.sent.clear();
        Run(cycles);
        return WithoutTime(LastAnswer());
    }
    std::size_t AnswerCount() const {
        std::size_t count = 0;
        for (Message const& message : broker.sent) {
            count += message.topic == std::string(Topic) + "/state" ? 1 : 0;
        }
        return count;
    }
};

TEST_F(CommandGateTest, LetsACommandThroughAndSaysWhatBecomesOfIt) {
    EXPECT_EQ(
        Command(R"({"value":23.5,"id":7,"time":"2024-03-15T11:34:50Z"})"),
        R"({"id":7,"state":"pending","value":23.5,"reason":null,"time":"2024-03-15T12:34:57.789+01:00"})");
    EXPECT_FALSE(broker.sent.back().isRetained);
    EXPECT_EQ(After(4), R"({"id":7,"state":"written","value":23.5,"reason":null)");
    EXPECT_EQ(AnswerCount(), 1U);
    EXPECT_EQ(broker.retained["dorvel/pc-plant/AHU/T"].substr(0, 14), R"({"value":23.5,)");
    EXPECT_EQ(After(5), "none");
    EXPECT_EQ(log.Lines().back().substr(log.Lines().back().find("mqtt")),
              "mqtt: AHU.T = 23.5 \xC2\xB0\x43: pending");
    EXPECT_EQ(Count("commands"), 1U);
    EXPECT_EQ(Count("commands refused"), 0U);
}

TEST_F(CommandGateTest, SaysThatAValueWasNotTaken) {
    takesValues = false;
    Command("30");
    EXPECT_EQ(
        After(4),
        "{\"id\":null,\"state\":\"unconfirmed\",\"value\":30,\"reason\":\"reads back 21.5 \xC2\xB0\x43\"");
    EXPECT_EQ(AnswerCount(), 1U);
    temperature = 30;
    EXPECT_EQ(After(2), R"({"id":null,"state":"written","value":30,"reason":null)");
    EXPECT_EQ(AnswerCount(), 1U);
}

TEST_F(CommandGateTest, TakesTheWordsOfAState) {
    broker.sent.clear();
    Receive("dorvel/pc-plant/AHU/Mode/set", R"("off")");
    ASSERT_EQ(broker.sent.size(), 1U);
    EXPECT_EQ(broker.sent.back().topic, "dorvel/pc-plant/AHU/Mode/set/state");
    EXPECT_EQ(WithoutTime(broker.sent.back().payload),
              R"({"id":null,"state":"pending","value":1,"reason":null)");
}

TEST_F(CommandGateTest, RefusesWhatIsNotAValueOfTheVariable) {
    EXPECT_EQ(
        WithoutTime(Command(R"({"id":"a","value":"warm"})")),
        R"({"id":"a","state":"invalid","value":null,"reason":"\"AHU.T\": \"warm\" is not of type Float; )"
        R"(expected a number such as 21.5")");
    broker.sent.clear();
    Receive("dorvel/pc-plant/AHU/Na%2Fme/set", "x");
    EXPECT_EQ(WithoutTime(broker.sent.back().payload),
              R"({"id":null,"state":"invalid","value":null,"reason":"\"AHU.Na/me\" is read-only; to set it, )"
              R"(give it Write = true in the project")");
    EXPECT_EQ(Count("commands"), 2U);
    EXPECT_EQ(Count("commands refused"), 2U);
    EXPECT_EQ(After(3), "none");
}

TEST_F(CommandGateTest, RejectsCommandsUnlessTheyAreAllowed) {
    settings.takesCommands = false;
    Make();
    Connect();
    EXPECT_EQ(
        WithoutTime(Command("30")),
        R"({"id":null,"state":"rejected","value":null,"reason":"this workbench takes no commands; start )"
        R"(dorvel-workbench run with --mqtt-writes")");
    Run(3);
    EXPECT_TRUE(written.empty());
}

TEST_F(CommandGateTest, RejectsRetainedOldAndFutureCommands) {
    EXPECT_EQ(
        WithoutTime(Command("30", true)),
        R"({"id":null,"state":"rejected","value":null,"reason":"the command is retained; send it without )"
        R"(the retain flag")");
    EXPECT_EQ(
        WithoutTime(Command(R"({"value":30,"time":"2024-03-15T11:34:47.788Z"})")),
        R"({"id":null,"state":"rejected","value":null,"reason":"the command is 10 s old; allowed are 10 s")");
    EXPECT_EQ(
        WithoutTime(Command(R"({"value":30,"time":"2024-03-15T11:37:57.789Z"})")),
        R"({"id":null,"state":"rejected","value":null,"reason":"the command is from 3 min in the future; )"
        R"(allowed are 10 s; compare the clocks")");
    Run(3);
    EXPECT_TRUE(written.empty());
    EXPECT_EQ(Count("commands refused"), 3U);
    EXPECT_NE(Command(R"({"value":30,"time":"2024-03-15T11:34:50.789Z"})").find("pending"),
              std::string::npos);
}

TEST_F(CommandGateTest, TakesOneCommandASecondOfAVariable) {
    EXPECT_NE(Command("30").find("pending"), std::string::npos);
    world.time += Second - 1;
    EXPECT_EQ(
        WithoutTime(Command("31")),
        R"({"id":null,"state":"rejected","value":null,"reason":"a command for the variable came less than )"
        R"(a second ago; send one a second")");
    Receive("dorvel/pc-plant/AHU/Mode/set", "1");
    EXPECT_NE(broker.sent.back().payload.find("pending"), std::string::npos) << "another variable";
    world.time += 1;
    EXPECT_NE(Command("warm").find("invalid"), std::string::npos);
    EXPECT_NE(Command("32").find("rejected"), std::string::npos) << "the mistake was looked at";
    world.time -= Hour;
    EXPECT_NE(Command("33").find("pending"), std::string::npos) << "the clock was set back";
}

TEST_F(CommandGateTest, SaysThatAnotherValueHasReplacedACommand) {
    Command(R"({"value":30,"id":1})");
    world.time += Second;
    Receive(Topic, R"({"value":31,"id":2})");
    broker.sent.clear();
    Publish();
    EXPECT_EQ(WithoutTime(LastAnswer()),
              R"({"id":1,"state":"refused","value":30,"reason":"another value has taken its place")");
    EXPECT_EQ(After(4), R"({"id":2,"state":"written","value":31,"reason":null)");
    world.time += Second;
    Command(R"({"value":32,"id":3})");
    setter->Set(MakeSetRequest(project.Blocks(), "AHU.T", "33"));
    EXPECT_EQ(After(4),
              R"({"id":3,"state":"refused","value":32,"reason":"another value has taken its place")");
    EXPECT_EQ(AnswerCount(), 1U);
}

TEST_F(CommandGateTest, LosesNoFinalStateOfCommandsThatReplaceOneAnother) {
    std::vector<std::string> answers;
    broker.room = 0;
    for (int id = 1; id <= 5; ++id) {
        Receive(Topic, R"({"value":3)" + std::to_string(id) + R"(,"id":)" + std::to_string(id) + "}");
        world.time += Second;
        Publish();
    }
    broker.room = 1000;
    Run(4);
    for (Message const& message : broker.sent) {
        if (message.topic == std::string(Topic) + "/state") {
            std::string const answer = WithoutTime(message.payload);
            if (answer.find("pending") == std::string::npos) {
                answers.push_back(answer.substr(0, answer.find(R"(,"value")")));
            }
        }
    }
    EXPECT_EQ(answers,
              (std::vector<std::string>{R"({"id":1,"state":"refused")", R"({"id":2,"state":"refused")",
                                        R"({"id":3,"state":"refused")", R"({"id":4,"state":"refused")",
                                        R"({"id":5,"state":"written")"}));
    EXPECT_EQ(Count("answers dropped"), 0U);
}

TEST_F(CommandGateTest, KeepsFinalStatesOfReplacedCommandsWithinBounds) {
    broker.room = 0;
    Receive("dorvel/pc-plant/AHU/Mode/set", "1");
    Publish();  // an answer waits, so that no others are taken from the gate
    unsigned long long const before = Count("answers dropped");
    for (std::size_t i = 0; i < CommandGate::MostReplaced + 3; ++i) {
        world.time += Second;
        Receive(Topic, "30");
    }
    EXPECT_EQ(Count("answers dropped") - before,
              2U + (CommandGate::MostReplaced + 4 - JsonPublisher::MostAnswers));
}

TEST_F(CommandGateTest, TakesTheSameValueTwice) {
    Command(R"({"value":30,"id":1})");
    EXPECT_EQ(After(4), R"({"id":1,"state":"written","value":30,"reason":null)");
    EXPECT_NE(Command(R"({"value":30,"id":2})").find(R"("state":"pending")"), std::string::npos);
    broker.sent.clear();
    Publish();
    EXPECT_EQ(LastAnswer(), "none") << "what was written before is not the answer";
    EXPECT_EQ(After(4), R"({"id":2,"state":"written","value":30,"reason":null)");
}

TEST_F(CommandGateTest, AnswersAfterAConnectionThatWasLost) {
    Command("30");
    publisher->Disconnected();
    Run(4);
    broker.sent.clear();
    Connect();
    Publish();
    EXPECT_EQ(WithoutTime(LastAnswer()), R"({"id":null,"state":"written","value":30,"reason":null)");
}

TEST_F(CommandGateTest, AnswersAtTheEndOfTheRun) {
    isSilent = true;
    Command("30");
    broker.room = 0;
    publisher->End(world.time, broker);
    EXPECT_EQ(
        WithoutTime(LastAnswer()),
        R"({"id":null,"state":"unconfirmed","value":30,"reason":"the run has ended before the value was )"
        R"(read back")");
}

TEST_F(CommandGateTest, AnswersCommandsForNoVariableOnceASecond) {
    broker.sent.clear();
    for (char const* topic : {"dorvel/pc-plant/AHU/U/set", "dorvel/pc-plant/AHU/V/set", "x", "a/+/#/set"}) {
        Receive(topic, "1");
    }
    ASSERT_EQ(broker.sent.size(), 1U);
    EXPECT_EQ(broker.sent.back().topic, "dorvel/pc-plant/AHU/U/set/state");
    EXPECT_EQ(
        WithoutTime(broker.sent.back().payload),
        R"({"id":null,"state":"invalid","value":null,"reason":"no variable of this workbench has the topic )"
        R"(\"dorvel/pc-plant/AHU/U/set\"")");
    EXPECT_EQ(Count("commands"), 4U);
    EXPECT_EQ(Count("commands refused"), 4U);
}

TEST_F(CommandGateTest, KeepsAFewAnswersWhileThereIsNoRoom) {
    broker.room = 0;
    for (int i = 0; i < 1000; ++i) {
        Command("30");
    }
    EXPECT_TRUE(broker.sent.empty());
    EXPECT_EQ(Count("answers dropped"), 1000 - JsonPublisher::MostAnswers);
    Run(4);
    broker.room = 1000;
    EXPECT_EQ(After(1), R"({"id":null,"state":"written","value":30,"reason":null)") << "it is not lost";
    EXPECT_EQ(AnswerCount(), JsonPublisher::MostAnswers + 1);
}

TEST_F(CommandGateTest, ReadsWhatIsTooLargeOrTooDeepAsAMistake) {
    EXPECT_NE(Command(std::string(65537, '1')).find("the payload has 65537 octets; allowed are 65536"),
              std::string::npos);
    world.time += Second;
    EXPECT_NE(Command(std::string(60000, '[')).find(R"("state":"invalid")"), std::string::npos);
    world.time += Second;
    EXPECT_NE(Command(std::string(65536, '1')).find(R"("state":"invalid")"), std::string::npos);
}

}  // namespace
