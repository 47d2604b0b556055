#include "OutletFormat.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

OutletState Broker() {
    return {"mqtt", OutletHealth::Good, "connected to broker.example:8883", Noon, {{"messages", 12}}};
}

TEST(OutletFormat, AnOutletIsAJsonObject) {
    EXPECT_EQ(OutletJson(Broker(), Hour),
              R"({"outlet":"mqtt","health":"good","text":"connected to broker.example:8883",)"
              R"("since":"2024-03-15T12:34:56.789+01:00","counts":{"messages":12}})");
}

TEST(OutletFormat, TextsOfOthersStayOneJsonText) {
    OutletState outlet = Broker();
    outlet.text = "a \"quoted\"\nline \xFF";
    EXPECT_NE(OutletJson(outlet, Hour)
                  .find(R"("text":"a \"quoted\"\nline )"
                        "\xEF\xBF\xBD\""),
              std::string::npos);
}

TEST(OutletFormat, AllOutletsAreOneObject) {
    EXPECT_EQ(OutletsJson({}, 0), R"({"outlets":[]})");
    EXPECT_EQ(OutletsJson({Broker(), Broker()}, Hour),
              R"({"outlets":[)" + OutletJson(Broker(), Hour) + "," + OutletJson(Broker(), Hour) + "]}");
}

TEST(OutletFormat, TheSummaryHasALineForEachOutlet) {
    OutletState recording{
        "recording", OutletHealth::Failed, "disk full\x1B[2J", Noon, {{"rows", 3}, {"lost", 1}}};
    EXPECT_EQ(OutletLines({Broker(), recording}),
              "mqtt: good, connected to broker.example:8883; 12 messages\n"
              "recording: failed, disk full\\x1B[2J; 3 rows, 1 lost\n");
    EXPECT_EQ(OutletLines({}), "");
}

}  // namespace
