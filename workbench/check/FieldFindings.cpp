#include "BlockView.h"
#include "FindingFamilies.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr long long AllNetworks = 65535;      // ASHRAE 135 clause 6.2.2
constexpr long long LongestSilence = 60'000;  // milliseconds

void FindWithoutEffect(BlockConfig const& block, Findings& findings) {
    if (FieldOf(block, "Timeout")) {
        findings.push_back(OfBlock(
            FindingCode::FieldWithoutEffect, block, "Timeout",
            "has no effect: the driver always waits " + std::to_string(AnswerTime()) + " ms for an answer"));
    }
    if (FieldOf(block, "AddressNumber")) {
        findings.push_back(OfBlock(FindingCode::FieldWithoutEffect, block, "AddressNumber",
                                   "has no effect: the driver does not use it"));
    }
}

void FindLongSilence(BlockConfig const& block, Findings& findings) {
    long long const silence = SilenceOf(block);
    if (silence > LongestSilence) {
        findings.push_back(OfBlock(
            FindingCode::LongSilence, block, "CountRepeat",
            "a silent device holds the task of the block for " + Seconds(silence) + " in every cycle"));
    }
}

void FindLocal(BlockConfig const& block, Findings& findings) {
    if (!FieldOf(block, "MAC") || block.address.empty()) {
        return;
    }
    std::string const mac = TextOf(block, "MAC");
    std::vector<char> const octets = AddressOctets(mac);
    if (octets != DefaultMacOctets() && octets != AddressOctets(block.address)) {
        findings.push_back(OfBlock(FindingCode::MacDiffers, block, "MAC",
                                   tools::Quoted(mac) +
                                       " has no effect without a NetworkNumber: every datagram goes to "
                                       "Address, " +
                                       tools::Quoted(block.address)));
    }
}

void FindRemote(BlockConfig const& block, long long network, Findings& findings) {
    bool const hasMac = FieldOf(block, "MAC") != nullptr;
    bool const isMacKnown = !IsRefused(block, "MAC");
    std::vector<char> const mac = hasMac ? AddressOctets(TextOf(block, "MAC")) : DefaultMacOctets();
    if (network == AllNetworks) {
        findings.push_back(
            OfBlock(FindingCode::BroadcastAddress, block, "NetworkNumber",
                    "65535 means all networks: routers send every request, writes too, to all of them",
                    "Set NetworkNumber to the network of the device."));
    } else if (isMacKnown && mac == DefaultMacOctets()) {
        findings.push_back(OfBlock(FindingCode::MacMissing, block, hasMac ? "MAC" : "NetworkNumber",
                                   "a device behind a router needs its own MAC: the default, "
                                   "255.255.255.255:47808, is not the address of a device on network " +
                                       std::to_string(network) + ", and the block is in fault"));
    }
    if (mac.empty()) {
        findings.push_back(
            OfBlock(FindingCode::BroadcastAddress, block, "MAC",
                    "the empty address means every device of network " + std::to_string(network) +
                        ": all of them receive every request, writes too, and the first answer counts"));
    }
}

}  // namespace

void FindFields(BlockConfig const& block, Findings& findings) {
    FindWithoutEffect(block, findings);
    FindLongSilence(block, findings);
    if (IsRefused(block, "NetworkNumber")) {
        return;
    }
    long long const network = NumberOf(block, "NetworkNumber", 0);
    if (network == 0) {
        FindLocal(block, findings);
    } else {
        FindRemote(block, network, findings);
    }
}

}  // namespace workbench
