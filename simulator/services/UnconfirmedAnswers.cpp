#include "UnconfirmedAnswers.h"

#include <algorithm>

#include "UnconfirmedServices.h"

namespace simulator {

namespace {

// Every device has its Device object, but not every device has one of instance 4194303: that stands for any
// device only in a read or a write (clause 12.11).
BacnetObject const* Find(WhoHas const& wanted, Device const& device) {
    auto const& objects = device.Objects();
    auto const found = std::find_if(objects.begin(), objects.end(), [&](BacnetObject const& object) {
        return wanted.object ? object.Id() == *wanted.object : object.Name() == wanted.name;
    });
    return found == objects.end() ? nullptr : &*found;
}

}  // namespace

// A mistake in an unconfirmed request must not be answered.
std::optional<Octets> AnswerUnconfirmed(Octets const& apdu, Device const& device) {
    DeviceSettings const& settings = device.Settings();
    std::uint32_t const instance = device.Id().instance;
    if (auto const whoIs = WhoIs::Decode(apdu); whoIs && whoIs->IsFor(instance)) {
        return IAm{device.Id(), settings.maxApduLength, settings.segmentationSupported,
                   settings.vendorIdentifier}
            .Encode();
    }
    auto const whoHas = WhoHas::Decode(apdu);
    if (!whoHas || !whoHas->IsFor(instance)) {
        return std::nullopt;
    }
    BacnetObject const* const object = Find(*whoHas, device);
    if (!object) {
        return std::nullopt;
    }
    Octets answer = IHave{device.Id(), object->Id(), object->Name()}.Encode();
    return answer.size() <= settings.maxApduLength ? std::optional(std::move(answer)) : std::nullopt;
}

}  // namespace simulator
