#include <gtest/gtest.h>

#include <sstream>

#include "Display.h"
#include "FakeEnvironment.h"
#include "FakeOutlet.h"

using namespace test;
using namespace workbench;

namespace {

TEST(JsonDisplay, AnOutletIsWrittenWhenItsStateHasChanged) {
    FakeEnvironment world;
    dorvel::SetEnvironment(&world);
    std::ostringstream out;
    OutletList outlets;
    FakeOutlet& mqtt = FakeOutlet::AddTo(outlets, {"mqtt", OutletHealth::Starting, "", 1, {}});
    JsonDisplay display(out, outlets, ChangeFilter());
    display.Refresh();
    EXPECT_EQ(out.str().find(R"({"outlet":"mqtt","health":"starting")"), 0U);

    out.str("");
    mqtt.state.counts = {{"messages", 1}};
    display.Refresh();
    EXPECT_EQ(out.str(), "");

    mqtt.state.health = OutletHealth::Failed;
    mqtt.state.text = "wrong password";
    display.Refresh();
    EXPECT_NE(out.str().find(R"("health":"failed","text":"wrong password")"), std::string::npos);
    EXPECT_EQ(out.str().back(), '\n');
    dorvel::SetEnvironment(nullptr);
}

}  // namespace
