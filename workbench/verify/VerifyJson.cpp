#include "VerifyJson.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>

#include "Printable.h"
#include "Snapshot.h"
#include "TimeText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void Write(Writer& writer, std::string const& text) {
    std::string const valid = tools::ValidUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void Write(Writer& writer, char const* name, std::string const& text) {
    writer.Key(name);
    Write(writer, text);
}

// An empty text is null: the device does not have it.
void WriteIfAny(Writer& writer, char const* name, std::string const& text) {
    writer.Key(name);
    if (text.empty()) {
        writer.Null();
    } else {
        Write(writer, text);
    }
}

bool IsNumber(OpcUa_Variant const& value) {
    double const number = value.Datatype == OpcUaType_Float    ? static_cast<double>(value.Value.Float)
                          : value.Datatype == OpcUaType_Double ? value.Value.Double
                                                               : 0;
    return value.Datatype >= OpcUaType_SByte && value.Datatype <= OpcUaType_Double && std::isfinite(number);
}

void WriteDriverValue(Writer& writer, PointResult const& point, long long localDiff) {
    OpcUa_Variant const& value = point.driverVariant;
    std::string const text = ValueText(value, localDiff);
    if (value.Datatype == OpcUaType_Null) {
        writer.Null();
    } else if (value.Datatype == OpcUaType_Boolean) {
        writer.Bool(value.Value.Boolean);
    } else if (IsNumber(value)) {
        writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    } else if (value.Datatype == OpcUaType_String) {
        Write(writer, std::string(View(value.Value.Octets)));
    } else {
        Write(writer, text);
    }
}

void WriteRemarks(Writer& writer, PointResult const& point) {
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
    Writer writer(buffer);
    writer.StartObject();
    Write(writer, "kind", kind);
    body(writer);
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

std::string PointLine(BlockResult const& block, PointResult const& point, long long localDiff) {
    return Line("variable", [&](Writer& writer) {
        VariableConfig const& variable = *point.variable;
        Write(writer, "block", block.block->name);
        Write(writer, "name", variable.name);
        Write(writer, "object", ObjectText(variable));
        Write(writer, "property", variable.property->name);
        Write(writer, "type", TypeName(variable.type));
        WriteIfAny(writer, "objectName", point.objectName);
        WriteIfAny(writer, "description", point.description);
        WriteIfAny(writer, "units", point.units);
        WriteIfAny(writer, "stateText", point.stateText);
        WriteIfAny(writer, "reliability", point.reliability);
        writer.Key("driver");
        WriteDriverValue(writer, point, localDiff);
        WriteIfAny(writer, "quality", point.quality);
        WriteIfAny(writer, "device", point.deviceValue == "-" ? std::string() : point.deviceValue);
        WriteIfAny(writer, "datatype", point.datatype);
        Write(writer, "verdict", RowOf(point.judgement.verdict).name);
        writer.Key("finding");
        writer.Bool(IsFinding(point));
        Write(writer, "explanation", point.judgement.explanation);
        WriteRemarks(writer, point);
    });
}

void WriteDevice(Writer& writer, DeviceIdentity const& device) {
    writer.Key("device");
    if (!device.isKnown) {
        writer.Null();
        return;
    }
    writer.StartObject();
    writer.Key("instance");
    writer.Uint(device.instance);
    WriteIfAny(writer, "name", device.name);
    WriteIfAny(writer, "vendor", device.vendor);
    WriteIfAny(writer, "vendorId", device.vendorId);
    WriteIfAny(writer, "model", device.model);
    WriteIfAny(writer, "firmware", device.firmware);
    WriteIfAny(writer, "software", device.software);
    WriteIfAny(writer, "protocolRevision", device.protocolRevision);
    writer.EndObject();
}

std::string BlockLine(BlockResult const& block) {
    return Line("block", [&](Writer& writer) {
        Write(writer, "block", block.block->name);
        Write(writer, "reachedAt", block.reachedAt);
        WriteIfAny(writer, "answersFrom", block.device.answersFrom);
        WriteDevice(writer, block.device);
        writer.Key("notes");
        writer.StartArray();
        for (BlockNote const& note : block.notes) {
            writer.StartObject();
            writer.Key("finding");
            writer.Bool(note.isFinding);
            Write(writer, "text", note.text);
            writer.EndObject();
        }
        writer.EndArray();
        writer.Key("points");
        writer.Uint64(block.points.size());
        writer.Key("findings");
        writer.Uint64(FindingsOf(block));
    });
}

std::string SummaryLine(VerifyReport const& report) {
    return Line("summary", [&](Writer& writer) {
        VerifyFigures const figures = FiguresOf(report);
        Write(writer, "project", report.project);
        Write(writer, "begun", IsoTime(report.begun, report.localDiff));
        Write(writer, "ended", IsoTime(report.ended, report.localDiff));
        Write(writer, "version", report.version);
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
        writer.Key("verdicts");
        writer.StartObject();
        for (auto const& [verdict, count] : figures.verdicts) {
            writer.Key(RowOf(verdict).name);
            writer.Uint64(count);
        }
        writer.EndObject();
        writer.Key("remarks");
        writer.StartObject();
        for (auto const& [remark, count] : figures.remarks) {
            writer.Key(RowOf(remark).name);
            writer.Uint64(count);
        }
        writer.EndObject();
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
