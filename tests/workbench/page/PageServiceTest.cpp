#include "PageService.h"

#include <thread>

#include "JsonFormat.h"
#include "PageFixture.h"

using namespace test;
using namespace workbench;

namespace {

class PageServiceTest : public PageTest {
protected:
    rapidjson::Document Json(std::string const& target) const {
        HttpResponse const response = Get(target);
        EXPECT_EQ(response.status, 200) << response.body;
        EXPECT_EQ(response.type, "application/json");
        rapidjson::Document document;
        document.Parse(response.body.c_str());
        EXPECT_FALSE(document.HasParseError()) << response.body;
        return document;
    }

    static std::string ErrorOf(HttpResponse const& response) {
        rapidjson::Document document;
        document.Parse(response.body.c_str());
        return document.IsObject() && document.HasMember("error") ? document["error"].GetString()
                                                                  : response.body;
    }
};

class ReadOnlyPageTest : public PageServiceTest {
protected:
    void SetUp() override { MakePage(false); }
};

TEST_F(PageServiceTest, ServesFilesByTheirNamesAlone) {
    EXPECT_EQ(Get("/").body, "<!DOCTYPE html>");
    EXPECT_EQ(Get("/page.css").type, "text/css");
    for (char const* path : {"/../page.css", "/./page.css", "//page.css", "/page.css/", "/page.css%00",
                             "page.css", "/etc/passwd", "/files/page.css", "/PAGE.CSS", "/api/../page.css"}) {
        EXPECT_EQ(Get(path).status, 404) << path;
    }
    EXPECT_EQ(Post("/page.css", "{}").status, 405);
}

TEST_F(PageServiceTest, SendsAFileThatTheBrowserHasOnlyOnce) {
    std::string const tag = HeaderOf(Get("/page.css"), "ETag");
    HttpRequest request = Request("GET", "/page.css");
    request.headers.emplace("if-none-match", tag);
    EXPECT_EQ(service->Answer(request).status, 304);
    EXPECT_EQ(service->Answer(request).body, "");
}

TEST_F(PageServiceTest, SaysWhatIsPossible) {
    EXPECT_EQ(ErrorOf(Get("/api/nothing")),
              "\"/api/nothing\" is not a path of this page; docs/page.md has all");
    EXPECT_EQ(ErrorOf(Get("/api/variables/5")),
              "\"5\" is not the id of a variable; GET /api/plant has all of them");
    for (char const* id : {"-1", "1x", "99999999999999999999", "+1", " 1", "0x0"}) {
        EXPECT_EQ(Get(std::string("/api/variables/") + id).status, 404) << id;
    }
    HttpResponse const response = Get("/api/variables/0/write");
    EXPECT_EQ(response.status, 405);
    EXPECT_EQ(HeaderOf(response, "Allow"), "POST");
    EXPECT_EQ(Post("/api/plant", "{}").status, 405);
}

TEST_F(PageServiceTest, HasTheTokenOfTheSession) {
    auto const json = Json("/api/session");
    EXPECT_EQ(json["token"].GetString(), session.token);
    EXPECT_TRUE(json["writes"].GetBool());
    EXPECT_STREQ(json["version"].GetString(), "1.2.3");
}

TEST_F(PageServiceTest, DescribesThePlant) {
    auto const json = Json("/api/plant");
    EXPECT_STREQ(json["project"].GetString(), "p.lua");
    auto const& block = json["blocks"][1];
    EXPECT_STREQ(block["name"].GetString(), "Rooms");
    EXPECT_EQ(block["id"].GetUint(), 1u);
    EXPECT_EQ(block["period_ms"].GetInt(), 1000);
    EXPECT_TRUE(block["priority"].IsNull());
    EXPECT_EQ(block["variables"][0]["id"].GetUint(), 3u);
    auto const& number = json["blocks"][0]["variables"][0];
    EXPECT_STREQ(number["unit"].GetString(), "°C");
    EXPECT_TRUE(number["states"].IsNull());
    EXPECT_TRUE(number["writable"].GetBool());
    EXPECT_STREQ(json["blocks"][0]["variables"][1]["states"][1].GetString(), "on");
    std::string kinds;
    for (auto const& one : json["blocks"].GetArray()) {
        for (auto const& variable : one["variables"].GetArray()) {
            kinds += std::string(variable["kind"].GetString()) + " ";
        }
    }
    EXPECT_EQ(kinds, "number state text weekly exception ");
}

TEST_F(PageServiceTest, HasTheValuesOfStandardOutput) {
    Run();
    auto const json = Json("/api/values");
    EXPECT_EQ(json["generation"].GetUint(), 2u);
    SharedSnapshot const block = memory->board.All().front();
    std::string const line = FormatJson(*block);
    EXPECT_NE(Get("/api/values").body.find(line.substr(0, line.size() - 1)), std::string::npos);
}

TEST_F(PageServiceTest, ShowsAVariableWithItsWritesAndItsLog) {
    Run();
    Post("/api/variables/0/write", R"({"value":"30"})");
    Run(2);
    auto const json = Json("/api/variables/0");
    EXPECT_STREQ(json["variable"]["name"].GetString(), "T");
    EXPECT_STREQ(json["variable"]["block"].GetString(), "AHU");
    EXPECT_EQ(json["now"]["value"].GetDouble(), 20.5);
    EXPECT_STREQ(json["now"]["write"]["state"].GetString(), "pending");
    EXPECT_GE(json["writes"].Size(), 1u);
    EXPECT_STREQ(json["writes"][0]["kind"].GetString(), "set");
    EXPECT_TRUE(json["log"].IsArray());
}

TEST_F(PageServiceTest, HasTheTrendOfANumber) {
    Run();
    temperature = Float(25);
    Run();
    auto const json = Json("/api/variables/0/trend?hours=2");
    EXPECT_EQ(json["to"].GetInt64() - json["from"].GetInt64(), 7200000);
    EXPECT_EQ(json["points"][0][1].GetDouble(), 20.5);
    EXPECT_EQ(json["points"][1][1].GetDouble(), 25);
    EXPECT_EQ(json["points"][1][0].GetInt64() - json["points"][0][0].GetInt64(), 1000);
    EXPECT_STREQ(json["points"][0][2].GetString(), "good");
    EXPECT_EQ(json["oldest"].GetInt64(), json["points"][0][0].GetInt64());
    EXPECT_TRUE(Json("/api/variables/2/trend")["oldest"].IsNull());
    EXPECT_EQ(Json("/api/variables/2/trend")["points"].Size(), 0u);
    for (char const* hours : {"0", "-1", "1.5", "x", "", "9999999"}) {
        EXPECT_EQ(Get(std::string("/api/variables/0/trend?hours=") + hours).status, 400) << hours;
    }
}

TEST_F(PageServiceTest, ExportsTrendsAndEventsAsCsv) {
    Run(2);
    HttpResponse const one = Get("/api/variables/0/trend.csv?hours=1");
    EXPECT_EQ(one.type, "text/csv; charset=utf-8");
    EXPECT_EQ(HeaderOf(one, "Content-Disposition"), "attachment; filename=\"trend-0.csv\"");
    EXPECT_NE(one.body.find("AHU,T,20.5,"), std::string::npos) << one.body;
    HttpResponse const both = Get("/api/trends.csv?id=0&id=1&id=0");
    EXPECT_NE(both.body.find("AHU,T,20.5,"), std::string::npos);
    EXPECT_NE(both.body.find("AHU,Mode,1,"), std::string::npos) << both.body;
    EXPECT_EQ(Get("/api/trends.csv").status, 400);
    EXPECT_EQ(Get("/api/trends.csv?id=77").status, 404);
    EXPECT_EQ(Get("/api/events.csv").body.substr(0, 8), "id,time,");
}

TEST_F(PageServiceTest, HasTheEventsAfterAnId) {
    suspect = "device: unknown-object";
    Run();
    EXPECT_EQ(Json("/api/events")["events"].Size(), 2u);
    EXPECT_EQ(Json("/api/events?after=1")["events"].Size(), 1u);
    EXPECT_EQ(Json("/api/events?after=2")["events"].Size(), 0u);
    EXPECT_EQ(ErrorOf(Get("/api/events?after=x")), "after: \"x\" is not the id of an event, 0 or more");
}

TEST_F(PageServiceTest, SetsAValueLikeThePrompt) {
    HttpResponse const response = Post("/api/variables/0/write", R"({"value":" 21.5 °C"})");
    EXPECT_EQ(response.status, 202);
    EXPECT_EQ(response.body,
              "{\"set\":\"AHU.T\",\"state\":\"pending\",\"value\":21.5,\"unit\":\"degrees-celsius\"}\n");
    EXPECT_EQ(Post("/api/variables/1/write", R"({"value":"on"})").status, 202);
    EXPECT_NE(log.Lines().back().find("page: AHU.Mode = 2 (on): pending"), std::string::npos);
}

TEST_F(PageServiceTest, SaysWhyAValueCannotBeSet) {
    HttpResponse const response = Post("/api/variables/0/write", R"({"value":"warm"})");
    EXPECT_EQ(response.status, 400);
    EXPECT_NE(response.body.find("\"state\":\"invalid\",\"reason\":\"\\\"AHU.T\\\": \\\"warm\\\""),
              std::string::npos)
        << response.body;
    EXPECT_NE(Post("/api/variables/2/write", R"({"value":"x"})")
                  .body.find("is read-only; to set it, give it Write"),
              std::string::npos);
    for (char const* body :
         {"", "{", "[]", "null", "{}", R"({"value":5})", R"({"value":null})", "{\"value\":\"\xFF\"}"}) {
        EXPECT_EQ(Post("/api/variables/0/write", body).status, 400) << body;
    }
    EXPECT_EQ(Post("/api/variables/0/write", std::string(100000, '[')).status, 400);
}

TEST_F(PageServiceTest, SaysWhyADeviceCannotBeRead) {
    auto json = Json("/api/variables/0/device");
    while (json["state"] == "reading") {
        std::this_thread::yield();
        json = Json("/api/variables/0/device");
    }
    EXPECT_STREQ(json["state"].GetString(), "failed");
    EXPECT_TRUE(json["reason"].IsString());
    EXPECT_TRUE(json["time"].IsNull());
    EXPECT_EQ(json["properties"].Size(), 0u);
}

TEST_F(ReadOnlyPageTest, SetsNothing) {
    HttpResponse const response = Post("/api/variables/0/write", R"({"value":"21"})");
    EXPECT_EQ(response.status, 403);
    EXPECT_NE(ErrorOf(response).find("--page-writes"), std::string::npos);
    EXPECT_FALSE(Json("/api/session")["writes"].GetBool());
    EXPECT_FALSE(Json("/api/plant")["writes"].GetBool());
    Run(2);
    EXPECT_FALSE(Json("/api/variables/0")["now"].HasMember("write"));
}

TEST_F(PageServiceTest, TakesTextsOfDevicesAsData) {
    label = "</script><script>alert(1)</script>\"\\\n\x01\x7F";
    Run();
    std::string const body = Get("/api/values").body;
    EXPECT_EQ(body.find('\x01'), std::string::npos);
    EXPECT_EQ(body.find('\x7F'), std::string::npos);
    EXPECT_EQ(std::string(Json("/api/values")["blocks"][0]["variables"][2]["value"].GetString()), label);
}

}  // namespace
