// Reads properties of a device with the client by the standard. A tool of the tests; it is not installed.
//
// Synopsis: read-device ADDRESS:PORT [--router NETWORK MAC] [--timeout MS] [--retries N] [--singly] READ...
//
//   READ       TYPE,INSTANCE,PROPERTY[,INDEX] in numbers, or list,INSTANCE for the Object_List of that
//   device, one
//              element after the other
//   --singly   with ReadProperty, not with ReadPropertyMultiple
//
// Prints a line for each property: its name, its kinds of values and its text, separated by tabs; "failure"
// is the kind of one that could not be read. The last line has the number of requests, and of segments and
// attempts of the last one.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "Client.h"
#include "DatumText.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "UdpLink.h"

namespace {

using namespace standard;

char const* const Kinds[] = {"null",   "boolean", "unsigned",   "signed",      "real",
                             "double", "octets",  "text",       "bits",        "enumerated",
                             "date",   "time",    "identifier", "constructed", "unknown"};

struct Options {
    Peer device;
    ClientSettings settings;
    bool isSingly = false;
    std::vector<PropertyReference> references;
    std::vector<std::uint32_t> lists;  // instances of devices
};

std::vector<std::uint32_t> Numbers(std::string const& text) {
    std::vector<std::uint32_t> numbers;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) {
        numbers.push_back(static_cast<std::uint32_t>(std::stoul(part)));
    }
    return numbers;
}

Endpoint EndpointOf(std::string const& text) {
    std::uint32_t address = 0;
    std::istringstream stream(text);
    for (int i = 0; i < 4; ++i) {
        unsigned octet = 0;
        stream >> octet;
        stream.get();
        address = address << 8 | octet;
    }
    std::uint16_t port = 0;
    stream >> port;
    return {address, port};
}

Octets OctetsOf(std::string const& hex) {
    Octets octets;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        octets.push_back(static_cast<char>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    }
    return octets;
}

void AddRead(Options& options, std::string const& word) {
    if (word.rfind("list,", 0) == 0) {
        options.lists.push_back(Numbers(word.substr(5)).at(0));
        return;
    }
    auto const numbers = Numbers(word);
    PropertyReference reference{
        {static_cast<std::uint16_t>(numbers.at(0)), numbers.at(1)}, numbers.at(2), {}};
    if (numbers.size() > 3) {
        reference.index = numbers[3];
    }
    options.references.push_back(reference);
}

Options Parsed(std::vector<std::string> const& words) {
    Options options;
    options.device.endpoint = EndpointOf(words.at(0));
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i] == "--router") {
            auto const network = static_cast<std::uint16_t>(std::stoul(words.at(i + 1)));
            options.device.remote = NetworkAddress{network, OctetsOf(words.at(i + 2))};
            i += 2;
        } else if (words[i] == "--timeout") {
            options.settings.timeout = std::chrono::milliseconds(std::stoul(words.at(++i)));
            options.settings.segmentTimeout = options.settings.timeout;
        } else if (words[i] == "--retries") {
            options.settings.retries = static_cast<unsigned>(std::stoul(words.at(++i)));
        } else if (words[i] == "--singly") {
            options.isSingly = true;
        } else {
            AddRead(options, words[i]);
        }
    }
    return options;
}

void Print(ReadResult const& result) {
    std::string kinds;
    for (Datum const& value : result.values) {
        kinds += (kinds.empty() ? "" : " ") + std::string(Kinds[static_cast<int>(value.kind)]);
    }
    std::string const text =
        result.failure ? FailureText(*result.failure) : DatumText(result.values, result.reference);
    std::cout << ReferenceText(result.reference) << '\t' << (result.failure ? "failure" : kinds) << '\t'
              << tools::Printable(text) << '\n';
}

std::vector<ReadResult> Read(Client& client, Options const& options,
                             std::vector<PropertyReference> const& references) {
    if (!options.isSingly) {
        return client.ReadMultiple(options.device, references);
    }
    std::vector<ReadResult> results;
    for (PropertyReference const& reference : references) {
        results.push_back(client.Read(options.device, reference));
    }
    return results;
}

// Object_List by its elements, after their number.
std::vector<ReadResult> ReadList(Client& client, Options const& options, std::uint32_t instance) {
    constexpr std::uint16_t device = 8;
    constexpr std::uint32_t objectList = 76;
    ReadResult const size = client.Read(options.device, {{device, instance}, objectList, 0});
    if (size.failure || size.values.size() != 1) {
        return {size};
    }
    std::vector<PropertyReference> elements;
    for (std::uint32_t i = 1; i <= std::min<std::uint64_t>(size.values[0].number, 10000); ++i) {
        elements.push_back({{device, instance}, objectList, i});
    }
    return Read(client, options, elements);
}

}  // namespace

int main(int count, char** words) try {
    Options const options = Parsed({words + 1, words + count});
    UdpLink link({0x7F000001, 0});
    Client client(link, options.settings);
    std::vector<ReadResult> results = Read(client, options, options.references);
    for (std::uint32_t const instance : options.lists) {
        auto const elements = ReadList(client, options, instance);
        results.insert(results.end(), elements.begin(), elements.end());
    }
    for (ReadResult const& result : results) {
        Print(result);
    }
    Exchange const& last = client.LastExchange();
    std::cout << client.RequestCount() << " requests, " << last.segments << " segments, " << last.attempts
              << " attempts\n";
    return 0;
} catch (std::exception const& error) {
    std::cerr << "read-device: " << error.what() << '\n';
    return 2;
}
