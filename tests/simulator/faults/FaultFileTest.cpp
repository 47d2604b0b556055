#include <gtest/gtest.h>

#include "DeviceFile.h"
#include "Mistake.h"

namespace {

std::string const Start = "device{name = 'AHU-1', instance = 1, faults =\n";

std::string Mistake(std::string const& faults) {
    try {
        simulator::ParseDeviceFile("plant.lua", Start + faults + "}");
    } catch (simulator::Mistake const& found) {
        return found.what();
    }
    return "no mistake";
}

std::vector<std::string> Read(std::string const& faults) {
    auto const devices = simulator::ParseDeviceFile("plant.lua", Start + faults + "}");
    std::vector<std::string> texts;
    for (simulator::Fault const& fault : devices.at(0).Settings().faults) {
        texts.push_back(TextOf(fault));
    }
    return texts;
}

}  // namespace

TEST(FaultFile, FaultsInTheirOrder) {
    EXPECT_EQ(Read(R"({
        fault{"silence", duration = 5},
        fault{"truncate", octet = 9, times = 1, on = "write", mend = false},
        fault{"delay", seconds = 0.4, chance = 0.1},
        fault{"headers_only", headers = "bvlc", object = {"analog_input", 3}, every = 2, seed = 7, after = 1.5},
    })"),
              (std::vector<std::string>{
                  "silence duration=5",
                  "truncate octet=9 mend=false on=write times=1",
                  "delay seconds=0.4 chance=0.1",
                  "headers_only headers=bvlc object=analog_input:3 every=2 seed=7 after=1.5",
              }));
}

TEST(FaultFile, NoneIsNone) {
    EXPECT_TRUE(Read("nil").empty());
    EXPECT_TRUE(Read("{}").empty());
}

TEST(FaultFile, EveryKindCanBeGiven) {
    for (simulator::FaultRow const& row : simulator::FaultRows) {
        EXPECT_EQ(Read("{fault{'" + std::string(row.name) + "'}}"), std::vector<std::string>{row.name});
    }
}

TEST(FaultFile, EachMistakeNamesLineDeviceAndField) {
    struct Row {
        char const* faults;
        char const* message;
    };
    Row const rows[] = {
        {"{fault{'silense'}}", "faults: unknown fault \"silense\" (did you mean \"silence\"?)"},
        {"{fault{'nothing like it'}}", "faults: unknown fault \"nothing like it\""},
        {"{fault{}}", "faults: must begin with the name of a fault and have names for all else"},
        {"{fault{'silence', 5}}", "faults: must begin with the name of a fault and have names for all else"},
        {"{fault{7}}", "faults: must be a text, not 7"},
        {"{fault{'delay', second = 1}}",
         "faults: delay: has no field \"second\" (did you mean \"seconds\"?)"},
        {"{fault{'silence', octet = 1}}", "faults: silence: has no field \"octet\""},
        {"{fault{'delay', seconds = -1}}", "faults: delay: seconds: must be from 0 to 1000000 seconds"},
        {"{fault{'delay', seconds = 0/0}}", "faults: delay: seconds: must be from 0 to 1000000 seconds"},
        {"{fault{'delay', seconds = '1'}}", "faults: delay: seconds: must be a number, not \"1\""},
        {"{fault{'loss', chance = 1.5}}", "faults: loss: chance: must be from 0 to 1"},
        {"{fault{'loss', every = 0}}", "faults: loss: every: must be at least 1"},
        {"{fault{'loss', times = 0}}", "faults: loss: times: must be at least 1"},
        {"{fault{'loss', on = 'reed'}}",
         "faults: loss: on: must be \"any\", \"read\", \"write\" or \"who_is\", not \"reed\""},
        {"{fault{'loss', object = 'pump'}}",
         "faults: loss: object: must be an object like {\"analog_input\", 1}, not \"pump\""},
        {"{fault{'loss', object = {'pump', 1}}}", "faults: loss: object: unknown object type \"pump\""},
        {"{fault{'headers_only', headers = 'all'}}",
         "faults: headers_only: headers: must be \"bvlc\", \"npdu\" or \"apdu\", not \"all\""},
        {"{fault{'truncate', mend = 1}}", "faults: truncate: mend: must be true or false, not 1"},
        {"{fault{'reject', code = 256}}", "faults: reject: code: must be at most 255, not 256"},
        {"{fault{'lost_segment', segment = 256}}",
         "faults: lost_segment: segment: must be at most 255, not 256"},
        {"{'silence'}", "faults: must be faults such as fault{\"silence\"}, not \"silence\""},
        {"fault{'silence'}", "faults: must be a list, not a fault"},
    };
    for (Row const& row : rows) {
        std::string const text = Mistake(row.faults);
        std::string const place = ": device AHU-1: ";
        ASSERT_NE(text.find(place), std::string::npos) << text;
        EXPECT_EQ(text.substr(text.find(place) + place.size()), row.message);
    }
}

TEST(FaultFile, TheLineIsThatOfTheFault) {
    EXPECT_EQ(Mistake("{fault{'silence'},\n fault{'silense'}}").substr(0, 12), "plant.lua:3:");
}

TEST(FaultFile, NoMoreThanADeviceKeeps) {
    EXPECT_EQ(Mistake("(function() local t = {} for i = 1, 65 do t[i] = fault{'loss'} end return t end)()"),
              "plant.lua:1: device AHU-1: faults: there are more than 64");
}
