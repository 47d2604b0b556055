#include "DatumText.h"

#include <gtest/gtest.h>

using namespace standard;

namespace {

Datum Make(DatumKind kind, std::uint64_t number = 0) {
    Datum datum;
    datum.kind = kind;
    datum.number = number;
    return datum;
}

Datum Text(DatumKind kind, std::string text) {
    Datum datum = Make(kind);
    datum.text = std::move(text);
    return datum;
}

Datum Calendar(DatumKind kind, std::array<std::uint8_t, 4> const& calendar) {
    Datum datum = Make(kind);
    datum.calendar = calendar;
    return datum;
}

std::string DateText(CalendarDate const& date) {
    return DatumText(Calendar(DatumKind::Date, date));
}

std::string Of(std::vector<Datum> const& values, std::uint16_t type, std::uint32_t property) {
    return DatumText(values, {{type, 1}, property, {}});
}

}  // namespace

TEST(DatumText, Numbers) {
    EXPECT_EQ(DatumText(Make(DatumKind::Null)), "null");
    EXPECT_EQ(DatumText(Make(DatumKind::Boolean, 1)), "true");
    EXPECT_EQ(DatumText(Make(DatumKind::Boolean, 0)), "false");
    EXPECT_EQ(DatumText(Make(DatumKind::Unsigned, 18446744073709551615u)), "18446744073709551615");
    EXPECT_EQ(DatumText(Make(DatumKind::Signed, static_cast<std::uint64_t>(-56))), "-56");
    Datum real = Make(DatumKind::Real);
    real.real = static_cast<double>(0.1f);
    EXPECT_EQ(DatumText(real), "0.1");
    real.kind = DatumKind::Double;
    real.real = 0.1;
    EXPECT_EQ(DatumText(real), "0.1");
}

TEST(DatumText, DatesAreIsoWithAStarForAny) {
    EXPECT_EQ(DateText({124, 3, 15, 5}), "2024-03-15");
    EXPECT_EQ(DateText({0, 1, 1, Unspecified}), "1900-01-01");
    EXPECT_EQ(DateText(AnyDate), "*-*-*");
    EXPECT_EQ(DateText({Unspecified, 12, 25, Unspecified}), "*-12-25");
    EXPECT_EQ(DateText({Unspecified, 13, 32, 1}), "*-odd-last Mon");
    EXPECT_EQ(DateText({124, 14, 34, 7}), "2024-even-even Sun");
    EXPECT_EQ(DateText({124, 14, 33, 8}), "2024-even-odd");
}

TEST(DatumText, TimesHaveHundredths) {
    EXPECT_EQ(DatumText(Calendar(DatumKind::Time, {13, 30, 15, 50})), "13:30:15.50");
    EXPECT_EQ(DatumText(Calendar(DatumKind::Time, AnyTime)), "*:*:*.*");
}

TEST(DatumText, IdentifiersOctetsAndTags) {
    EXPECT_EQ(DatumText(Make(DatumKind::ObjectIdentifier, ObjectId{2, 7}.Encoded())), "analog-value 7");
    Datum octets = Make(DatumKind::OctetString);
    octets.octets = {'\x0A', '\xFF'};
    EXPECT_EQ(DatumText(octets), "0aff");
    octets.kind = DatumKind::Unknown;
    octets.tag = 13;
    EXPECT_EQ(DatumText(octets), "application tag [13] 0aff");
    octets.isContext = true;
    EXPECT_EQ(DatumText(octets), "[13] 0aff");
    Datum constructed = Make(DatumKind::Constructed);
    constructed.isContext = true;
    constructed.tag = 1;
    constructed.children = {octets, Make(DatumKind::Unsigned, 3)};
    EXPECT_EQ(DatumText(constructed), "[1] {[13] 0aff, 3}");
}

TEST(DatumText, EnumerationsAreNamesOfTheirProperty) {
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 62)}, 0, 117), "degrees-celsius");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 300)}, 0, 117), "300");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 0x100000000)}, 0, 117), "4294967296");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 1)}, 3, 85), "active");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 1)}, 999, 85), "1");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 2)}, 999, 36), "offnormal");
    EXPECT_EQ(Of({Make(DatumKind::Enumerated, 17)}, 17, 79), "schedule");
    EXPECT_EQ(Of({Make(DatumKind::Unsigned, 62)}, 0, 117), "62");
}

TEST(DatumText, StatusFlagsAreNames) {
    EXPECT_EQ(Of({Text(DatumKind::BitString, "0000")}, 0, 111), "none");
    EXPECT_EQ(Of({Text(DatumKind::BitString, "1101")}, 0, 111), "in-alarm, fault, out-of-service");
    EXPECT_EQ(Of({Text(DatumKind::BitString, "00101")}, 0, 111), "overridden, bit 4");
    EXPECT_EQ(Of({Text(DatumKind::BitString, "1101")}, 39, 85), "1101");
}

TEST(DatumText, SeveralValuesAreAList) {
    EXPECT_EQ(Of({}, 0, 85), "{}");
    EXPECT_EQ(Of({Make(DatumKind::Null), Make(DatumKind::Enumerated, 1)}, 4, 87), "null, active");
    EXPECT_EQ(Of({Text(DatumKind::CharacterString, "Off"), Text(DatumKind::CharacterString, "On")}, 13, 110),
              "Off, On");
    EXPECT_EQ(
        Of({Calendar(DatumKind::Date, {124, 3, 15, 5}), Calendar(DatumKind::Time, {8, 0, 0, 0})}, 44, 85),
        "2024-03-15 08:00:00.00");
}
