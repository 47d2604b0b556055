#include "VerifyJson.h"

#include <cmath>

#include "JsonFields.h"
#include "Snapshot.h"
#include "TimeText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

// How many rounds had which verdict, or points.
template <class Counts>
void WriteCounts(JsonWriter& writer, char const* name, Counts const& counts) {
    writer.Key(name);
    writer.StartObject();
    for (auto const& [which, count] : counts) {
        writer.Key(RowOf(which).name);
        writer.Uint64(count);
    }
    writer.EndObject();
}

bool IsNumber(OpcUa_Variant const& value) {
    double const number = value.Datatype == OpcUaType_Float    ? static_cast<double>(value.Value.Float)
                          : value.Datatype == OpcUaType_Double ? value.Value.Double
                                                               : 0;
    return value.Datatype >= OpcUaType_SByte && value.Datatype <= OpcUaType_Double && std::isfinite(number);
}

void WriteDriverValue(JsonWriter& writer, PointResult const& point, long long localDiff) {
    OpcUa_Variant const& value = point.driverVariant;
    std::string const text = ValueText(value, localDiff);
    if (value.Datatype == OpcUaType_Null) {
        writer.Null();
    } else if (value.Datatype == OpcUaType_Boolean) {
        writer.Bool(value.Value.Boolean);
    } else if (IsNumber(value)) {
        writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    } else if (value.Datatype == OpcUaType_String) {
        WriteText(writer, std::string(View(value.Value.Octets)));
    } else {
        WriteText(writer, text);
    }
}

void WriteRemarks(JsonWriter& writer, PointResult const& point) {
    writer.Key("remarks");
    writer.StartArray();
    for (Remark const remark : point.remarks) {
        writer.String(RowOf(remark).name);
    }
    writer.EndArray();
}

template <class Body>
std::string Line(char const* kind, Body const& body) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "kind", kind);
    body(writer);
    writer.EndObject();
    return JsonLine(buffer);
}

std::string PointLine(BlockResult const& block, PointResult const& point, long long localDiff) {
    return Line("variable", [&](JsonWriter& writer) {
        VariableConfig const& variable = *point.variable;
        WriteField(writer, "block", block.block->name);
        WriteField(writer, "name", variable.name);
        WriteField(writer, "object", ObjectText(variable));
        WriteField(writer, "property", variable.property->name);
        WriteField(writer, "type", TypeName(variable.type));
        WriteOptional(writer, "objectName", point.objectName);
        WriteOptional(writer, "description", point.description);
        WriteOptional(writer, "units", point.units);
        WriteOptional(writer, "stateText", point.stateText);
        WriteOptional(writer, "reliability", point.reliability);
        writer.Key("driver");
        WriteDriverValue(writer, point, localDiff);
        WriteOptional(writer, "quality", point.quality);
        WriteOptional(writer, "device", point.deviceValue == "-" ? std::string() : point.deviceValue);
        WriteOptional(writer, "datatype", point.datatype);
        WriteField(writer, "verdict", RowOf(point.judgement.verdict).name);
        writer.Key("finding");
        writer.Bool(IsFinding(point));
        WriteField(writer, "explanation", ExplanationText(point));
        WriteCounts(writer, "rounds", point.rounds);
        WriteRemarks(writer, point);
    });
}

void WriteDevice(JsonWriter& writer, DeviceIdentity const& device) {
    writer.Key("device");
    if (!device.isKnown) {
        writer.Null();
        return;
    }
    writer.StartObject();
    writer.Key("instance");
    writer.Uint(device.instance);
    WriteOptional(writer, "name", device.name);
    WriteOptional(writer, "vendor", device.vendor);
    WriteOptional(writer, "vendorId", device.vendorId);
    WriteOptional(writer, "model", device.model);
    WriteOptional(writer, "firmware", device.firmware);
    WriteOptional(writer, "software", device.software);
    WriteOptional(writer, "protocolRevision", device.protocolRevision);
    writer.EndObject();
}

std::string BlockLine(BlockResult const& block) {
    return Line("block", [&](JsonWriter& writer) {
        WriteField(writer, "block", block.block->name);
        WriteField(writer, "reachedAt", block.reachedAt);
        WriteOptional(writer, "answersFrom", block.device.answersFrom);
        WriteDevice(writer, block.device);
        writer.Key("notes");
        writer.StartArray();
        for (BlockNote const& note : block.notes) {
            writer.StartObject();
            writer.Key("finding");
            writer.Bool(note.isFinding);
            WriteField(writer, "text", note.text);
            writer.EndObject();
        }
        writer.EndArray();
        writer.Key("rounds");
        writer.Uint64(block.rounds);
        writer.Key("points");
        writer.Uint64(block.points.size());
        writer.Key("findings");
        writer.Uint64(FindingsOf(block));
    });
}

std::string SummaryLine(VerifyReport const& report) {
    return Line("summary", [&](JsonWriter& writer) {
        VerifyFigures const figures = FiguresOf(report);
        WriteField(writer, "project", report.project);
        WriteField(writer, "begun", IsoTime(report.begun, report.localDiff));
        WriteField(writer, "ended", IsoTime(report.ended, report.localDiff));
        WriteField(writer, "version", report.version);
        writer.Key("rounds");
        writer.Uint64(report.rounds);
        writer.Key("interrupted");
        writer.Bool(report.isInterrupted);
        writer.Key("blocks");
        writer.Uint64(figures.blocks);
        writer.Key("points");
        writer.Uint64(figures.points);
        writer.Key("findings");
        writer.Uint64(figures.findings);
        WriteCounts(writer, "verdicts", figures.verdicts);
        WriteCounts(writer, "remarks", figures.remarks);
    });
}

}  // namespace

std::string VerifyJson(VerifyReport const& report) {
    std::string lines;
    for (BlockResult const& block : report.blocks) {
        for (PointResult const& point : block.points) {
            lines += PointLine(block, point, report.localDiff);
        }
        lines += BlockLine(block);
    }
    return lines + SummaryLine(report);
}

}  // namespace workbench
