#include "Addin.h"

#include "BACnet_protocol.h"

namespace dorvel::BACnet {

namespace {

constexpr int ProcessorOrder = 320;

}  // namespace

int Init() {
    BACnetProtocol::RegAsLuaType();
    RegisterConfigProcessor("dorvel_Bacnet", ProcessorOrder, ConfigProcessorCallback, nullptr, nullptr,
                            nullptr);
    return 0;
}

int ConfigProcessorCallback(void const*, ConfigProcessorMode mode, ControllerConfig*) {
    if (mode == ConfigProcessorMode::Start) {
        TBACnet::IsTerminated.store(false, std::memory_order_relaxed);
    } else if (mode == ConfigProcessorMode::Stop) {
        TBACnet::IsTerminated.store(true, std::memory_order_relaxed);
    }
    return 0;
}

}  // namespace dorvel::BACnet

// The only exported symbol: the host calls it once, after it has loaded the library.
extern "C" __attribute__((visibility("default"))) int InitAddin() {
    return dorvel::BACnet::Init();
}
