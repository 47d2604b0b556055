#pragma once

#include <functional>

#include "ConfirmedRequest.h"
#include "Content.h"
#include "PropertyServices.h"
#include "ScriptedLink.h"
#include "TagWriter.h"

namespace test {

// Plays a device with an Object_List in virtual time, without segmentation: an answer that is longer than
// maxApdu is an Abort.
class ListDevice : public ScriptedLink {
public:
    explicit ListDevice(std::size_t count) {
        list.push_back({8, 7});
        for (std::uint32_t i = 1; i < count; ++i) {
            list.push_back({static_cast<std::uint16_t>(i % 3), i});
        }
    }

    std::vector<standard::ObjectId> list;
    std::size_t maxApdu = 206;
    bool knowsMultiple = true;
    std::optional<std::uint32_t> revision = 1;
    // Is called before each request is answered.
    std::function<void()> beforeAnswer = [] {};
    std::function<bool()> isSilent = [] { return false; };
    std::optional<std::uint32_t> unreadableIndex;
    std::size_t requests = 0;

protected:
    void OnSend(standard::Datagram const& datagram) override {
        ++requests;
        beforeAnswer();
        if (!isSilent()) {
            Octets const apdu(datagram.octets.begin() + 6, datagram.octets.end());
            Deliver({Local(AnswerTo(apdu)), Milliseconds(1), DeviceEndpoint});
        }
    }

private:
    using Values = std::optional<std::vector<Octets>>;

    Octets AnswerTo(Octets const& apdu) const {
        auto const head = standard::ConfirmedRequest::Decode(apdu);
        char const id = static_cast<char>(head->invokeId);
        if (head->serviceChoice == 14 && !knowsMultiple) {
            return {0x60, id, 9};
        }
        Octets const answer = head->serviceChoice == 14 ? Multiple(*head, apdu) : Single(*head, apdu);
        return answer.size() <= maxApdu ? answer : Octets{0x71, id, 4};
    }

    Octets Single(standard::ConfirmedRequest const& head, Octets const& apdu) const {
        auto const reference = standard::parameters::OfReadProperty(apdu, head.parametersAt);
        Octets const value = Value(*reference);
        char const id = static_cast<char>(head.invokeId);
        if (value.empty()) {
            return Octets{0x50, id, 12} + Problem(*reference);
        }
        standard::TagWriter writer;
        writer.Context(0, standard::content::ObjectIdentifier(reference->object));
        WriteProperty(writer, 1, *reference);
        writer.Opening(3);
        writer.Encoded(value);
        writer.Closing(3);
        return Octets{0x30, id, 12} + writer.Take();
    }

    Octets Multiple(standard::ConfirmedRequest const& head, Octets const& apdu) const {
        auto const references = standard::parameters::OfReadPropertyMultiple(apdu, head.parametersAt);
        standard::TagWriter writer;
        writer.Context(0, standard::content::ObjectIdentifier({8, 7}));
        writer.Opening(1);
        for (standard::PropertyReference const& reference : *references) {
            Octets const value = Value(reference);
            WriteProperty(writer, 2, reference);
            writer.Opening(value.empty() ? 5 : 4);
            writer.Encoded(value.empty() ? Problem(reference) : value);
            writer.Closing(value.empty() ? 5 : 4);
        }
        writer.Closing(1);
        return Octets{0x30, static_cast<char>(head.invokeId), 14} + writer.Take();
    }

    // Its tags; empty if there is none.
    Octets Value(standard::PropertyReference const& reference) const {
        standard::TagWriter writer;
        if (reference.property == 155 && revision) {
            writer.Application(standard::ApplicationTag::Unsigned,
                               standard::content::UnsignedNumber(*revision));
        } else if (reference.property == 76 && reference.index == 0u) {
            writer.Application(standard::ApplicationTag::Unsigned,
                               standard::content::UnsignedNumber(list.size()));
        } else if (reference.property == 76 && !reference.index) {
            for (standard::ObjectId const& object : list) {
                Write(writer, object);
            }
        } else if (reference.property == 76 && !IsOutside(reference) && reference.index != unreadableIndex) {
            Write(writer, list[*reference.index - 1]);
        }
        return writer.Take();
    }

    bool IsOutside(standard::PropertyReference const& reference) const {
        return reference.index && *reference.index > list.size();
    }

    // The class property, and invalid-array-index or unknown-property.
    Octets Problem(standard::PropertyReference const& reference) const {
        return Hex(IsOutside(reference) ? "91 02 91 2A" : "91 02 91 20");
    }

    static void Write(standard::TagWriter& writer, standard::ObjectId const& object) {
        writer.Application(standard::ApplicationTag::ObjectIdentifier,
                           standard::content::ObjectIdentifier(object));
    }

    static void WriteProperty(standard::TagWriter& writer, std::uint8_t number,
                              standard::PropertyReference const& reference) {
        writer.Context(number, standard::content::UnsignedNumber(reference.property));
        if (reference.index) {
            writer.Context(static_cast<std::uint8_t>(number + 1),
                           standard::content::UnsignedNumber(*reference.index));
        }
    }
};

}  // namespace test
