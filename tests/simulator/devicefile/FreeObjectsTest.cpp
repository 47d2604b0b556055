#include "Mistake.h"
#include "StationFixture.h"

// Objects of types without a table, properties without a row, values by their octets, and objects without
// defaults: what a copy of a real device needs.
class FreeObjects : public test::StationFixture {
protected:
    // A ReadProperty of analog-input 1, or of another object, and the value of the answer.
    std::string Read(std::string const& property, std::string const& object = "00 00 00 01") {
        std::string const text = Answer("02 75 01 0C 0C " + object + " " + property);
        if (text.substr(0, 2) != "30") {
            return text;
        }
        std::size_t const start = text.find(" 3E ") + 4;
        return text.substr(start, text.size() - 3 - start);
    }

    static constexpr char const* UnknownProperty = "50 01 0C 91 02 91 20";
    static constexpr char const* TrendLog = "05 00 00 01";
    static constexpr char const* Property600 = "1A 02 58";
};

TEST_F(FreeObjects, AnObjectOfATypeWithoutATableHasThePropertiesOfTheFile) {
    MakeWith(
        "object{type = 20, instance = 1, name = 'Log', properties = {[28] = 'a log', [141] = unsigned(7)}}");
    EXPECT_EQ(Read("19 1C", TrendLog), "75 06 00 61 20 6C 6F 67");
    EXPECT_EQ(Read("19 8D", TrendLog), "21 07");
    EXPECT_EQ(Read("19 4D", TrendLog), "74 00 4C 6F 67");
    EXPECT_EQ(Read("19 4F", TrendLog), "91 14");
    EXPECT_EQ(Read("1A 01 73", TrendLog), "91 1C 91 8D");
    EXPECT_EQ(Read("19 55", TrendLog), UnknownProperty);
}

TEST_F(FreeObjects, TheTypeIsANumberOrAName) {
    MakeWith("object{type = 'trend_log', instance = 1}, object{type = 1023, instance = 2}");
    EXPECT_EQ(Read("19 4D", TrendLog), "75 0C 00 74 72 65 6E 64 5F 6C 6F 67 20 31");
    EXPECT_EQ(Read("19 4F", "FF C0 00 02"), "92 03 FF");
}

TEST_F(FreeObjects, TheDeviceSupportsTheirStandardTypes) {
    MakeWith("object{type = 60, instance = 1}, object{type = 300, instance = 1}");
    std::string const bits = Read("19 60", "02 00 00 64");
    EXPECT_EQ(bits.substr(0, 11), "85 09 03 FC");  // 61 bits
    EXPECT_EQ(bits.substr(bits.size() - 2), "08");
}

TEST_F(FreeObjects, APropertyWithoutARowIsAdded) {
    MakeWith("analog_input{instance = 1, properties = {[600] = enumerated(70000)}}");
    EXPECT_EQ(Read(Property600), "93 01 11 70");
    EXPECT_EQ(Read("19 75"), "91 5F");
}

TEST_F(FreeObjects, ListsArraysAndElementsOfSeveralValues) {
    MakeWith(
        "analog_input{instance = 1, properties = {[600] = {unsigned(1), 'a'}, "
        "[601] = array{sequence(unsigned(1), unsigned(2)), unsigned(3)}}}");
    EXPECT_EQ(Read(Property600), "21 01 72 00 61");
    EXPECT_EQ(Read("1A 02 58 29 01"), "50 01 0C 91 02 91 32");  // not an array
    EXPECT_EQ(Read("1A 02 59"), "21 01 21 02 21 03");
    EXPECT_EQ(Read("1A 02 59 29 00"), "21 02");
    EXPECT_EQ(Read("1A 02 59 29 01"), "21 01 21 02");
}

TEST_F(FreeObjects, ValuesByTheirOctets) {
    MakeWith(
        "analog_input{instance = 1, properties = {[600] = {tagged(7, '0541FC'), context(3, '0A'), "
        "constructed(2, null(), constructed(30, boolean(true))), object_identifier(300, 5)}}}");
    EXPECT_EQ(Read(Property600), "73 05 41 FC 39 0A 2E 00 FE 1E 11 FF 1E 2F C4 4B 00 00 05");
}

TEST_F(FreeObjects, AnyPropertyCanHaveAValueOfAnotherDatatype) {
    MakeWith("analog_input{instance = 1, present_value = tagged(2, '05'), properties = {units = 'none'}}");
    EXPECT_EQ(Read("19 55"), "21 05");
    EXPECT_EQ(Read("19 75"), "75 05 00 6E 6F 6E 65");
}

TEST_F(FreeObjects, DatesAndTimesOfAnyOctets) {
    MakeWith(
        "date_value{instance = 1, present_value = 'FF0D20FF'}, datetime_value{instance = 1, "
        "present_value = tagged(0, '')}, schedule{instance = 1, weekly_schedule = {monday = {{'181E0000', "
        "null()}}}, exception_schedule = {{date = '7E0E2205'}}}");
    EXPECT_EQ(Read("19 55", "0A 80 00 01"), "A4 FF 0D 20 FF");
    EXPECT_EQ(Read("19 7B 29 01", "04 40 00 01"), "0E B4 18 1E 00 00 00 0F");
    EXPECT_EQ(Read("19 26 29 01", "04 40 00 01"), "0E 0C 7E 0E 22 05 0F 2E 2F 39 10");
}

TEST_F(FreeObjects, WithoutDefaultsAnObjectHasOnlyThePropertiesOfTheFile) {
    MakeWith("analog_input{instance = 1, defaults = false, present_value = 1.5}");
    EXPECT_EQ(Read("1A 01 73"), "91 55 91 6F");
    EXPECT_EQ(Read("19 6F"), "82 04 00");
}

TEST_F(FreeObjects, WithoutDefaultsAnOutputIsCommandableByItsRelinquishDefault) {
    MakeWith(
        "analog_output{instance = 1, defaults = false, present_value = 1.5}, "
        "analog_output{instance = 2, defaults = false, relinquish_default = 2}");
    EXPECT_EQ(Read("1A 01 73", "00 40 00 01"), "91 55 91 6F");
    EXPECT_EQ(Read("1A 01 73", "00 40 00 02"), "91 55 91 57 91 68 91 6F");
    EXPECT_EQ(Read("19 55", "00 40 00 02"), "44 40 00 00 00");
}

TEST_F(FreeObjects, ADeviceWithoutDefaultsStillAnswers) {
    Make(
        "device{name = 'D', instance = 100, defaults = false, vendor_identifier = 5, "
        "properties = {[700] = 'x'}, object_list = {}}");
    EXPECT_EQ(Read("1A 02 BC", "02 00 00 64"), "72 00 78");
    EXPECT_EQ(Ask("10 08"), (test::Texts{"10 00 C4 02 00 00 64 22 05 C4 91 03 21 05"}));
}

TEST_F(FreeObjects, AnObjectListCanNameObjectsThatTheDeviceDoesNotHave) {
    MakeWith("analog_input{instance = 1}", "object_list = {{'device', 100}, {'analog_input', 2}, {300, 1}},");
    EXPECT_EQ(Read("19 4C", "02 00 00 64"), "C4 02 00 00 64 C4 00 00 00 02 C4 4B 00 00 01");
    EXPECT_EQ(Read("19 4C 29 02", "02 00 00 64"), "C4 00 00 00 02");
    EXPECT_EQ(Read("19 55", "00 00 00 02"), "50 01 0C 91 01 91 1F");
}

TEST_F(FreeObjects, CommandsOfTheFileAreInThePriorityArray) {
    MakeWith("analog_value{instance = 1, relinquish_default = 1, priority_array = {[8] = 21.5, [16] = 3}}");
    EXPECT_EQ(Read("19 57", "00 80 00 01"),
              "00 00 00 00 00 00 00 44 41 AC 00 00 00 00 00 00 00 00 00 44 40 40 00 00");
    EXPECT_EQ(Read("19 55", "00 80 00 01"), "44 41 AC 00 00");
}

TEST_F(FreeObjects, AnObjectWithoutATableIsCommandableByItsRelinquishDefault) {
    MakeWith(
        "object{type = 40, instance = 1, properties = {relinquish_default = 'a'}, priority_array = {[8] = "
        "'b'}}");
    std::string const object = "0A 00 00 01";
    EXPECT_EQ(Read("19 55", object), "72 00 62");
    EXPECT_EQ(Answer("00 05 01 0F 0C " + object + " 19 55 3E 00 3F 49 08"), "20 01 0F");
    EXPECT_EQ(Read("19 55", object), "72 00 61");
    EXPECT_EQ(Read("19 57 29 08", object), "00");
}

TEST_F(FreeObjects, ANullInThePriorityArrayIsNoCommand) {
    MakeWith(
        "object{type = 40, instance = 1, properties = {[104] = 'a'}, priority_array = {[8] = null(), [16] = "
        "'b'}}, analog_output{instance = 1, priority_array = {[1] = null(), [3] = 2}}");
    EXPECT_EQ(Read("19 55", "0A 00 00 01"), "72 00 62");
    EXPECT_EQ(Read("19 57 29 08", "0A 00 00 01"), "00");
    EXPECT_EQ(Read("19 55", "00 40 00 01"), "44 40 00 00 00");
}

TEST_F(FreeObjects, APriorityArrayNeedsACommandableObject) {
    auto const mistake = [this](std::string const& fields) -> std::string {
        try {
            MakeWith("object{type = 40, instance = 1, " + fields + "}");
        } catch (simulator::Mistake const& found) {
            return found.what();
        }
        return "no mistake";
    };
    std::string const place = "test.lua:1: device D: characterstring_value 1: priority_array: ";
    EXPECT_EQ(mistake("priority_array = {[8] = 1}"), place + "needs relinquish_default");
    EXPECT_EQ(mistake("priority_array = {[8] = 1}, properties = {[87] = {}, [104] = 1}"),
              place + "must not be given in properties too");
}

TEST_F(FreeObjects, NoneHasTheIdentifierOfTheDevice) {
    EXPECT_THROW(MakeWith("object{type = 'device', instance = 100}"), simulator::Mistake);
    EXPECT_NO_THROW(MakeWith("object{type = 'device', instance = 101}"));
}

TEST_F(FreeObjects, TheirPropertiesCanBeWrittenIfTheFileAllowsIt) {
    MakeWith("object{type = 300, instance = 1, properties = {[85] = 1, [600] = 2}, writable = {600}}");
    EXPECT_EQ(Answer("00 05 01 0F 0C 4B 00 00 01 19 55 3E 21 05 3F"), "50 01 0F 91 02 91 28");
    EXPECT_EQ(Answer("00 05 01 0F 0C 4B 00 00 01 1A 02 58 3E 21 05 3F"), "20 01 0F");
    EXPECT_EQ(Read(Property600, "4B 00 00 01"), "21 05");
}

TEST_F(FreeObjects, NamesAndTextsHaveAnyOctets) {
    MakeWith(R"(analog_input{instance = 1, name = "a\n\0\27\xFF\xC3", description = "\xED\xA0\x80"})");
    EXPECT_EQ(Read("19 4D"), "75 07 00 61 0A 00 1B FF C3");
    EXPECT_EQ(Read("19 1C"), "74 00 ED A0 80");
}

TEST_F(FreeObjects, ANameOf10000OctetsIsSentInSegments) {
    Make(
        "local s = '' for i = 1, 1000 do s = s .. '0123456789' end "
        "device{name = s, instance = 100, objects = {analog_input{instance = 1, name = s .. 'x'}}}");
    std::string const first = Answer("02 75 01 0C 0C 00 00 00 01 19 4D");
    EXPECT_EQ(first.substr(0, 65), "3C 01 00 10 0C 0C 00 00 00 01 19 4D 3E 75 FE 27 12 00 30 31 32 33");
    EXPECT_EQ(Answer("00 05 02 0C 0C 00 00 00 01 19 4D"), "71 02 04");
}

TEST_F(FreeObjects, TwoObjectsCanHaveOneNameIfTheyAreCopies) {
    MakeWith(
        "analog_input{instance = 1, name = 'x'}, analog_input{instance = 2, name = 'x', defaults = false}");
    EXPECT_EQ(Read("19 4D", "00 00 00 02"), "72 00 78");
}

TEST_F(FreeObjects, EmptyValuesDoNoHarm) {
    for (char const* properties : {"[104] = {}", "[85] = {}", "[111] = {}", "[87] = array{}, [104] = 1",
                                   "[81] = {}, [103] = {}, [36] = {}", "[74] = {}", "[87] = {}",
                                   "[87] = array{}", "[87] = array{}, [85] = {}"}) {
        MakeWith(std::string("analog_value{instance = 1, properties = {") + properties + "}}, " +
                 "object{type = 40, instance = 1, properties = {" + properties + "}}");
        EXPECT_EQ(Ask("02 75 01 0E 0C 00 80 00 01 1E 09 08 1F").size(), 1u) << properties;
        EXPECT_EQ(Ask("02 75 01 0E 0C 0A 00 00 01 1E 09 08 1F").size(), 1u) << properties;
    }
}
