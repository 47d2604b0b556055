#pragma once

namespace tools {

// What each program ends with. Scripts rely on these numbers; those of one program say nothing about the
// other.

// dorvel-workbench
struct WorkbenchExit {
    enum Code : int {
        Ok = 0,
        Fault = 1,    // a block was in fault at the end, and --fail-on-fault asked for it
        Usage = 2,    // a mistake on the command line or in the project
        AddIn = 3,    // the add-in cannot be loaded
        Failure = 4,  // something else failed, such as writing the capture file
        Killed = 130  // a second signal did not wait for the end
    };
};

// bacnet-simulator
struct SimulatorExit {
    enum Code : int {
        Ok = 0,
        Usage = 1,       // a mistake on the command line
        DeviceFile = 2,  // a mistake in the device file
        Socket = 3       // the socket cannot be opened
    };
};

}  // namespace tools
