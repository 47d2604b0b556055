#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <thread>
#include <typeinfo>
#include <utility>

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "ExceptionScheduleValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "SupportInformation.h"
#include "UintValue.h"
#include "ValueTags.h"
#include "WeeklyScheduleValue.h"

namespace {

// The whole table again, by numbers: for each object type its properties as "property:type".
struct ObjectProperties {
    int object;
    bool hasCommonProperties;
    char const* further;
};

char const* const CommonProperties = "75:23 79:11 77:6 81:0 111:18 36:19 103:17 117:20 168:6 28:6";

// clang-format off
ObjectProperties const Objects[] = {
    { 0, true,  "85:3 65:3 69:3"},
    { 1, true,  "85:3 65:3 69:3 104:3"},
    { 2, true,  "85:3 65:3 69:3 104:3"},
    { 3, true,  "85:12 6:12 104:12 84:30 46:6 4:6 31:6 33:1"},
    { 4, true,  "85:12 6:12 104:12 84:30 46:6 4:6 31:6 33:1 40:3"},
    { 5, true,  "85:12 6:12 104:12 84:30 46:6 4:6 31:6 33:1"},
    { 6, true,  "85:1"},
    { 7, true,  "47:0 9:0"},
    { 8, true,  "139:1 98:1 120:1 62:1 155:1 73:1 11:1 10:1 167:1 121:6 70:6 44:6 12:6 58:6 112:22 107:24 196:27"},
    { 9, true,  ""},
    {10, true,  "42:1 13:0 99:0"},
    {12, true,  "85:3 21:3 108:3 93:3 49:3 26:3 82:20 20:20 88:1"},
    {13, true,  "85:1 74:1"},
    {14, true,  "85:1 104:1 74:1"},
    {15, false, "17:1 77:6 28:6 168:6"},
    {17, true,  "85:3 123:33 38:32"},
    {18, true,  "136:3 125:3 135:3 124:1 146:1 147:1 148:1"},
    {19, true,  "85:1 104:1 74:1"},
    {20, true,  "133:0 144:0 126:1 141:1 145:1"},
    {21, true,  "85:13 164:13 160:14 163:15 161:16"},
    {22, true,  "85:13 164:13 160:14 163:15 161:16"},
    {23, true,  "85:1 65:1"},
    {24, true,  "85:3 188:3 176:3 177:1 178:1"},
    {39, true,  "85:7"},
    {40, true,  "85:6"},
    {42, true,  "85:9 104:9"},
    {44, true,  "85:10 104:10"},
    {45, true,  "85:2"},
    {46, true,  "85:4"},
    {47, true,  "85:5 104:5"},
    {48, true,  "85:1"},
    {50, true,  "85:8 104:8"},
    {54, false, "85:3 164:3 104:3 374:3 375:3 376:3 373:0 386:0 377:1 381:1"},
};
// clang-format on

std::map<std::pair<int, int>, int> ExpectedTypes() {
    std::map<std::pair<int, int>, int> types;
    for (ObjectProperties const& row : Objects) {
        std::string const common = row.hasCommonProperties ? CommonProperties : "";
        std::istringstream pairs(common + " " + row.further);
        int property = 0;
        int type = 0;
        for (char colon; pairs >> property >> colon >> type;) {
            EXPECT_TRUE(types.emplace(std::make_pair(row.object, property), type).second)
                << row.object << " has " << property << " twice";
        }
    }
    return types;
}

SupportInformation const& Table() {
    return *SupportInformation::GetInstance();
}

PropertyInfo Info(int object, int property) {
    return Table().GetPropertyInfo(static_cast<ObjectTypeEnum>(object),
                                   static_cast<PropertyIdentifierEnum>(property));
}

PropertyValueParser* Parser(int type) {
    return Table().GetPropertyParser(static_cast<PropertyTypeEnum>(type));
}

std::string InfoFailure(int object, int property) {
    return test::Failure<SupportInformationException>([=] { Info(object, property); });
}

template <class ParserClass>
bool IsParser(int type) {
    PropertyValueParser const* const parser = Parser(type);
    return parser != nullptr && typeid(*parser) == typeid(ParserClass);
}

}  // namespace

TEST(SupportInformation, HasEveryPairOfTheListAndNoOther) {
    auto const expected = ExpectedTypes();
    ASSERT_EQ(expected.size(), 445U);
    for (int object = 0; object <= 60; ++object) {
        for (int property = 0; property <= 400; ++property) {
            auto const row = expected.find({object, property});
            if (row == expected.end()) {
                ASSERT_EQ(InfoFailure(object, property), "Support Information not found")
                    << object << " " << property;
            } else {
                PropertyInfo const info = Info(object, property);
                ASSERT_EQ(static_cast<int>(info.type), row->second) << object << " " << property;
                ASSERT_FALSE(info.isArray || info.isOptional);
            }
        }
    }
}

TEST(SupportInformation, ReturnsTheRealParserForThePresentValueOfAnAnalogInput) {
    EXPECT_EQ(Info(0, 85).type, PropertyTypeEnum::Real);
    EXPECT_TRUE(IsParser<RealValueParser>(3));
}

TEST(SupportInformation, RefusesProperty1000AndEveryPropertyOfAGroup) {
    EXPECT_EQ(InfoFailure(0, 1000), "Support Information not found");
    for (int property = 0; property < 1100; ++property) {
        EXPECT_EQ(InfoFailure(11, property), "Support Information not found") << property;
    }
}

TEST(SupportInformation, RefusesObjectTypesThatTheStandardLacks) {
    EXPECT_EQ(InfoFailure(-1, 85), "Support Information not found");
    EXPECT_EQ(InfoFailure(1023, 85), "Support Information not found");
}

TEST(SupportInformation, RefusesTheObjectIdentifierOfANotificationClassButNotItsName) {
    EXPECT_EQ(InfoFailure(15, 75), "Support Information not found");
    EXPECT_EQ(Info(15, 77).type, PropertyTypeEnum::Character_String);
}

TEST(SupportInformation, ReadsType32WithTheParserOfExceptionSchedules) {
    EXPECT_TRUE(IsParser<ExceptionScheduleValueParser>(32));
    EXPECT_FALSE(IsParser<EnumValueParser>(32));
}

TEST(SupportInformation, HasNoParserForType23NorForTypesThatDoNotOccur) {
    for (int const type : {23, 21, 25, 26, 28, 29, 34, -1, 1000}) {
        EXPECT_EQ(Parser(type), nullptr) << type;
        EXPECT_EQ(Parser(type), nullptr) << type << " requested again";
    }
}

TEST(SupportInformation, ReadsEveryTypeWithItsParser) {
    EXPECT_TRUE(IsParser<BooleanValueParser>(0));
    EXPECT_TRUE(IsParser<UintValueParser>(1));
    EXPECT_TRUE(IsParser<IntValueParser>(2));
    EXPECT_TRUE(IsParser<DoubleValueParser>(4));
    EXPECT_TRUE(IsParser<OctetStringValueParser>(5));
    EXPECT_TRUE(IsParser<CharacterStringValueParser>(6));
    EXPECT_TRUE(IsParser<BitStringValueParser>(7));
    EXPECT_TRUE(IsParser<TimeValueParser>(8));
    EXPECT_TRUE(IsParser<DateValueParser>(9));
    EXPECT_TRUE(IsParser<DateTimeValueParser>(10));
    EXPECT_TRUE(IsParser<BinaryValueParser>(12));
    EXPECT_TRUE(IsParser<WeeklyScheduleValueParser>(33));
    for (int const type : {11, 13, 14, 15, 16, 17, 18, 19, 20, 22, 24, 27, 30, 31}) {
        EXPECT_TRUE(IsParser<EnumValueParser>(type)) << type;
    }
}

TEST(SupportInformation, ReadsStatusFlagsAsANumberWithTheirUnusedBits) {
    auto const value = Parser(static_cast<int>(Info(0, 111).type))->Parse(*test::Wrap(test::Hex("82 04 F0")));
    EXPECT_EQ(dynamic_cast<EnumValue&>(*value).GetValue(), 1264U);
}

TEST(SupportInformation, ReadsThePresentValueOfACalendarAsZero) {
    auto const value = Parser(static_cast<int>(Info(6, 85).type))->Parse(*test::Wrap(test::Hex("11")));
    EXPECT_EQ(dynamic_cast<UintValue&>(*value).GetValue(), 0U);
}

TEST(SupportInformation, IsReadByManyThreadsAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> found(4);
    for (int& count : found) {
        threads.emplace_back([&count] {
            for (int type = -20; type < 60; ++type) {
                count += Parser(type) != nullptr ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, std::vector<int>(4, 28));
}

TEST(PropertyInfo, HasType3ByDefault) {
    EXPECT_EQ(static_cast<int>(PropertyInfo().type), 3);
    EXPECT_EQ(PropertyInfo(PropertyTypeEnum::Date).type, PropertyTypeEnum::Date);
}

TEST(ObjPropKey, IsOrderedByObjectTypeAndThenByPropertyAsSignedNumbers) {
    auto const key = [](int object, int property) {
        return ObjPropKey(static_cast<ObjectTypeEnum>(object), static_cast<PropertyIdentifierEnum>(property));
    };
    EXPECT_LT(key(1, 200), key(2, 100));
    EXPECT_LT(key(1, 100), key(1, 200));
    EXPECT_LT(key(-1, 100), key(0, 100));
    EXPECT_LT(key(0, -1), key(0, 0));
    EXPECT_FALSE(key(1, 1) < key(1, 1));
}
