#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "DocumentPart.h"
#include "FakeOutlet.h"
#include "PageFixture.h"
#include "PageRoutes.h"
#include "Whereabouts.h"

using namespace test;
using namespace workbench;

namespace {

using Names = std::set<std::string>;

// "blocks[].name" for each field of a value, in the order of the alphabet.
void AddFields(rapidjson::Value const& value, std::string const& path, Names& fields) {
    if (value.IsObject()) {
        for (auto const& member : value.GetObject()) {
            AddFields(member.value, (path.empty() ? "" : path + ".") + member.name.GetString(), fields);
        }
    } else if (value.IsArray() && !value.Empty()) {
        for (auto const& element : value.GetArray()) {
            AddFields(element, path + "[]", fields);
        }
    } else {
        fields.insert(path);
    }
}

// The requests that a table of the document has in its first column, without parameters.
Names DocumentedRequests() {
    Names requests;
    std::ifstream document(PAGE_DOCUMENT);
    std::string const begin = "| `";
    for (std::string line; std::getline(document, line);) {
        for (std::string const method : {"GET /api/", "POST /api/"}) {
            if (line.compare(0, begin.size() + method.size(), begin + method) == 0) {
                std::string const request =
                    line.substr(begin.size(), line.find('`', begin.size()) - begin.size());
                requests.insert(request.substr(0, request.find('?')));
            }
        }
    }
    return requests;
}

// Everything that an answer can have is there at least once.
class PageDocumentTest : public PageTest {
protected:
    PageDocumentTest() {
        week = TextOf("/api/variables/3/schedule",
                      R"({"model":{"kind":"weekly","days":[[{"time":"06:00","type":"real","value":"21.5"}],
                         [],[{"time":"06:00","type":"unsigned","value":"3"}],[],[],[],[]]}})");
        exceptions = TextOf("/api/variables/4/schedule",
                            R"({"model":{"kind":"exception","events":[{"period":{"kind":"date","date":
                               {"year":2024,"month":1,"day":21,"weekday":null}},"priority":10,
                               "entries":[{"time":"00:00","type":"real","value":"16"}]},
                               {"period":{"kind":"calendar","instance":7},"priority":16,"entries":[]}]}})");
        suspect = "device: unknown-object";
        complete = [](BlockSnapshot& snapshot) {
            snapshot.causes.push_back({});
            WriteState& write = snapshot.variables.front().write;
            if (write.stage == WriteStage::Pending) {
                write.reason = "the reason";
                write.device = "7";
            }
        };
        Post("/api/variables/0/write", R"({"value":"30"})");
        Here() = {&project.Blocks().front(), nullptr, &project.Blocks().front().variables.front()};
        FakeOutlet::AddTo(outlets, {"mqtt", OutletHealth::Good, "connected", 1, {{"messages", 1}}});
        log.Add("a line about T");
        Here() = {};
        Run(2);
    }

    std::string TextOf(std::string const& target, std::string const& body) const {
        rapidjson::Document document;
        document.Parse(Post(target, body).body.c_str());
        return document.HasMember("text") && document["text"].IsString() ? document["text"].GetString() : "";
    }

    static void Add(std::string& table, std::string const& request, std::string const& json) {
        rapidjson::Document document;
        document.Parse(json.c_str());
        ASSERT_FALSE(document.HasParseError()) << request;
        Names fields;
        AddFields(document, "", fields);
        std::string row;
        for (std::string const& field : fields) {
            row += (row.empty() ? "`" : ", `") + field + "`";
        }
        table += "| " + request + " | " + row + " |\n";
    }
};

TEST_F(PageDocumentTest, HasEveryRequestAndNoOther) {
    Names routes;
    for (PageRoute const& route : PageRoutes()) {
        routes.insert(std::string(route.method) + " " + route.path);
    }
    EXPECT_EQ(DocumentedRequests(), routes);
}

TEST_F(PageDocumentTest, HasEveryFieldAndNoOther) {
    std::string table = "\n| Answer to | Fields |\n|---|---|\n";
    for (char const* target : {"/api/session", "/api/plant", "/api/values", "/api/events", "/api/variables/0",
                               "/api/variables/0/trend"}) {
        Add(table, "GET " + std::string(target), Get(target).body);
    }
    Inspection inspection;
    inspection.properties.push_back({"present-value", "40 %"});
    Add(table, "GET /api/variables/0/device", InspectionJson(inspection, 0));
    Add(table, "GET /api/variables/3/schedule", Get("/api/variables/3/schedule").body);
    Add(table, "GET /api/variables/4/schedule?year=2024", Get("/api/variables/4/schedule?year=2024").body);
    Add(table, "POST /api/variables/3/schedule",
        Post("/api/variables/3/schedule", R"({"model":{"kind":"weekly","days":[[{"time":"06:00","type":"real",
             "value":"1"}],[{"time":"*:30","type":"unsigned","value":"2"}],[],[],[],[],[]]}})")
            .body);
    Add(table, "POST /api/variables/0/write", Post("/api/variables/0/write", R"({"value":"30"})").body);
    Add(table, "POST /api/variables/0/write, status 400",
        Post("/api/variables/0/write", R"({"value":"warm"})").body);
    Add(table, "any request, other errors", Get("/api/nothing").body);
    ExpectInDocument(PAGE_DOCUMENT, "fields", table + "\n");
}

}  // namespace
