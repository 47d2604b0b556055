#include "ForeignDevice.h"

#include <algorithm>

#include "Bvlc.h"

namespace standard {

namespace {

// No value at the deadline.
std::optional<std::uint16_t> NextResult(Link& link, Endpoint const& bbmd, Link::Time deadline,
                                        std::size_t& datagramsLeft) {
    while (datagramsLeft > 0 && link.Now() < deadline) {
        auto const datagram = link.Receive(deadline);
        if (!datagram) {
            return std::nullopt;
        }
        --datagramsLeft;
        if (auto const code = bvlc::ResultCodeOf(datagram->octets); code && datagram->peer == bbmd) {
            return code;
        }
    }
    return std::nullopt;
}

std::uint16_t TimeToLive(DiscoverySettings const& settings) {
    constexpr long long margin = 30;
    constexpr long long longest = 0xFFFF;
    auto const seconds = std::chrono::ceil<std::chrono::seconds>(settings.longest).count();
    return static_cast<std::uint16_t>(std::clamp<long long>(seconds + margin, 1, longest));
}

}  // namespace

std::string BbmdRefusal(Endpoint const& bbmd, std::uint16_t resultCode) {
    return bbmd.Text() + " answers with \"" + bvlc::ResultText(resultCode) +
           "\"; a BBMD that accepts foreign devices is needed: check the address, and whether the BBMD has a "
           "free entry for them";
}

std::string RegisterAsForeignDevice(Link& link, DiscoverySettings const& settings) {
    std::size_t datagramsLeft = settings.mostDatagrams;
    for (unsigned attempt = 0; attempt < settings.registrationAttempts && !link.IsStopped(); ++attempt) {
        link.Send({settings.target, bvlc::RegisterForeignDevice(TimeToLive(settings))});
        auto const code =
            NextResult(link, settings.target, link.Now() + settings.registrationTimeout, datagramsLeft);
        if (code) {
            return *code == bvlc::Success ? "" : BbmdRefusal(settings.target, *code);
        }
    }
    return link.IsStopped() ? ""
                            : settings.target.Text() +
                                  " does not answer a Register-Foreign-Device; check the address of the BBMD";
}

}  // namespace standard
