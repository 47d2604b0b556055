#include <gtest/gtest.h>

#include "DeviceSource.h"
#include "FakeAddIn.h"
#include "FakeEnvironment.h"
#include "Projects.h"
#include "ScriptedLink.h"
#include "VerifyRun.h"

using namespace test;
using namespace workbench;

namespace {

constexpr std::size_t ApduAt = 6;
constexpr std::size_t InvokeIdAt = ApduAt + 2;

bool Contains(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

// A device without ReadPropertyMultiple: analog input 1 has the present value 20, and device 7 an identifier.
class SimpleDevice : public ScriptedLink {
public:
    bool isSilent = false;

protected:
    void OnSend(standard::Datagram const& datagram) override {
        if (isSilent) {
            return;
        }
        std::string const request = ToHex(Octets(datagram.octets.begin() + ApduAt, datagram.octets.end()));
        char const* const answer = Contains(request, " 0E 0C ") ? "60 00 09"
                                   : Contains(request, "0C 0C 00 00 00 01 19 55")
                                       ? "30 00 0C 0C 00 00 00 01 19 55 3E 44 41 A0 00 00 3F"
                                   : Contains(request, "0C 0C 02 3F FF FF 19 4B")
                                       ? "30 00 0C 0C 02 00 00 07 19 4B 3E C4 02 00 00 07 3F"
                                       : "50 00 0C 91 02 91 20";
        auto reply = test::Reply(answer);
        reply.octets[ApduAt + 1] = datagram.octets[InvokeIdAt];
        reply.from = datagram.peer;
        Deliver(reply);
    }
};

// A project with one point, whose device falls silent when the test says so.
class Rounds : public testing::Test {
protected:
    VerifyReport Verified(unsigned long long rounds, std::string const& silentIn) {
        LoadedProject project("p.lua", {});
        project.Load(SourceText(OneBlock));
        blockCopy = project.Blocks().at(0);
        PollGuard guard(environment, [] { return false; });
        LogBuffer const log(nullptr);
        VerifySettings settings;
        settings.client.timeout = std::chrono::milliseconds(100);
        settings.client.retries = 0;
        settings.rounds = rounds;
        settings.progress = [&](std::string const& text) { device.isSilent = Contains(text, silentIn); };
        VerifyReport report = Verify(project, guard, log, device, settings);
        report.blocks.at(0).block = &blockCopy;
        return report;
    }

    FakeAddIn addIn{[](FakeDriver& driver) {
        driver.Deliver(0, Float(20));
        driver.Report(false, "");
    }};
    FakeEnvironment environment;
    SimpleDevice device;
    BlockConfig blockCopy;
};

}  // namespace

TEST_F(Rounds, WithoutAnOutageAllAreCompared) {
    VerifyReport const report = Verified(3, "never");
    PointResult const& point = report.blocks.at(0).points.at(0);
    EXPECT_EQ(point.judgement.verdict, Verdict::Agrees) << point.judgement.explanation;
    EXPECT_EQ(report.rounds, 3u);
    EXPECT_TRUE(Contains(SummaryText(report), "1 point in 1 block, 3 rounds: 1 agrees; no findings"));
}

TEST_F(Rounds, ADeviceThatWasSilentInOneIsAskedAgainInTheNext) {
    VerifyReport const report = Verified(3, "round 2 of 3");
    BlockResult const& block = report.blocks.at(0);
    PointResult const& point = block.points.at(0);
    EXPECT_EQ(point.rounds,
              (std::map<Verdict, unsigned long long>{{Verdict::Agrees, 2}, {Verdict::DeviceSilent, 1}}));
    EXPECT_EQ(point.judgement.verdict, Verdict::DeviceSilent);
    EXPECT_EQ(ExplanationText(point), "no answer; device silent in 1 of 3 rounds, agrees in 2");
    EXPECT_EQ(report.rounds, 2u);
    EXPECT_EQ(block.rounds, 2u);
    EXPECT_TRUE(Contains(SummaryText(report), "2 of 3 rounds")) << SummaryText(report);
    EXPECT_EQ(block.notes.at(0).text,
              "in 1 of 3 rounds requests in succession had no usable answer (no answer); "
              "what was left was not requested");
}

TEST_F(Rounds, ADeviceThatWasSilentInTheFirstIsIdentifiedLater) {
    VerifyReport const report = Verified(2, "round 1 of 2");
    BlockResult const& block = report.blocks.at(0);
    EXPECT_EQ(block.points.at(0).rounds.at(Verdict::Agrees), 1u);
    EXPECT_TRUE(block.device.isKnown);
    EXPECT_EQ(block.device.instance, 7u);
    EXPECT_EQ(report.rounds, 1u);
}

TEST_F(Rounds, NoneIsComparedWithADeviceThatNeverAnswers) {
    VerifyReport const report = Verified(3, "round");
    EXPECT_EQ(report.rounds, 0u);
    EXPECT_EQ(report.blocks.at(0).points.at(0).rounds.at(Verdict::DeviceSilent), 3u);
    EXPECT_EQ(ExplanationText(report.blocks.at(0).points.at(0)), "no answer");
}

TEST(AddRound, AFindingStaysAndOneOfThePointStaysBeforeSilence) {
    auto const all = [](std::initializer_list<Verdict> verdicts) {
        PointResult point;
        for (Verdict const verdict : verdicts) {
            PointResult round;
            round.judgement = {verdict, "why"};
            AddRound(point, round);
        }
        return point;
    };
    EXPECT_EQ(all({Verdict::Agrees, Verdict::Moving}).judgement.verdict, Verdict::Moving);
    EXPECT_EQ(all({Verdict::DeviceSilent, Verdict::Agrees}).judgement.verdict, Verdict::DeviceSilent);
    EXPECT_EQ(all({Verdict::Differs, Verdict::DeviceSilent}).judgement.verdict, Verdict::Differs);
    EXPECT_EQ(all({Verdict::DeviceSilent, Verdict::Differs}).judgement.verdict, Verdict::Differs);
    EXPECT_EQ(all({Verdict::Agrees, Verdict::NotVerified}).judgement.verdict, Verdict::Agrees);
    EXPECT_EQ(
        ExplanationText(all({Verdict::Differs, Verdict::DeviceSilent, Verdict::Agrees, Verdict::Agrees})),
        "why; differs in 1 of 4 rounds, agrees in 2, device silent in 1");
    EXPECT_EQ(ExplanationText(all({Verdict::Differs, Verdict::Differs})), "why");
    EXPECT_EQ(ExplanationText(all({Verdict::Agrees, Verdict::Moving})), "why");
}

TEST(DeviceSource, SeesWhatCameWithEachRequestOfAListThatIsSplit) {
    ScriptedLink link;
    char const* const answer = "30 00 0C 0C 00 00 00 01 19 55 3E 44 41 A0 00 00 3F";
    auto const single = [&](char id, int after) {
        auto reply = Reply(answer, after);
        reply.octets[ApduAt + 1] = id;
        return reply;
    };
    link.Then({Reply("30 01 0E", 5, StrangerEndpoint), Reply("60 01 09")})
        .Then({single(2, 1200)})
        .Then({single(3, 10)});
    standard::ClientSettings const settings;
    standard::Client client(link, settings);
    DeviceSource source(client, {DeviceEndpoint, std::nullopt});
    auto const answers = source.Read({{{0, 1}, 85, {}}, {{0, 1}, 85, {}}});
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_FALSE(answers[1].result.failure);
    EXPECT_EQ(answers[0].elapsed, std::chrono::milliseconds(1200));
    EXPECT_EQ(source.Others(), std::set<std::string>{"10.0.0.2:47808"});
}

TEST(DeviceSource, NamesTheStationOfANetworkThatAnswers) {
    ScriptedLink link;
    link.Then({{Hex("81 0A 00 0D 01 08 00 05 01 0B 60 01 09")}})
        .Then({{Hex("81 0A 00 13 01 08 00 05 01 0B 50 02 0C 91 02 91 20")}});
    standard::ClientSettings const settings;
    standard::Client client(link, settings);
    DeviceSource source(client, {DeviceEndpoint, standard::NetworkAddress{5, {}}});
    source.Read({{{0, 1}, 85, {}}, {{0, 1}, 28, {}}});
    EXPECT_EQ(source.AnsweredBy().Text(), "station 0b of network 5 behind 10.0.0.1:47808");
    EXPECT_TRUE(source.Others().empty());
}
