#include "PlantStream.h"

#include "FakeOutlet.h"
#include "PageFixture.h"

using namespace test;
using namespace workbench;

namespace {

class PlantStreamTest : public PageTest {
protected:
    static std::string All(StreamReader& reader) {
        std::string texts;
        for (SharedText const& text : reader.Next(std::chrono::milliseconds(0))) {
            texts += *text;
        }
        return texts;
    }

    static std::size_t Count(std::string const& text, std::string const& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }

    std::unique_ptr<StreamReader> Open(std::string const& lastEvent = {}) {
        return plant->Stream().Open(lastEvent);
    }
    void RunAndEncode() {
        Run();
        plant->Stream().Encode();
    }
    // The id of the last message in the text.
    static std::string LastId(std::string const& text) {
        std::size_t const at = text.rfind("id: ") + 4;
        return text.substr(at, text.find('\n', at) - at);
    }
};

TEST_F(PlantStreamTest, BeginsWithTheWholePlant) {
    Run();
    auto const reader = Open();
    std::string const text = All(*reader);
    EXPECT_EQ(Count(text, "event: block\ndata: {"), 2u);
    EXPECT_EQ(Count(text, "\n\n"), 2u);
    EXPECT_NE(text.find(R"("name":"T")"), std::string::npos);
    EXPECT_EQ(All(*reader), "");
}

TEST_F(PlantStreamTest, SendsWhatHasChangedAfterEachCycleAndNothingElse) {
    Run();
    auto const reader = Open();
    All(*reader);
    temperature = Float(21);
    RunAndEncode();
    std::string const text = All(*reader);
    EXPECT_EQ(Count(text, "event: changes\n"), 2u);
    EXPECT_NE(text.find(R"("name":"T","object":"analog-value 1")"), std::string::npos);
    EXPECT_EQ(text.find(R"("name":"Mode")"), std::string::npos);
    EXPECT_NE(text.find(R"("block":"Rooms","cycle":2,"fault":false,"error":"","variables":[],)"),
              std::string::npos);
}

TEST_F(PlantStreamTest, EncodesOnceForAllReaders) {
    auto const one = Open();
    auto const other = Open();
    auto const first = one->Next(std::chrono::milliseconds(0));
    auto const second = other->Next(std::chrono::milliseconds(0));
    // The texts of the blocks are the same objects; what is between them may differ.
    EXPECT_EQ(first.at(1), second.at(1));
    RunAndEncode();
    EXPECT_EQ(one->Next(std::chrono::milliseconds(0)), other->Next(std::chrono::milliseconds(0)));
}

TEST_F(PlantStreamTest, SendsEvents) {
    Run();
    auto const reader = Open();
    All(*reader);
    suspect = "device: unknown-object";
    RunAndEncode();
    std::string const text = All(*reader);
    EXPECT_EQ(Count(text, "event: event\n"), 2u);
    EXPECT_NE(text.find(R"("kind":"suspect","block":"AHU","variable":"T")"), std::string::npos);
}

TEST_F(PlantStreamTest, SendsTheOutletsAtMostOnceASecond) {
    FakeOutlet& mqtt = FakeOutlet::AddTo(outlets, {"mqtt", OutletHealth::Good, "connected", 1, {}});
    Run();
    auto const reader = Open();
    EXPECT_EQ(Count(All(*reader), R"(event: outlets
data: {"outlets":[{"outlet":"mqtt","health":"good","text":"connected")"),
              1u);
    for (unsigned long long messages = 1; messages <= 4; ++messages) {
        mqtt.state.counts = {{"messages", messages}};
        plant->Stream().Encode();
        world.time += 5000000;
    }
    std::string const text = All(*reader);
    EXPECT_EQ(Count(text, "event: outlets\n"), 2u);
    EXPECT_NE(text.find(R"("counts":{"messages":3}})"), std::string::npos);
    plant->Stream().Encode();
    EXPECT_EQ(Count(All(*reader), R"("messages":4)"), 1u);
    world.time += 20000000;
    plant->Stream().Encode();
    EXPECT_EQ(Count(All(*reader), "event: outlets\n"), 0u);
}

TEST_F(PlantStreamTest, SaysNothingOfOutletsWithoutThem) {
    auto const reader = Open();
    std::string text = All(*reader);
    RunAndEncode();
    text += All(*reader);
    EXPECT_EQ(text.find("outlets"), std::string::npos);
}

TEST_F(PlantStreamTest, ReportsHowMuchASlowReaderHasLost) {
    auto const reader = Open();
    All(*reader);
    for (std::size_t i = 0; i < MessageRing::Most; ++i) {
        RunAndEncode();
    }
    std::string const text = All(*reader);
    EXPECT_EQ(text.substr(0, 39), "event: lost\ndata: {\"updates\":2048}\n\neve");
    EXPECT_EQ(Count(text, "event: block\n"), 2u);
    EXPECT_EQ(Count(text, "event: changes\n"), 0u);
    RunAndEncode();
    EXPECT_EQ(Count(All(*reader), "event: changes\n"), 2u);
}

TEST_F(PlantStreamTest, EndsAfterAMinuteWithARequestToRenew) {
    auto const reader = Open();
    All(*reader);
    world.time += 599999999;
    EXPECT_EQ(All(*reader).find("renew"), std::string::npos);
    EXPECT_FALSE(reader->IsOver());
    world.time += 1;
    EXPECT_NE(All(*reader).find("event: renew\ndata: {}\n\n"), std::string::npos);
    EXPECT_TRUE(reader->IsOver());
}

TEST_F(PlantStreamTest, ContinuesAfterTheLastEventOfAnEarlierStream) {
    std::string last;
    {
        auto const reader = Open();
        All(*reader);
        RunAndEncode();
        last = LastId(All(*reader));
    }
    temperature = Float(22);
    RunAndEncode();
    auto const reader = Open(last);
    std::string const text = All(*reader);
    EXPECT_EQ(Count(text, "event: block\n"), 0u);
    EXPECT_EQ(Count(text, "event: changes\n"), 2u);
    EXPECT_NE(text.find(R"("value":22)"), std::string::npos);
}

TEST_F(PlantStreamTest, BeginsAgainForAnIdThatItDoesNotKnow) {
    std::string last;
    {
        auto const reader = Open();
        All(*reader);
        RunAndEncode();
        last = LastId(All(*reader));
    }
    std::string const other = "00000000" + last.substr(8);
    for (std::string const& id : {std::string("x"), last + "9999", last + "x", last.substr(0, 9), other}) {
        auto const reader = Open(id);
        EXPECT_EQ(Count(All(*reader), "event: block\n"), 2u) << id;
    }
}

TEST_F(PlantStreamTest, EncodesNothingWithoutReadersAndForgetsWhatItHad) {
    std::string last;
    {
        auto const reader = Open();
        All(*reader);
        RunAndEncode();
        last = LastId(All(*reader));
    }
    world.time += 300000000;
    RunAndEncode();
    auto const reader = Open(last);
    EXPECT_EQ(Count(All(*reader), "event: block\n"), 2u);
}

TEST_F(PlantStreamTest, CommentsOnALongSilence) {
    auto const reader = Open();
    All(*reader);
    world.time += 149999999;
    EXPECT_EQ(All(*reader), "");
    world.time += 1;
    EXPECT_EQ(All(*reader), ": nothing has happened\n\n");
    EXPECT_EQ(All(*reader), "");
}

TEST_F(PlantStreamTest, HasSoManyReadersAndNoMore) {
    std::vector<std::unique_ptr<StreamReader>> readers;
    for (std::size_t i = 0; i < PlantStream::MostReaders; ++i) {
        readers.push_back(Open());
        ASSERT_TRUE(readers.back());
    }
    EXPECT_FALSE(Open());
    EXPECT_FALSE(service->OpenStream(Request("GET", "/api/stream")));
    EXPECT_EQ(service->TooManyStreams().status, 503);
    readers.pop_back();
    EXPECT_TRUE(Open());
}

TEST_F(PlantStreamTest, EndsAllReadersAtTheEndOfTheRun) {
    auto const reader = Open();
    All(*reader);
    plant->Stream().End("the run has ended");
    std::string text;
    for (SharedText const& part : reader->Next(std::chrono::hours(1))) {
        text += *part;
    }
    EXPECT_EQ(text, "event: end\ndata: {\"reason\":\"the run has ended\"}\n\n");
    EXPECT_TRUE(reader->IsOver());
}

TEST_F(PlantStreamTest, TakesTextsOfDevicesAsData) {
    label = "</script><script>alert(1)</script>\r\n\r\nevent: end\n\xE2\x80\xA8\"";
    Run();
    std::string const text = All(*Open());
    EXPECT_EQ(Count(text, "event: end"), 1u);
    EXPECT_EQ(Count(text, "\nevent: end"), 0u);
    EXPECT_EQ(text.find('\r'), std::string::npos);
    EXPECT_EQ(Count(text, "\n\n"), 2u);
}

}  // namespace
