#include "PageFixture.h"

using namespace test;
using namespace workbench;

namespace {

// The schedules of the second block.
class PageScheduleTest : public PageTest {
protected:
    static rapidjson::Document Parse(HttpResponse const& response, int status = 200) {
        EXPECT_EQ(response.status, status) << response.body;
        rapidjson::Document document;
        document.Parse(response.body.c_str());
        EXPECT_FALSE(document.HasParseError());
        return document;
    }

    // The model of an answer as the body of a POST.
    static std::string BodyOf(rapidjson::Value const& model) {
        rapidjson::StringBuffer buffer;
        JsonWriter writer(buffer);
        model.Accept(writer);
        return "{\"model\":" + std::string(buffer.GetString()) + "}";
    }

    static constexpr char OneEntry[] =
        R"({"model":{"kind":"weekly","days":[[{"time":"06:00","type":"real","value":"21.5"}],[],[],[],[],[],[]]}})";
};

TEST_F(PageScheduleTest, IsNullBeforeTheDriverHasReadIt) {
    auto const json = Parse(Get("/api/variables/3/schedule"));
    EXPECT_STREQ(json["kind"].GetString(), "weekly");
    EXPECT_TRUE(json["text"].IsNull());
    EXPECT_TRUE(json["model"].IsNull());
    EXPECT_TRUE(json["mistake"].IsNull());
    EXPECT_EQ(json["related"]["weekly"].GetUint(), 3u);
    EXPECT_EQ(json["related"]["exception"].GetUint(), 4u);
    EXPECT_TRUE(json["related"]["value"].IsNull());
}

TEST_F(PageScheduleTest, ComposesWhatItShowsAgain) {
    auto const composed = Parse(Post("/api/variables/3/schedule", OneEntry));
    ASSERT_TRUE(composed["text"].IsString());
    EXPECT_EQ(composed["mistakes"].Size(), 0u);
    EXPECT_EQ(composed["changes"].Size(), 1u);
    week = composed["text"].GetString();
    Run();
    auto const json = Parse(Get("/api/variables/3/schedule"));
    EXPECT_EQ(json["text"].GetString(), week);
    EXPECT_STREQ(json["model"]["days"][0][0]["time"].GetString(), "06:00");
    EXPECT_TRUE(json["mistake"].IsNull());
    auto const again = Parse(Post("/api/variables/3/schedule", BodyOf(json["model"])));
    EXPECT_EQ(again["text"].GetString(), week);
    EXPECT_EQ(again["changes"].Size(), 0u);
}

TEST_F(PageScheduleTest, SetsWhatItHasComposed) {
    std::string const text = Parse(Post("/api/variables/3/schedule", OneEntry))["text"].GetString();
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "value", text);
    writer.EndObject();
    auto const answer = Parse(Post("/api/variables/3/write", buffer.GetString()), 202);
    EXPECT_EQ(answer["value"].GetString(), text);
}

TEST_F(PageScheduleTest, ShowsTheDaysOfEventsInAYear) {
    auto const composed = Parse(Post("/api/variables/4/schedule", R"({"model":{"kind":"exception","events":[
        {"period":{"kind":"date","date":{"year":2026,"month":12,"day":25,"weekday":null}},"priority":10,
         "entries":[{"time":"00:00","type":"real","value":"16"}]}]}})"));
    ASSERT_TRUE(composed["text"].IsString());
    exceptions = composed["text"].GetString();
    Run();
    auto const json = Parse(Get("/api/variables/4/schedule?year=2026"));
    EXPECT_EQ(json["calendar"]["year"].GetUint(), 2026u);
    EXPECT_STREQ(json["calendar"]["events"][0][0].GetString(), "2026-12-25");
    EXPECT_EQ(Parse(Get("/api/variables/4/schedule?year=2027"))["calendar"]["events"][0].Size(), 0u);
    for (char const* year : {"0", "1899", "2155", "x", "-1"}) {
        EXPECT_EQ(Get(std::string("/api/variables/4/schedule?year=") + year).status, 400) << year;
    }
}

TEST_F(PageScheduleTest, BoundsTheDaysOfAHostileText) {
    for (int i = 0; i < 5000; ++i) {
        exceptions += "2,****,16,12000000,;";
    }
    Run();
    HttpResponse const response = Get("/api/variables/4/schedule?year=2026");
    EXPECT_LT(response.body.size(), 4000000u);
    auto const json = Parse(response);
    ASSERT_EQ(json["calendar"]["events"].Size(), 5000u);
    EXPECT_EQ(json["calendar"]["events"][0].Size(), 365u);
    EXPECT_EQ(json["calendar"]["events"][4999].Size(), 0u);
    EXPECT_STREQ(json["notes"][0]["reason"].GetString(),
                 "the calendar shows the days of the first events alone; there are too many");
}

TEST_F(PageScheduleTest, ShowsWhatIsInForceByTheLocalTime) {
    // 17 January 2024, a Wednesday, 14:40 UTC, with an hour more of local time.
    world.time = 133499760000000000;
    week =
        Parse(Post("/api/variables/3/schedule",
                   R"({"model":{"kind":"weekly","days":[[],[],[{"time":"15:00","type":"real","value":"21.5"},
                         {"time":"20:00","type":"real","value":"17"}],[],[],[],[]]}})"))["text"]
            .GetString();
    Run();
    auto const json = Parse(Get("/api/variables/3/schedule"));
    ASSERT_TRUE(json["now"].IsObject());
    EXPECT_STREQ(json["now"]["value"]["value"].GetString(), "21.5");
    EXPECT_STREQ(json["now"]["until"].GetString(), "2024-01-17T20:00:00");
    EXPECT_STREQ(json["next"]["value"]["value"].GetString(), "17");
}

TEST_F(PageScheduleTest, ShowsATextThatIsNoScheduleWithItsMistake) {
    week = "nonsense";
    Run();
    auto const json = Parse(Get("/api/variables/3/schedule"));
    EXPECT_TRUE(json["model"].IsNull());
    EXPECT_TRUE(json["mistake"].IsString());
    EXPECT_STREQ(json["text"].GetString(), "nonsense");
}

TEST_F(PageScheduleTest, SaysWhatIsWrongWithAModel) {
    for (char const* body :
         {"{}", "{\"model\":5}", "{\"model\":{}}", "{\"model\":{\"kind\":\"weekly\"}}",
          R"({"model":{"kind":"exception","events":[]}})",
          R"({"model":{"kind":"weekly","days":[[{"time":"25:00","type":"real","value":"1"}]]}})"}) {
        HttpResponse const response = Post("/api/variables/3/schedule", body);
        EXPECT_EQ(response.status, 400) << body;
        EXPECT_NE(response.body.find("\"error\":\"model"), std::string::npos) << response.body;
    }
}

TEST_F(PageScheduleTest, IsOfSchedulesAlone) {
    EXPECT_EQ(Get("/api/variables/0/schedule").status, 404);
    EXPECT_EQ(Post("/api/variables/0/schedule", OneEntry).status, 404);
}

}  // namespace
