// The octets that are written for a value of the runtime: every type, every error, the property, the
// priority.

#include <set>

#include "BuildValue.h"
#include "SupportInformation.h"
#include "WriteFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

// 15 March 2024, 00:00, as a file time.
constexpr long long March15 = 133549344000000000;
constexpr long long HourUnits = 36'000'000'000;

constexpr char EmptyWeek[] = "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F";

struct Row {
    int type;
    ObjectTypeEnum object;
    PropertyIdentifierEnum property;
    OpcUa_VariantHlp value;
    unsigned writtenProperty;
    std::string octets;
};

using Object = ObjectTypeEnum;
using Property = PropertyIdentifierEnum;

std::vector<Row> const& Rows() {
    static std::vector<Row> const rows = {
        {0, Object::Analog_Value, Property::Out_Of_Service, Bool(true), 85, "91 01"},
        {0, Object::Analog_Value, Property::Out_Of_Service, Bool(false), 85, "91 00"},
        {1, Object::Positive_Integer_Value, Property::Present_Value, Int64(300), 85, "22 01 2C"},
        {1, Object::Positive_Integer_Value, Property::Present_Value, UInt32(4294967295), 85,
         "24 FF FF FF FF"},
        {1, Object::Multi_State_Value, Property::Present_Value, Int32(0), 85, "21 00"},
        {1, Object::Multi_State_Value, Property::Present_Value, Int32(-1), 85,
         "25 08 FF FF FF FF FF FF FF FF"},
        {2, Object::Integer_Value, Property::Present_Value, Int32(-2), 85, "35 08 FF FF FF FF FF FF FF FE"},
        {2, Object::Integer_Value, Property::Present_Value, Int32(200), 85, "31 C8"},
        {3, Object::Analog_Value, Property::Present_Value, Double(21.5), 85, "44 41 AC 00 00"},
        {3, Object::Analog_Value, Property::Present_Value, Float(-1), 85, "44 BF 80 00 00"},
        {3, Object::Analog_Value, Property::Present_Value, Double(1e300), 85, "44 7F 80 00 00"},
        {3, Object::Analog_Value, Property::Present_Value, Double(-1e300), 85, "44 FF 80 00 00"},
        {3, Object::Analog_Value, Property::Present_Value, Double(1e-300), 85, "44 00 00 00 00"},
        {4, Object::Large_Analog_Value, Property::Present_Value, Double(-0.25), 85,
         "55 08 BF D0 00 00 00 00 00 00"},
        {6, Object::Characterstring_Value, Property::Present_Value, Text("hi"), 85, "73 00 68 69"},
        {6, Object::Characterstring_Value, Property::Present_Value, Text(""), 85, "71 00"},
        {6, Object::Characterstring_Value, Property::Present_Value, Text("\xC3\xA4"), 85, "73 00 C3 A4"},
        {8, Object::Time_Value, Property::Present_Value, Int32(1500), 85, "B4 00 00 01 05"},
        {8, Object::Time_Value, Property::Present_Value, UInt32(86399999), 85, "B4 17 3B 3B 09"},
        {9, Object::Date_Value, Property::Present_Value, test::Time(March15), 85, "A4 7C 03 0F FF"},
        {10, Object::Datetime_Value, Property::Present_Value, test::Time(March15 + HourUnits + 17'650'000),
         85, "A4 7C 03 0F FF B4 01 00 01 07"},
        {12, Object::Binary_Value, Property::Present_Value, Bool(true), 85, "91 01"},
        {12, Object::Binary_Output, Property::Present_Value, Int32(0), 85, "91 00"},
        {32, Object::Schedule, Property::Exception_Schedule, Text("3,7,10,08000000,1,1,1;"), 38,
         "1C 01 80 00 07 2E B4 08 00 00 00 11 2F 39 0A"},
        {33, Object::Schedule, Property::Weekly_Schedule, Text(";;;;;;;"), 123, EmptyWeek},
    };
    return rows;
}

int TypeOf(ObjectTypeEnum object, PropertyIdentifierEnum property) {
    return static_cast<int>(SupportInformation::GetInstance()->GetPropertyInfo(object, property).type);
}

class WriteValue : public WriteFixture {
protected:
    // The octets of the written value, or the text of the exception.
    static std::string Built(int type, OpcUa_VariantHlp const& value, long long localTimeDiff = 0) {
        try {
            Octets octets;
            for (Tag const& tag :
                 BuildValue(static_cast<PropertyTypeEnum>(type), value, localTimeDiff)->ToApplicationTags()) {
                octets = octets + tag.GetBytes();
            }
            return ToHex(octets);
        } catch (std::runtime_error const& refusal) {
            return refusal.what();
        }
    }

    void ExpectRefused(ObjectTypeEnum object, PropertyIdentifierEnum property, OpcUa_VariantHlp const& value,
                       std::string const& text = Refused) {
        log.Clear();
        Write(object, property, value);
        EXPECT_EQ(log.Text(), text);
        EXPECT_TRUE(network.SentDatagrams().empty());
    }

    // The last two octets of the APDU for the configured priority.
    std::string EndWithPriority(int priority) {
        std::vector<char> const apdu = MakeWriter(priority).FormWriteMessage(
            *MakeTag(Object::Analog_Value, Property::Present_Value), 1, Double(1));
        return ToHex(Octets(apdu.end() - 2, apdu.end()));
    }
};

TEST_F(WriteValue, OfEveryTypeHasItsOctetsAndIsNotLogged) {
    unsigned invokeId = 0;
    std::set<int> types;
    for (Row const& row : Rows()) {
        SCOPED_TRACE(row.octets);
        ASSERT_EQ(TypeOf(row.object, row.property), row.type);
        types.insert(row.type);
        long long const before = network.Elapsed();
        ++invokeId;
        network.Expect(WriteRequest(invokeId, ObjectHex(row.object, 1), row.writtenProperty, row.octets))
            .Answer(WriteAck(invokeId), 5);
        Write(row.object, row.property, row.value);
        EXPECT_EQ(network.Elapsed() - before, 5 + 1000)
            << "the ack, and the receive that follows every write";
        EXPECT_EQ(log.Text(), "");
    }
    EXPECT_EQ(types, (std::set<int>{0, 1, 2, 3, 4, 6, 8, 9, 10, 12, 32, 33}));
}

TEST_F(WriteValue, RequestHasItsOctets) {
    network.Expect("81 0A 00 1A 01 04 00 04 01 0F 0C 00 80 00 01 19 55 3E 44 3F 80 00 00 3F 49 08")
        .Answer("81 0A 00 09 01 00 20 01 0F");
    MakeWriter(8);
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteValue, OfARoutedDeviceIsSentThroughItsRouter) {
    DeviceParameters parameters;
    parameters.mac = "10:20";
    parameters.networkNumber = 5;
    parameters.priority = 0;
    MakeDevice(parameters);
    network.Expect(BvlcFrame("01 24 00 05 02 0A 14 FF " + WriteApdu(1, AnalogValue1, 85, "44 3F 80 00 00")))
        .Answer(RoutedAnswerDatagram(5, "0A 14", "20 01 0F"));
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteValue, BooleanTrueIsTheEnumeratedValue1) {
    network.Expect(WriteRequest(1, ObjectHex(Object::Binary_Value, 1), 85, "91 01")).Answer(WriteAck(1));
    Write(Object::Binary_Value, Property::Out_Of_Service, Bool(true));
}

TEST_F(WriteValue, Of1500MillisecondsIsOneSecondAndFive) {
    EXPECT_EQ(Built(8, Int32(1500)), "B4 00 00 01 05");
}

TEST_F(WriteValue, OfATimeIsSplitFromMilliseconds) {
    EXPECT_EQ(Built(8, Int32(0)), "B4 00 00 00 00");
    EXPECT_EQ(Built(8, Int32(99)), "B4 00 00 00 00");
    EXPECT_EQ(Built(8, Int32(3723999)), "B4 01 02 03 09");
    EXPECT_EQ(Built(8, Int32(86400000)), "B4 18 00 00 00");
    EXPECT_EQ(Built(8, Int32(std::numeric_limits<int>::max())), "B4 54 1F 17 06") << "596 hours, cut";
    EXPECT_EQ(Built(8, Int32(-3600000)), "B4 FF 00 00 00");
}

TEST_F(WriteValue, NameOfAnAnalogValueIsWrittenToItsPresentValue) {
    network.Expect(WriteRequest(1, AnalogValue1, 85, "73 00 68 69")).Answer(WriteAck(1));
    Write(Object::Analog_Value, Property::Object_Name, Text("hi"));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteValue, HostTimeOf0IsRefusedOnADate) {
    ExpectRefused(Object::Date_Value, Property::Present_Value, test::Time(0));
}

TEST_F(WriteValue, InvalidHostTimeIsRefused) {
    for (auto const object : {Object::Date_Value, Object::Datetime_Value}) {
        ExpectRefused(object, Property::Present_Value, test::Time(0));
        ExpectRefused(object, Property::Present_Value, Text("no time"));
        ExpectRefused(object, Property::Present_Value, Null());
        ExpectRefused(object, Property::Present_Value, test::Time(-1));
        ExpectRefused(object, Property::Present_Value, test::Time(std::numeric_limits<long long>::max()));
    }
    EXPECT_EQ(Built(9, test::Time(std::numeric_limits<long long>::max()), HourUnits), Refused);
}

TEST_F(WriteValue, OfADateIsLocalAndOfADateTimeIsNot) {
    network.SetLocalTimeDiff(2 * HourUnits);
    MakeWriter();
    long long const lateEvening = March15 - HourUnits;
    network.Expect(WriteRequest(1, ObjectHex(Object::Date_Value, 1), 85, "A4 7C 03 0F FF"))
        .Answer(WriteAck(1));
    Write(Object::Date_Value, Property::Present_Value, test::Time(lateEvening));
    network.Expect(WriteRequest(2, ObjectHex(Object::Datetime_Value, 1), 85, "A4 7C 03 0E FF B4 17 00 00 00"))
        .Answer(WriteAck(2));
    Write(Object::Datetime_Value, Property::Present_Value, test::Time(lateEvening));
}

// The client is created in winter, midnight of 15 March written in summer: the day before.
TEST_F(WriteValue, OfADateKeepsTheTimeDifferenceOfItsClient) {
    network.SetLocalTimeDiff(HourUnits);
    MakeWriter();
    network.SetLocalTimeDiff(2 * HourUnits);
    network.Expect(WriteRequest(1, ObjectHex(Object::Date_Value, 1), 85, "A4 7C 03 0E FF"))
        .Answer(WriteAck(1));
    Write(Object::Date_Value, Property::Present_Value, test::Time(March15 - 2 * HourUnits));
}

TEST_F(WriteValue, OfADateBefore1900HasItsYearCut) {
    EXPECT_EQ(Built(9, test::Time(1)), "A4 D5 01 01 FF");
}

TEST_F(WriteValue, ThatCannotBeConvertedIsWrittenAsZero) {
    EXPECT_EQ(Built(0, Text("x")), "91 00");
    EXPECT_EQ(Built(1, Text("x")), "21 00");
    EXPECT_EQ(Built(2, Null()), "31 00");
    EXPECT_EQ(Built(3, Text("x")), "44 00 00 00 00");
    EXPECT_EQ(Built(4, Null()), "55 08 00 00 00 00 00 00 00 00");
    EXPECT_EQ(Built(6, Null()), "71 00");
    EXPECT_EQ(Built(8, UInt32(4000000000)), "B4 00 00 00 00");
    EXPECT_EQ(Built(12, Text("x")), "91 00");
}

TEST_F(WriteValue, OfARealKeepsNotANumber) {
    EXPECT_EQ(Built(3, Double(std::numeric_limits<double>::quiet_NaN())), "44 7F C0 00 00");
    EXPECT_EQ(Built(3, Double(-std::numeric_limits<double>::infinity())), "44 FF 80 00 00");
    EXPECT_EQ(Built(3, Double(3.5e38)), "44 7F 80 00 00");
    EXPECT_EQ(Built(3, Double(-0.0)), "44 80 00 00 00");
}

TEST_F(WriteValue, OfEveryTypeWithoutARowIsRefused) {
    std::set<int> const writable = {0, 1, 2, 3, 4, 6, 8, 9, 10, 12, 32, 33};
    for (int type = -1; type < 256; ++type) {
        if (writable.count(type) == 0) {
            EXPECT_EQ(Built(type, Int32(1)), Refused) << type;
        }
    }
}

TEST_F(WriteValue, OfAPropertyThatCannotBeWrittenIsRefusedAndNothingIsSent) {
    struct Case {
        int type;
        ObjectTypeEnum object;
        PropertyIdentifierEnum property;
    };
    for (Case const& refused : {
             Case{5, Object::Octetstring_Value, Property::Present_Value},
             Case{7, Object::Bitstring_Value, Property::Present_Value},
             Case{11, Object::Analog_Value, Property::Object_Type},
             Case{13, Object::Life_Safety_Point, Property::Present_Value},
             Case{14, Object::Life_Safety_Point, Property::Mode},
             Case{15, Object::Life_Safety_Zone, Property::Silenced},
             Case{16, Object::Life_Safety_Zone, Property::Operation_Expected},
             Case{17, Object::Analog_Value, Property::Reliability},
             Case{18, Object::Analog_Value, Property::Status_Flags},
             Case{19, Object::Analog_Value, Property::Event_State},
             Case{20, Object::Analog_Value, Property::Units},
             Case{22, Object::Device, Property::System_Status},
             Case{23, Object::Analog_Value, Property::Object_Identifier},
             Case{24, Object::Device, Property::Segmentation_Supported},
             Case{27, Object::Device, Property::Last_Restart_Reason},
             Case{30, Object::Binary_Value, Property::Polarity},
         }) {
        SCOPED_TRACE(refused.type);
        ASSERT_EQ(TypeOf(refused.object, refused.property), refused.type);
        ExpectRefused(refused.object, refused.property, Int32(1));
    }
    EXPECT_EQ(network.Elapsed(), 0) << "the write waits for nothing";
    EXPECT_EQ(WriteInvokeId.load(), 16) << "a refused value uses up its invoke id";
}

TEST_F(WriteValue, OfAPropertyThatIsNotSupportedIsNotSent) {
    ExpectRefused(Object::Analog_Value, Property::Weekly_Schedule, Text(";;;;;;;"),
                  "Support Information not found");
    ExpectRefused(static_cast<ObjectTypeEnum>(999), Property::Present_Value, Int32(1),
                  "Support Information not found");
}

TEST_F(WriteValue, IsWrittenToPresentValueExceptForThreeConstantsAndTwoSchedules) {
    std::set<std::pair<int, int>> own;
    int written = 0;
    for (int object = 0; object < 64; ++object) {
        for (int property = 0; property < 512; ++property) {
            auto const tag =
                MakeTag(static_cast<ObjectTypeEnum>(object), static_cast<PropertyIdentifierEnum>(property));
            bool const isWeek = property == 123;
            bool const isException = property == 38;
            OpcUa_VariantHlp const value = isWeek        ? Text(";;;;;;;")
                                           : isException ? Text("3,7,10;")
                                                         : test::Time(March15);
            std::vector<char> apdu;
            try {
                apdu = device->FormWriteMessage(*tag, 1, value);
            } catch (std::runtime_error const&) {
                continue;  // not in the table, or of a type that is refused
            }
            ++written;
            int const target = static_cast<unsigned char>(apdu.at(10));
            if (target != 85) {
                EXPECT_EQ(target, property);
                own.insert({object, property});
            }
        }
    }
    EXPECT_EQ(own, (std::set<std::pair<int, int>>{{12, 93}, {12, 49}, {12, 26}, {17, 123}, {17, 38}}));
    EXPECT_GT(written, 200);
}

TEST_F(WriteValue, OfALoopsOtherPropertiesIsWrittenToPresentValue) {
    std::string const loop = ObjectHex(Object::Loop, 1);
    network.Expect(WriteRequest(1, loop, 93, "44 3F 80 00 00")).Answer(WriteAck(1));
    network.Expect(WriteRequest(2, loop, 49, "44 3F 80 00 00")).Answer(WriteAck(2));
    network.Expect(WriteRequest(3, loop, 26, "44 3F 80 00 00")).Answer(WriteAck(3));
    network.Expect(WriteRequest(4, loop, 85, "44 3F 80 00 00")).Answer(WriteAck(4));
    network.Expect(WriteRequest(5, loop, 85, "21 01")).Answer(WriteAck(5));
    Write(Object::Loop, Property::Proportional_Constant, Double(1));
    Write(Object::Loop, Property::Integral_Constant, Double(1));
    Write(Object::Loop, Property::Derivative_Constant, Double(1));
    Write(Object::Loop, Property::Setpoint, Double(1));
    Write(Object::Loop, Property::Priority_For_Writing, Double(1));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteValue, OfASchedulesOtherPropertiesIsWrittenToPresentValue) {
    std::string const schedule = ObjectHex(Object::Schedule, 1);
    network.Expect(WriteRequest(1, schedule, 85, "44 3F 80 00 00")).Answer(WriteAck(1));
    network.Expect(WriteRequest(2, schedule, 85, "91 01")).Answer(WriteAck(2));
    Write(Object::Schedule, Property::Present_Value, Double(1));
    Write(Object::Schedule, Property::Out_Of_Service, Bool(true));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteValue, Priority0And17SendNoPriorityTagAnd1And16Do) {
    std::string const none = "00 3F";
    EXPECT_EQ(EndWithPriority(0), none);
    EXPECT_EQ(EndWithPriority(17), none);
    EXPECT_EQ(EndWithPriority(-1), none);
    EXPECT_EQ(EndWithPriority(256 + 8), none);
    EXPECT_EQ(EndWithPriority(std::numeric_limits<int>::max()), none);
    EXPECT_EQ(EndWithPriority(1), "49 01");
    EXPECT_EQ(EndWithPriority(8), "49 08");
    EXPECT_EQ(EndWithPriority(16), "49 10");
}

TEST_F(WriteValue, IsSentWithTheLowOctetOfItsInvokeIdAndTheLow22BitsOfItsObject) {
    auto const tag = MakeTag(Object::Analog_Value, Property::Present_Value, -1);
    EXPECT_EQ(ToHex(device->FormWriteMessage(*tag, 0x1FE, Double(1))),
              "00 04 FE 0F 0C 00 BF FF FF 19 55 3E 44 3F 80 00 00 3F");
}

TEST_F(WriteValue, IsARequestThatExpectsAReply) {
    auto const tag = MakeTag(Object::Analog_Value, Property::Present_Value);
    auto const local = device->FormWriteRequest(*tag, Hex("0A 0B"), {Hex("07"), 0}, Double(1));
    EXPECT_TRUE(local.expectingReply);
    EXPECT_FALSE(local.hasDestination);
    EXPECT_EQ(ToHex(local.physicalDestination), "0A 0B");
    EXPECT_EQ(ToHex(local.data), "00 04 01 0F 0C 00 80 00 01 19 55 3E 44 3F 80 00 00 3F");
    auto const routed = device->FormWriteRequest(*tag, Hex("0A 0B"), {Hex("07"), 9}, Double(1));
    EXPECT_TRUE(routed.hasDestination);
    EXPECT_EQ(ToHex(routed.destination.bytes), "07");
    EXPECT_EQ(routed.destination.network, 9);
    EXPECT_EQ(routed.data.at(2), 2) << "the next invoke id";
}

}  // namespace
