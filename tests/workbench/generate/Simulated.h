#pragma once

#include "DatumReader.h"
#include "Device.h"
#include "DeviceRecord.h"
#include "TagWriter.h"

namespace test {

// What a browser would read of a simulated device.

inline workbench::ObjectRecord RecordOf(simulator::BacnetObject const& object) {
    workbench::ObjectRecord record;
    record.id = object.Id();
    for (simulator::Property const& property : object.Properties()) {
        standard::TagWriter writer;
        property.Encode(writer, std::nullopt, {});
        auto const values = standard::DatumsOf(writer.Take());
        EXPECT_TRUE(values);
        record.Set(property.id, *values);
    }
    return record;
}

inline workbench::DeviceRecord RecordOf(simulator::Device const& device) {
    workbench::DeviceRecord record;
    record.peer = standard::Peer{};
    record.peer->remote = device.Settings().position;
    record.device = RecordOf(device.Objects().front());
    for (std::size_t i = 1; i < device.Objects().size(); ++i) {
        record.objects.push_back(RecordOf(device.Objects()[i]));
    }
    return record;
}

}  // namespace test
