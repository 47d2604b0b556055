// Reading an object or a property that a device does not have. Its answer then has an error instead of each
// value (ASHRAE 135 clause 21, ReadAccessResult).

#include <array>
#include <charconv>
#include <sstream>

#include "BinaryAnswers.h"
#include "CodeMaps.h"
#include "DeviceFixture.h"
#include "DocumentPart.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

// A type of property, and a variable on such a property, by the codes of a project.
struct Type {
    char const* name;
    char const* example;
    int object;
    int property;
    _OpcUa_BuiltInType element;
};

constexpr int Units = 27;

constexpr Type Types[] = {
    {"Real", "Analog Input", code::AnalogInput, code::PresentValue, OpcUaType_Float},
    {"Double", "Large Analog Value", 8, code::PresentValue, OpcUaType_Double},
    {"Unsigned", "Multi-state Input", 17, code::PresentValue, OpcUaType_UInt32},
    {"Signed", "Integer Value", 7, code::PresentValue, OpcUaType_Int32},
    {"Enumerated", "`Units`", code::AnalogInput, Units, OpcUaType_UInt32},
    {"Status flags", "`Status_Flags`", code::AnalogInput, code::StatusFlags, OpcUaType_UInt64},
    {"Binary", "Binary Value", code::BinaryValue, code::PresentValue, OpcUaType_Boolean},
    {"Octet string", "Octet String Value", code::OctetStringValue, code::PresentValue, OpcUaType_String},
    {"Exception schedule", "`Exception_Schedule`", code::Schedule, code::ExceptionSchedule, OpcUaType_String},
    {"Weekly schedule", "`Weekly_Schedule`", code::Schedule, code::WeeklySchedule, OpcUaType_String},
    {"Boolean", "`Out_Of_Service`", code::AnalogInput, code::OutOfService, OpcUaType_Boolean},
    {"Character string", "`Description`", code::AnalogInput, code::Description, OpcUaType_String},
    {"Bit string", "Bit String Value", 11, code::PresentValue, OpcUaType_String},
    {"Date", "Date Value", 12, code::PresentValue, OpcUaType_DateTime},
    {"Time", "Time Value", 14, code::PresentValue, OpcUaType_UInt32},
    {"Date and time", "DateTime Value", 13, code::PresentValue, OpcUaType_DateTime},
};

// Error class and code for a missing object and for a missing property.
constexpr char NoObject[] = "91 01 91 1F";
constexpr char NoProperty[] = "91 02 91 20";

std::string ErrorResult(int property, std::string const& error) {
    return "29 " + HexOctet(static_cast<unsigned>(property)) + "5E " + error + " 5F ";
}

// A number in its shortest form, a text between quotation marks.
std::string TextOf(OpcUa_VariantHlp const& value) {
    std::array<char, 32> digits{};
    auto const shortest = [&digits](auto number) {
        return std::string(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
    };
    std::string text;
    switch (value.GetType()) {
        case OpcUaType_Float:
            return shortest(value.Value.Float);
        case OpcUaType_Double:
            return shortest(value.Value.Double);
        case OpcUaType_String:
            value.GetString(text);
            return "\"" + text + "\"";
        default:
            value.GetString(text);
            return text;
    }
}

class MissingObject : public DeviceFixture {
protected:
    // A device that lacks the object, or only the property of the type.
    void AnswerErrors(Type const& type, std::string const& error) {
        int const property = static_cast<int>(GetPropertyType(type.property));
        std::string results = ErrorResult(property, error);
        if (property != static_cast<int>(PropertyIdentifierEnum::Status_Flags)) {
            results += error == NoObject ? ErrorResult(111, error) : PropertyResult(111, FlagsClear);
        }
        network.Respond([results](Octets const& request) {
            auto const invokeId = static_cast<unsigned char>(InvokeIdOf(request));
            return std::vector<Delivery>{
                {AnswerDatagram(ReadAck(invokeId, ToHex(ObjectOf(request)), results))}};
        });
    }

    // The result of one poll for a variable of the type: the value, which must be good, or "fault".
    std::string Outcome(Type const& type, std::string const& error) {
        MakeDevice();
        AddVariable(type.object, type.property, 1, {OpcUaType_DataValue, type.element});
        AnswerErrors(type, error);
        log.Clear();
        Poll();
        if (device->HasFault()) {
            return "fault";
        }
        if (values.size() != 1 || values[0].Value.GetType() != OpcUaType_DataValue) {
            return "no value";
        }
        OpcUa_DataValue const& value = *values[0].Value.Value.DataValue;
        EXPECT_EQ(value.StatusCode, OpcUa_Good) << type.name;
        OpcUa_VariantHlp element;
        OpcUa_VariantHlp::CopyVariants(&element, &value.Value);
        return TextOf(element);
    }

    // The reason why the attempts failed, which the user's trace has after the object.
    std::string Reason(Type const& type) const {
        std::string const object = std::to_string(static_cast<int>(GetBacnetObjectType(type.object))) + "-1 ";
        std::istringstream lines(log.Text());
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, object.size(), object) == 0) {
                return "`" + line.substr(object.size()) + "`";
            }
        }
        return "";
    }

    std::string RowOf(Type const& type) {
        std::string const noObject = Outcome(type, NoObject);
        std::string const noProperty = Outcome(type, NoProperty);
        return std::string("| ") + type.name + " | " + type.example + " | " + noObject + " | " + noProperty +
               " | " + Reason(type) + " |\n";
    }
};

// DORVEL_PRINT_TABLE=1 device_test --gtest_filter=MissingObject.IsReadAsTheDocumentSays prints the table.
TEST_F(MissingObject, IsReadAsTheDocumentSays) {
    log.EnableTrace();
    std::string table =
        "| Type | For instance | No such object | No such property | In the user's trace |\n"
        "|---|---|---|---|---|\n";
    for (Type const& type : Types) {
        table += RowOf(type);
    }
    ExpectInDocument(CONFIGURATION_DOCUMENT, "missing objects", "\n" + table + "\n");
}

TEST_F(MissingObject, IsNotInTheLogWithoutTheTrace) {
    for (Type const& type : Types) {
        Outcome(type, NoObject);
        EXPECT_EQ(log.Text(), "") << type.name;
    }
}

// Advice of the document: a variable on Out_Of_Service makes a missing object a fault.
TEST_F(MissingObject, IsAFaultWithAVariableOnOutOfService) {
    MakeDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::OutOfService, 1);
    std::string const results =
        ErrorResult(85, NoObject) + ErrorResult(81, NoObject) + ErrorResult(111, NoObject);
    for (unsigned invokeId = 1; invokeId <= 3; ++invokeId) {
        network.ExpectAny().Answer(AnswerDatagram(ReadAck(invokeId, AnalogInput1, results)));
    }
    Poll();
    EXPECT_TRUE(device->HasFault());
    EXPECT_TRUE(values.empty());
}

// Real and similar types are read from the octets of any error class.
TEST_F(MissingObject, IsReadAsTheClassOfItsError) {
    for (unsigned errorClass = 0; errorClass < 8; ++errorClass) {
        EXPECT_EQ(Outcome(Types[2], "91 " + HexOctet(errorClass) + "91 00"), std::to_string(errorClass));
    }
}

}  // namespace
