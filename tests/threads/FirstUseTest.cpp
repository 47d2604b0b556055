// The first use of shared data from eight threads at once. ctest runs each of these tests in its own process,
// so that each use is the first.

#include <array>
#include <set>

#include "BACnet_protocol.h"
#include "BinaryAnswers.h"
#include "CodeMaps.h"
#include "Concurrency.h"
#include "ExceptionScheduleValue.h"
#include "FakeStream.h"
#include "LineNetwork.h"
#include "LogCapture.h"
#include "PduParser.h"
#include "Plant.h"
#include "SupportInformation.h"
#include "TBACnet.h"
#include "Variants.h"
#include "WeeklyScheduleValue.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr int Threads = 8;
constexpr std::chrono::seconds Patience(60);

class FirstUse : public ::testing::Test {
protected:
    FirstUse() { TBACnet::IsTerminated = false; }

    DeadlockWatch watch{Patience};
    LogCapture log;
};

TEST_F(FirstUse, OfTheEntryRegistersOnce) {
    AtOnce(Threads, [](int) { EXPECT_EQ(Init(), 0); });
    EXPECT_EQ(log.Text(), "") << "a second registration would be refused and traced";
    EXPECT_EQ(RegisterExternalSTLib("BACnet", [](lua_State*) { return 1; }), -1);
}

TEST_F(FirstUse, OfThePlantPollsAndWritesOnEachThread) {
    LineNetwork network([](int, Octets const& request) {
        return std::vector<LineAnswer>{{IsWrite(request) ? WriteDone(request) : ValueOf42(request)}};
    });
    AtOnce(Threads, [](int) {
        Plant plant(1);
        long long const id = plant.Add("WriteCondition = 1,");
        plant.Variables().Write(id + 1, "", Double(1), 1);
        plant.Runtime().RunOnce();
        EXPECT_EQ(plant.NumberOf(id), 42);
        EXPECT_EQ(plant.Faults(), 0);
    });
    EXPECT_EQ(network.TotalSent(), 2ul * Threads);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(FirstUse, OfThePduParsersReadsAWholeAck) {
    Octets const datagram = ValueOf42(Hex("81 0A 00 15 01 04 02 74 07 0E 0C 00 00 00 01 1E 09 55 09 6F 1F"));
    Octets const apdu(datagram.begin() + 6, datagram.end());
    AtOnce(Threads, [&apdu](int) {
        FakeStream stream(apdu);
        EXPECT_EQ(PduParser::Parse(stream)->PduType(), PduTypeEnum::ComplexAck);
    });
}

TEST_F(FirstUse, OfTheSupportTableFindsARow) {
    AtOnce(Threads, [](int) {
        SupportInformation const& support = *SupportInformation::GetInstance();
        PropertyInfo const info =
            support.GetPropertyInfo(ObjectTypeEnum::Analog_Input, PropertyIdentifierEnum::Present_Value);
        EXPECT_EQ(info.type, PropertyTypeEnum::Real);
        EXPECT_NE(support.GetPropertyParser(info.type), nullptr);
    });
}

// Unknown codes are added to the maps, and eight blocks may still be initialised at once.
TEST_F(FirstUse, OfTheCodeMapsFillsThemOnceAndAddsUnknownNumbers) {
    AtOnce(Threads, [](int number) {
        InitObjectTypesMap();
        EXPECT_EQ(GetBacnetObjectType(22), ObjectTypeEnum::Schedule);
        EXPECT_EQ(GetPropertyType(30), PropertyIdentifierEnum::Weekly_Schedule);
        for (int unknown = 1000; unknown < 1100; ++unknown) {
            EXPECT_EQ(static_cast<int>(GetBacnetObjectType(unknown)), 0);
            EXPECT_EQ(static_cast<int>(GetPropertyType(unknown + 100 * number)), 0);
        }
        InitObjectTypesMap();
    });
    std::size_t const objectTypes = objectTypesMap.size();
    std::size_t const properties = propertyTypesMap.size();
    objectTypesMap.clear();
    propertyTypesMap.clear();
    InitObjectTypesMap();
    EXPECT_EQ(objectTypes, objectTypesMap.size() + 100);
    EXPECT_EQ(properties, propertyTypesMap.size() + 100 * Threads);
    // The maps live as long as the process. Later tests need them as they are when the library is loaded.
    objectTypesMap.clear();
    propertyTypesMap.clear();
}

TEST_F(FirstUse, OfTheConnectionIdsGivesEachOnce) {
    constexpr int each = 1000;
    std::array<std::set<std::string>, Threads> taken;
    AtOnce(Threads, [&taken](int number) {
        for (int i = 0; i < each; ++i) {
            taken[static_cast<std::size_t>(number)].insert(BACnetProtocol::getId());
        }
    });
    std::set<std::string> all;
    for (auto const& ids : taken) {
        all.insert(ids.begin(), ids.end());
    }
    EXPECT_EQ(all.size(), static_cast<std::size_t>(Threads * each));
}

TEST_F(FirstUse, OfTheScheduleTextsReadsBoth) {
    AtOnce(Threads, [](int) {
        WeeklyScheduleValue const weekly("12000000,2,1,1;;;;;;;", EncodingTypeEnum::Schedule);
        EXPECT_EQ(weekly.ToApplicationComplexTags().size(), 7u);
        ExceptionScheduleValue const exceptions("3,1,3,12000000,2,1,1;", EncodingTypeEnum::Schedule);
        EXPECT_EQ(exceptions.ToApplicationComplexTags().size(), 3u);
    });
}

TEST_F(FirstUse, OfTheLogKeepsLinesWhole) {
    AtOnce(Threads, [](int number) {
        for (int i = 0; i < 100; ++i) {
            logMsg("thread %d writes line %d\n", number, i);
        }
    });
    std::size_t lines = 0;
    for (std::size_t position = 0; position < log.Text().size();
         position = log.Text().find('\n', position) + 1) {
        EXPECT_EQ(log.Text().compare(position, 7, "thread "), 0);
        ++lines;
    }
    EXPECT_EQ(lines, 100u * Threads);
}

}  // namespace
