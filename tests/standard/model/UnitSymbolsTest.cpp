#include "UnitSymbols.h"

#include <gtest/gtest.h>

#include <set>

#include "Enumerations.h"
#include "Printable.h"

using namespace standard;

namespace {

// Reactive energy has two numbers a unit.
std::set<std::uint32_t> const SecondNumbers{242, 243, 244};
constexpr std::uint32_t NoUnits = 95;

}  // namespace

TEST(UnitSymbols, EveryUnitOfTheStandardHasOne) {
    unsigned named = 0;
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        auto const name = NameOfEnumerated(Datatype::Units, unit);
        auto const symbol = UnitSymbol(unit);
        ASSERT_EQ(name.has_value(), symbol.has_value()) << unit;
        named += name ? 1 : 0;
        if (name) {
            EXPECT_EQ(EnumeratedOfName(Datatype::Units, *name), unit);
            EXPECT_EQ(symbol->empty(), unit == NoUnits) << unit;
            EXPECT_EQ(tools::Printable(*symbol), *symbol);
            EXPECT_LE(tools::DisplayWidth(*symbol), 14u) << *symbol;
        }
    }
    EXPECT_EQ(named, 255u + 14u);
    EXPECT_FALSE(UnitSymbol(0xFFFFFFFF));
}

TEST(UnitSymbols, ASymbolIsThatOfOneUnit) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        if (auto const symbol = UnitSymbol(unit); symbol && SecondNumbers.count(unit) == 0) {
            EXPECT_EQ(UnitOfSymbol(*symbol), unit) << *symbol;
        }
    }
    EXPECT_EQ(UnitOfSymbol("kvarh"), 204u);
    EXPECT_EQ(UnitSymbol(243), "kvarh");
}

TEST(UnitSymbols, AreThoseOfTheTrade) {
    struct Row {
        char const* name;
        char const* symbol;
    };
    for (Row const& row : {Row{"degrees-celsius", "°C"},
                           Row{"degrees-fahrenheit", "°F"},
                           Row{"percent", "%"},
                           Row{"no-units", ""},
                           Row{"kilowatt-hours", "kWh"},
                           Row{"megawatt-hours", "MWh"},
                           Row{"cubic-meters-per-hour", "m³/h"},
                           Row{"liters-per-second", "L/s"},
                           Row{"pascals", "Pa"},
                           Row{"hectopascals", "hPa"},
                           Row{"bars", "bar"},
                           Row{"percent-relative-humidity", "%RH"},
                           Row{"parts-per-million", "ppm"},
                           Row{"luxes", "lx"},
                           Row{"hertz", "Hz"},
                           Row{"revolutions-per-minute", "rpm"},
                           Row{"kilojoules-per-kilogram", "kJ/kg"},
                           Row{"grams-of-water-per-kilogram-dry-air", "g/kg dry air"},
                           Row{"volts", "V"},
                           Row{"milliamperes", "mA"},
                           Row{"decibels-a", "dB(A)"},
                           Row{"million-standard-cubic-feet-per-minute", "MMSCFM"},
                           Row{"pounds-mass-per-day", "lb/d"},
                           Row{"millirems-per-hour", "mrem/h"},
                           Row{"degrees-plato", "°P"}}) {
        auto const unit = EnumeratedOfName(Datatype::Units, row.name);
        ASSERT_TRUE(unit) << row.name;
        EXPECT_EQ(UnitSymbol(*unit), row.symbol);
    }
}

TEST(UnitSymbols, OtherSpellingsAreFound) {
    struct Row {
        char const* written;
        char const* symbol;
    };
    for (Row const& row :
         {Row{"m3/h", "m³/h"},      Row{"m^3/h", "m³/h"},  Row{"M3/H", "m³/h"},   Row{"l/s", "L/s"},
          Row{"degC", "°C"},        Row{"deg C", "°C"},    Row{"DEG C", "°C"},    Row{"ºC", "°C"},
          Row{"Ohm", "Ω"},          Row{"KOHM", "kΩ"},     Row{"\u2126", "Ω"},    Row{"KWH", "kWh"},
          Row{"kw", "kW"},          Row{"KPA", "kPa"},     Row{"μm", "µm"},       Row{"um", "µm"},
          Row{"W/m2K", "W/(m²·K)"}, Row{"Nm", "N·m"},      Row{"dBA", "dB(A)"},   Row{"% r.H.", "%RH"},
          Row{"%rF", "%RH"},        Row{"MBAR", "mbar"},   Row{"MWH", "MWh"},     Row{"lux", "lx"},
          Row{"Lux", "lx"},         Row{"gpm", "gal/min"}, Row{"ft3/min", "cfm"}, Row{"inH2O", "inH₂O"},
          Row{" °C ", "°C"},        Row{"delta K", "ΔK"},  Row{"U/min", "rpm"}}) {
        auto const unit = UnitOfSymbol(row.written);
        ASSERT_TRUE(unit) << row.written;
        EXPECT_EQ(UnitSymbol(*unit), row.symbol) << row.written;
    }
}

TEST(UnitSymbols, WhatIsNotClearIsNone) {
    for (char const* written : {"mw", "mwh", "mJ", "mHz", "MS", "xyz", "kg/", "°", "\xFF", "PARTS"}) {
        bool const isDegree = std::string_view(written) == "°";
        EXPECT_EQ(UnitOfSymbol(written).has_value(), isDegree) << written;
    }
    EXPECT_EQ(UnitOfSymbol(""), NoUnits);
    EXPECT_EQ(UnitOfSymbol("ms"), 159u);
    EXPECT_EQ(UnitOfSymbol("mS"), 202u);
    EXPECT_EQ(UnitOfSymbol("mW"), 132u);
    EXPECT_EQ(UnitOfSymbol("MW"), 49u);
}
