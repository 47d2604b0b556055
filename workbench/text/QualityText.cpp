#include "QualityText.h"

#include <cstdio>

namespace workbench {

namespace {

struct QualityRow {
    OpcUa_StatusCode status;
    char const* text;
};

// OPC 10000-6, annex A.2: the codes that blocks and the runtime use.
constexpr QualityRow Qualities[] = {
    {OpcUa_Good, "Good"},
    {OpcUa_Bad, "Bad"},
    {0x80310000u, "No communication"},
    {0x808C0000u, "Sensor failure"},
    {0x808D0000u, "Out of service"},
    {OpcUa_BadOutOfRange, "Out of range"},
    {OpcUa_BadTypeMismatch, "Type mismatch"},
    {OpcUa_BadNoData, "No data"},
    {0x40000000u, "Uncertain"},
};

char const* KindText(OpcUa_StatusCode status) {
    switch (KindOf(status)) {
        case QualityKind::Good:
            return "Good";
        case QualityKind::Uncertain:
            return "Uncertain";
        default:
            return "Bad";
    }
}

}  // namespace

QualityKind KindOf(OpcUa_StatusCode status) {
    switch (status >> 30) {
        case 0:
            return QualityKind::Good;
        case 1:
            return QualityKind::Uncertain;
        default:
            return QualityKind::Bad;
    }
}

std::string QualityText(OpcUa_StatusCode status) {
    for (QualityRow const& row : Qualities) {
        if (row.status == status) {
            return row.text;
        }
    }
    return std::string(KindText(status)) + " " + StatusText(status);
}

std::string StatusText(OpcUa_StatusCode status) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", status);
    return text;
}

}  // namespace workbench
