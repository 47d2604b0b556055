#include "UnitSymbols.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>

namespace standard {

namespace {

struct Row {
    std::uint32_t unit;
    char const* symbol;
};

// In the order of the numbers.
// clang-format off
constexpr Row Rows[] = {
    {0, "m²"}, {1, "ft²"}, {2, "mA"}, {3, "A"}, {4, "Ω"}, {5, "V"}, {6, "kV"}, {7, "MV"}, {8, "VA"},
    {9, "kVA"}, {10, "MVA"}, {11, "var"}, {12, "kvar"}, {13, "Mvar"}, {14, "° phase"}, {15, "PF"},
    {16, "J"}, {17, "kJ"}, {18, "Wh"}, {19, "kWh"}, {20, "BTU"}, {21, "thm"}, {22, "TR·h"},
    {23, "J/kg dry air"}, {24, "BTU/lb dry air"}, {25, "c/h"}, {26, "c/min"}, {27, "Hz"},
    {28, "g/kg dry air"}, {29, "%RH"}, {30, "mm"}, {31, "m"}, {32, "in"}, {33, "ft"}, {34, "W/ft²"},
    {35, "W/m²"}, {36, "lm"}, {37, "lx"}, {38, "fc"}, {39, "kg"}, {40, "lb"}, {41, "t"}, {42, "kg/s"},
    {43, "kg/min"}, {44, "kg/h"}, {45, "lb/min"}, {46, "lb/h"}, {47, "W"}, {48, "kW"}, {49, "MW"},
    {50, "BTU/h"}, {51, "hp"}, {52, "TR"}, {53, "Pa"}, {54, "kPa"}, {55, "bar"}, {56, "psi"},
    {57, "cmH₂O"}, {58, "inH₂O"}, {59, "mmHg"}, {60, "cmHg"}, {61, "inHg"}, {62, "°C"}, {63, "K"},
    {64, "°F"}, {65, "°C·d"}, {66, "°F·d"}, {67, "yr"}, {68, "mo"}, {69, "wk"}, {70, "d"}, {71, "h"},
    {72, "min"}, {73, "s"}, {74, "m/s"}, {75, "km/h"}, {76, "ft/s"}, {77, "ft/min"}, {78, "mph"},
    {79, "ft³"}, {80, "m³"}, {81, "imp gal"}, {82, "L"}, {83, "gal"}, {84, "cfm"}, {85, "m³/s"},
    {86, "imp gal/min"}, {87, "L/s"}, {88, "L/min"}, {89, "gal/min"}, {90, "°"}, {91, "°C/h"},
    {92, "°C/min"}, {93, "°F/h"}, {94, "°F/min"}, {95, ""}, {96, "ppm"}, {97, "ppb"}, {98, "%"},
    {99, "%/s"}, {100, "1/min"}, {101, "1/s"}, {102, "psi/°F"}, {103, "rad"}, {104, "rpm"}, {105, "¤1"},
    {106, "¤2"}, {107, "¤3"}, {108, "¤4"}, {109, "¤5"}, {110, "¤6"}, {111, "¤7"}, {112, "¤8"},
    {113, "¤9"}, {114, "¤10"}, {115, "in²"}, {116, "cm²"}, {117, "BTU/lb"}, {118, "cm"}, {119, "lb/s"},
    {120, "Δ°F"}, {121, "ΔK"}, {122, "kΩ"}, {123, "MΩ"}, {124, "mV"}, {125, "kJ/kg"}, {126, "MJ"},
    {127, "J/K"}, {128, "J/(kg·K)"}, {129, "kHz"}, {130, "MHz"}, {131, "1/h"}, {132, "mW"},
    {133, "hPa"}, {134, "mbar"}, {135, "m³/h"}, {136, "L/h"}, {137, "kWh/m²"}, {138, "kWh/ft²"},
    {139, "MJ/m²"}, {140, "MJ/ft²"}, {141, "W/(m²·K)"}, {142, "ft³/s"}, {143, "% obsc/ft"},
    {144, "% obsc/m"}, {145, "mΩ"}, {146, "MWh"}, {147, "kBTU"}, {148, "MBTU"}, {149, "kJ/kg dry air"},
    {150, "MJ/kg dry air"}, {151, "kJ/K"}, {152, "MJ/K"}, {153, "N"}, {154, "g/s"}, {155, "g/min"},
    {156, "t/h"}, {157, "kBTU/h"}, {158, "cs"}, {159, "ms"}, {160, "N·m"}, {161, "mm/s"},
    {162, "mm/min"}, {163, "m/min"}, {164, "m/h"}, {165, "m³/min"}, {166, "m/s²"}, {167, "A/m"},
    {168, "A/m²"}, {169, "A·m²"}, {170, "F"}, {171, "H"}, {172, "Ω·m"}, {173, "S"}, {174, "S/m"},
    {175, "T"}, {176, "V/K"}, {177, "V/m"}, {178, "Wb"}, {179, "cd"}, {180, "cd/m²"}, {181, "K/h"},
    {182, "K/min"}, {183, "J·s"}, {184, "rad/s"}, {185, "m²/N"}, {186, "kg/m³"}, {187, "N·s"},
    {188, "N/m"}, {189, "W/(m·K)"}, {190, "µS"}, {191, "ft³/h"}, {192, "gal/h"}, {193, "km"},
    {194, "µm"}, {195, "g"}, {196, "mg"}, {197, "mL"}, {198, "mL/s"}, {199, "dB"}, {200, "dBmV"},
    {201, "dBV"}, {202, "mS"}, {203, "varh"}, {204, "kvarh"}, {205, "Mvarh"}, {206, "mmH₂O"},
    {207, "‰"}, {208, "g/g"}, {209, "kg/kg"}, {210, "g/kg"}, {211, "mg/g"}, {212, "mg/kg"},
    {213, "g/mL"}, {214, "g/L"}, {215, "mg/L"}, {216, "µg/L"}, {217, "g/m³"}, {218, "mg/m³"},
    {219, "µg/m³"}, {220, "ng/m³"}, {221, "g/cm³"}, {222, "Bq"}, {223, "kBq"}, {224, "MBq"},
    {225, "Gy"}, {226, "mGy"}, {227, "µGy"}, {228, "Sv"}, {229, "mSv"}, {230, "µSv"}, {231, "µSv/h"},
    {232, "dB(A)"}, {233, "NTU"}, {234, "pH"}, {235, "g/m²"}, {236, "min/K"}, {237, "Ω·m²/m"},
    {238, "A·s"}, {239, "VAh"}, {240, "kVAh"}, {241, "MVAh"}, {242, "varh"}, {243, "kvarh"},
    {244, "Mvarh"}, {245, "V²·h"}, {246, "A²·h"}, {247, "J/h"}, {248, "ft³/d"}, {249, "m³/d"},
    {250, "Wh/m³"}, {251, "J/m³"}, {252, "mol%"}, {253, "Pa·s"}, {254, "MMSCFM"}, {47808, "SCFD"},
    {47809, "MMSCFD"}, {47810, "MCFD"}, {47811, "MSCFD"}, {47812, "lb/d"}, {47814, "mrem"},
    {47815, "mrem/h"}, {47816, "°L"}, {47817, "% ABV"}, {47818, "IBU"}, {47819, "EBU"}, {47820, "°P"},
    {47821, "SG"}, {47822, "EBC"},
};

// What devices and lists of points write besides. Spellings that differ in letter case, blanks, dots, exponents,
// "deg" or "ohm" need no row.
constexpr Row OtherRows[] = {
    {104, "r/min"}, {104, "U/min"}, {89, "gpm"}, {192, "gph"}, {77, "fpm"}, {84, "ft³/min"},
    {191, "cfh"}, {142, "cfs"}, {58, "inWC"}, {58, "inWG"}, {57, "cmWC"}, {206, "mmWC"}, {206, "mmWS"},
    {50, "BTUH"}, {157, "kBTUH"}, {157, "MBH"}, {37, "lux"}, {73, "sec"}, {71, "hr"}, {71, "hrs"},
    {70, "days"}, {135, "m³/hr"}, {136, "L/hr"}, {88, "lpm"}, {87, "lps"}, {67, "a"}, {29, "%rF"},
    {29, "%r.F."}, {29, "%r.H."}, {82, "ltr"}, {40, "lbs"}, {20, "BTUs"}, {62, "C°"}, {64, "F°"},
    {62, "grdC"},
};
// clang-format on

// The spellings of the same sign.
constexpr std::string_view Spellings[][2] = {
    {"²", "2"}, {"³", "3"},   {"₂", "2"},        {"°", "deg"},   {"º", "deg"}, {"˚", "deg"}, {"µ", "u"},
    {"μ", "u"}, {"Ω", "ohm"}, {"\u2126", "ohm"}, {"Δ", "delta"}, {"·", ""},    {"⋅", ""},    {"*", ""},
    {"^", ""},  {" ", ""},    {"(", ""},         {")", ""},      {".", ""},
};

std::string Simplified(std::string_view symbol) {
    std::string text;
    while (!symbol.empty()) {
        auto const spelling = std::find_if(std::begin(Spellings), std::end(Spellings), [&](auto const& one) {
            return symbol.substr(0, one[0].size()) == one[0];
        });
        bool const isSign = spelling != std::end(Spellings);
        text += isSign ? (*spelling)[1] : symbol.substr(0, 1);
        symbol.remove_prefix(isSign ? (*spelling)[0].size() : 1);
    }
    return text;
}

std::string Folded(std::string text) {
    for (char& letter : text) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return text;
}

// Simplified symbols with their units, and by their folded form how they are written. The first row of a
// symbol counts.
struct Index {
    std::map<std::string, std::uint32_t> units;
    std::multimap<std::string, std::string> byFolded;

    Index() {
        AddAll(Rows);
        AddAll(OtherRows);
    }

    template <std::size_t Count>
    void AddAll(Row const (&rows)[Count]) {
        for (Row const& row : rows) {
            std::string const simple = Simplified(row.symbol);
            if (units.emplace(simple, row.unit).second) {
                byFolded.emplace(Folded(simple), simple);
            }
        }
    }
};

// Letter case may be wrong, except that of a prefix that makes a milli of a mega. In a text of capitals it
// says nothing.
bool MeansTheSame(std::string const& written, std::string const& symbol) {
    bool const isPrefix = written.front() == 'm' || written.front() == 'M';
    bool const hasSmall =
        std::any_of(written.begin(), written.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    return !isPrefix || !hasSmall || written.front() == symbol.front();
}

}  // namespace

std::optional<std::string_view> UnitSymbol(std::uint32_t unit) {
    auto const row = std::lower_bound(std::begin(Rows), std::end(Rows), unit,
                                      [](Row const& one, std::uint32_t number) { return one.unit < number; });
    return row != std::end(Rows) && row->unit == unit ? std::optional<std::string_view>(row->symbol)
                                                      : std::nullopt;
}

std::optional<std::uint32_t> UnitOfSymbol(std::string_view symbol) {
    static Index const index;
    std::string const simple = Simplified(symbol);
    auto const exact = index.units.find(simple);
    if (exact != index.units.end()) {
        return exact->second;
    }
    auto const [first, last] = index.byFolded.equal_range(Folded(simple));
    bool const isClear = first != last && std::next(first) == last && MeansTheSame(simple, first->second);
    return isClear ? std::optional<std::uint32_t>(index.units.at(first->second)) : std::nullopt;
}

}  // namespace standard
