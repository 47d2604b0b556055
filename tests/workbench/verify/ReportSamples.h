#pragma once

#include <string>

#include "NameTable.h"
#include "VerifyReport.h"
#include "VerifySamples.h"

namespace test {

// A report with two blocks, with findings, remarks and texts that a device chose badly.
struct SampleReport {
    workbench::BlockConfig ahu;
    workbench::BlockConfig chiller;
    workbench::VerifyReport report;

    SampleReport() {
        ahu.name = "AHU";
        chiller.name = "Chiller <b>";
        Add(ahu, "Supply air", "analog-input", 1, "present-value");
        Add(ahu, "Missing", "analog-input", 9, "present-value");
        Add(chiller, "Flags & more", "analog-input", 1, "status-flags");
        report.title = "North wing";
        report.project = "plant.lua";
        report.version = "1.2.3";
        report.addIn = "dorvel_bacnet.so";
        report.rounds = 1;
        report.blocks = {ResultOf(ahu), ResultOf(chiller)};
        report.blocks[0].device = {
            true, 1001, "<script>alert(1)</script>", "Vendor", "5", "Model", "1.0", "2.0", "14", {}};
        report.blocks[1].notes = {{true, "another station answers"}, {false, "reaches the same device"}};

        workbench::PointResult& good = report.blocks[0].points[0];
        good.objectName = "\"Supply\" 'air'";
        good.description = "line\nbreak\x1B[31m";
        good.units = "degrees-celsius";
        good.driverVariant = Float(21.5F);
        good.driverValue = good.deviceValue = "21.5";
        good.quality = "Good";
        good.datatype = "Real";
        good.judgement.verdict = workbench::Verdict::Agrees;
        good.remarks = {workbench::Remark::InAlarm};

        workbench::PointResult& missing = report.blocks[0].points[1];
        missing.driverVariant = Float(1e-45F);
        missing.driverValue = "1e-45";
        missing.judgement = {workbench::Verdict::NoSuchObject, "object: unknown-object"};

        workbench::PointResult& flags = report.blocks[1].points[0];
        flags.driverVariant = UInt64(18446744073709551615ULL);
        flags.judgement = {workbench::Verdict::Moving, "none before, fault after"};
    }
    SampleReport(SampleReport const&) = delete;
    SampleReport& operator=(SampleReport const&) = delete;

private:
    static void Add(workbench::BlockConfig& block, char const* name, char const* object, int number,
                    char const* property) {
        workbench::VariableConfig variable;
        variable.name = name;
        variable.type = OpcUa_BuiltInTypeHlp(OpcUaType_DataValue);
        variable.type.ElementType = OpcUaType_Float;
        variable.objectType = workbench::ObjectTypes().FindName(object);
        variable.property = workbench::Properties().FindName(property);
        variable.objectNumber = number;
        block.variables.push_back(variable);
    }

    static workbench::BlockResult ResultOf(workbench::BlockConfig const& block) {
        workbench::BlockResult result;
        result.block = &block;
        result.reachedAt = "127.0.0.1:47808";
        for (workbench::VariableConfig const& variable : block.variables) {
            workbench::PointResult point;
            point.variable = &variable;
            point.driverValue = point.deviceValue = "-";
            result.points.push_back(point);
        }
        return result;
    }
};

}  // namespace test
