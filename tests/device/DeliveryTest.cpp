// From BACnet values to the runtime's values: every type, as a plain variable and as a DataValue.

#include <typeinfo>

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DeviceFixture.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "TimeValue.h"
#include "UintValue.h"
#include "Variants.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

using Value = std::shared_ptr<CPropertyValue>;

// One row of the table: a value of a type, the value that the runtime gets, and the traced text.
struct Row {
    int type;
    Value value;
    OpcUa_VariantHlp delivered;
    std::string trace;
};

constexpr long long HourUnits = 36'000'000'000;
// 15 March 2024, 00:00, as a file time.
constexpr long long March15 = 133549344000000000;

std::vector<Row> const& Rows() {
    static std::vector<Row> const rows = [] {
        std::vector<Row> list = {
            {0, std::make_shared<BooleanValue>(true), Bool(true), "value : true\n"},
            {0, std::make_shared<BooleanValue>(false), Bool(false), "value : false\n"},
            {1, std::make_shared<UintValue>(4294967295), UInt32(4294967295), "value : 4294967295\n"},
            {2, std::make_shared<IntValue>(-7), Int32(-7), "value : -7 \n"},
            {2, std::make_shared<IntValue>(0x1FFFFFFFELL), Int32(-2), "value : -2 \n"},
            {3, std::make_shared<RealValue>(1.5f), Float(1.5f), "value : 1.500000\n"},
            {4, std::make_shared<DoubleValue>(-0.25), Double(-0.25), "value : -0.250000\n"},
            {5, std::make_shared<OctetStringValue>(Hex("0A FF 80")), Text("0aff80"), "value : 0aff80\n\r"},
            {5, std::make_shared<OctetStringValue>(Octets()), Text(""), "value : \n\r"},
            {6, std::make_shared<CharacterStringValue>(std::string("a\0b", 3), EncodingTypeEnum::Utf8),
             Text(std::string("a\0b", 3)), ""},
            {7, std::make_shared<BitStringValue>(std::vector<bool>{true, false, true, true}), Text("1011"),
             "value : 1011\n\r"},
            {7, std::make_shared<BitStringValue>(std::vector<bool>()), Text(""), "value : \n\r"},
            {8, std::make_shared<TimeValue>(char(1), char(2), char(3), char(4)), UInt32(3723400), ""},
            {9, std::make_shared<DateValue>(char(124), char(3), char(15), char(5)),
             test::Time(March15 - 2 * HourUnits), ""},
            {10, std::make_shared<DateTimeValue>(Date(124, 3, 15, 5), ::Time(1, 0, 0, 0)),
             test::Time(March15 + HourUnits), ""},
            {12, std::make_shared<BinaryValue>(BACnetBinaryPV::Active), Bool(true), "value : 1\n"},
            {12, std::make_shared<BinaryValue>(BACnetBinaryPV::Inactive), Bool(false), "value : 0\n"},
            {12, std::make_shared<BinaryValue>(static_cast<BACnetBinaryPV>(7)), Bool(true), "value : 1\n"},
            {18, std::make_shared<EnumValue>(0x4F0u), UInt64(15), "value : 15\n"},
            {32, std::make_shared<CharacterStringValue>("exception", EncodingTypeEnum::Schedule),
             Text("exception"), ""},
            {33, std::make_shared<CharacterStringValue>("weekly", EncodingTypeEnum::Schedule), Text("weekly"),
             ""},
        };
        for (int const type : {11, 13, 14, 15, 16, 17, 19, 20, 22, 24, 27, 30}) {
            list.push_back({type, std::make_shared<EnumValue>(70000u), UInt32(70000), "value : 70000\n"});
        }
        return list;
    }();
    return rows;
}

class Delivery : public DeviceFixture {
protected:
    Delivery() {
        network.SetLocalTimeDiff(2 * HourUnits);
        MakeDevice();
    }

    WriteDataRec Deliver(int type, CPropertyValue& value, OpcUa_BuiltInTypeHlp declared,
                         unsigned status = 0) {
        DriverVarDsc descriptor;
        descriptor.ReadId = 1234567890123;
        descriptor.ReadField = "Field";
        descriptor.ReadType = declared;
        WriteDataRec record;
        record.Index = 5;
        record.Reserved = 6;
        device->ProcessResponseForTag(static_cast<PropertyTypeEnum>(type), &descriptor, value, status,
                                      record);
        EXPECT_EQ(record.Id, 1234567890123);
        EXPECT_EQ(record.Field, "Field");
        EXPECT_EQ(record.Index, 0u);
        EXPECT_EQ(record.Reserved, 0u);
        return record;
    }
};

TEST_F(Delivery, EveryTypeToAPlainVariable) {
    for (Row const& row : Rows()) {
        WriteDataRec const record = Deliver(row.type, *row.value, row.delivered.GetType(), 0x808C0000);
        EXPECT_EQ(record.Value, row.delivered) << "type " << row.type;
    }
}

TEST_F(Delivery, EveryTypeToADataValue) {
    std::vector<char> none;
    device->Receive(none);  // lets a second pass
    for (Row const& row : Rows()) {
        WriteDataRec const record =
            Deliver(row.type, *row.value, {OpcUaType_DataValue, row.delivered.GetType()}, 0x808C0000);
        long long const now = ScriptedNetwork::Start + 10'000'000;
        EXPECT_EQ(record.Value, DataValue(row.delivered, now, 0x808C0000)) << "type " << row.type;
    }
}

TEST_F(Delivery, EveryTypeIsTraced) {
    log.EnableTrace();
    for (Row const& row : Rows()) {
        log.Clear();
        Deliver(row.type, *row.value, row.delivered.GetType());
        EXPECT_EQ(log.Text(), row.trace) << "type " << row.type;
    }
}

TEST_F(Delivery, WithoutTraceNothingIsLogged) {
    for (Row const& row : Rows()) {
        Deliver(row.type, *row.value, row.delivered.GetType());
    }
    EXPECT_EQ(log.Text(), "");
}

// The client is created in summer, the date read in winter: 23:00 local time of the day before.
TEST_F(Delivery, OfADateKeepsTheTimeDifferenceOfItsClient) {
    network.SetLocalTimeDiff(HourUnits);
    DateValue date(Date(124, 3, 15, 5));
    EXPECT_EQ(Deliver(9, date, OpcUaType_DateTime).Value, test::Time(March15 - 2 * HourUnits));
}

TEST_F(Delivery, ValueOfAnotherClassIsABadCast) {
    BooleanValue boolean(true);
    RealValue real(1.0f);
    for (Row const& row : Rows()) {
        CPropertyValue& wrong = row.type == 0 ? static_cast<CPropertyValue&>(real) : boolean;
        EXPECT_THROW(Deliver(row.type, wrong, OpcUaType_Double), std::bad_cast) << "type " << row.type;
    }
}

TEST_F(Delivery, DataValueOnPresentValueHasStatus0AndThePresentTime) {
    RealValue value(42.0f);
    WriteDataRec const record = Deliver(3, value, {OpcUaType_DataValue, OpcUaType_Double});
    EXPECT_EQ(record.Value, DataValue(Double(42), ScriptedNetwork::Start, OpcUa_Good));
}

TEST_F(Delivery, DoubleVariableHoldsTheFloatChangedToDouble) {
    RealValue value(0.5f);
    WriteDataRec const record = Deliver(3, value, OpcUaType_Double);
    EXPECT_EQ(record.Value, Double(0.5));
}

TEST_F(Delivery, UnsignedOf2ToThe32IsDeliveredAs0) {
    UintValue value(4294967296);
    EXPECT_EQ(Deliver(1, value, OpcUaType_UInt32).Value, UInt32(0));
}

TEST_F(Delivery, StatusFlags1010AreDeliveredAs10) {
    EnumValue value(0x4A0u);
    EXPECT_EQ(Deliver(18, value, OpcUaType_UInt64).Value, UInt64(10));
}

TEST_F(Delivery, FourthOctetOfATimeCountsFor100Each) {
    TimeValue value(1, 2, 3, 4);
    EXPECT_EQ(Deliver(8, value, OpcUaType_UInt32).Value, UInt32(3723400));
}

TEST_F(Delivery, UnspecifiedOctetsOfATimeCountAs255) {
    TimeValue hundredths(1, 2, 3, static_cast<char>(255));
    EXPECT_EQ(Deliver(8, hundredths, OpcUaType_UInt32).Value, UInt32(3723000 + 25500));
    char const wildcard = static_cast<char>(255);
    TimeValue all(wildcard, wildcard, wildcard, wildcard);
    EXPECT_EQ(Deliver(8, all, OpcUaType_UInt32).Value, UInt32(255 * 3661000 + 25500));
}

TEST_F(Delivery, TypesWithoutARowLeaveTheVariantEmpty) {
    BooleanValue value(true);
    for (int const type : {21, 23, 25, 26, 28, 29, 31, 34, 1000, -1}) {
        EXPECT_EQ(Deliver(type, value, OpcUaType_Boolean).Value.GetType(), OpcUaType_Null) << type;
        OpcUa_BuiltInTypeHlp const dataValue(OpcUaType_DataValue, OpcUaType_Boolean);
        EXPECT_EQ(Deliver(type, value, dataValue).Value.GetType(), OpcUaType_Null) << type;
    }
}

TEST_F(Delivery, ValueThatCannotBeConvertedIsPassedToTheHost) {
    CharacterStringValue value("not a number", EncodingTypeEnum::Utf8);
    EXPECT_EQ(Deliver(6, value, OpcUaType_Double).Value.GetType(), OpcUaType_Null);
}

}  // namespace
