#pragma once

#include <vector>

#include "DeviceSource.h"
#include "VerifyReport.h"

namespace workbench {

// Asks which device answers. Without an answer, or without the instance, the identity is not known.
DeviceIdentity Identify(DeviceSource& device);

// What the identity and the requests so far say of the block: another station that answers, a router that
// cannot reach the network, a service that the driver needs and the device does not have.
std::vector<BlockNote> NotesOf(DeviceSource const& device, DeviceIdentity const& identity);

// Adds to the notes of each block that it reaches the same device as an earlier one, or another device with
// the same instance.
void NoteSharedDevices(std::vector<BlockResult>& blocks);

}  // namespace workbench
