#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "PropertyServices.h"

namespace standard {

// Reads a list of properties with as few requests as the device allows: ReadPropertyMultiple for lists that
// fit a request; two halves of a list whose answer the device aborts; single properties where it answers a
// list with an error, a reject or something malformed, or not at all. At most three requests for each
// property.
class MultipleRead {
public:
    struct ListAnswer {
        std::optional<Failure> failure;   // of the whole list
        std::vector<ReadResult> results;  // otherwise: one for each reference, in their order
    };
    using ReadList = std::function<ListAnswer(std::vector<PropertyReference> const&)>;
    using ReadOne = std::function<ReadResult(PropertyReference const&)>;

    // longestRequest limits the octets of a request. `usesLists` is false for a device that does not know
    // ReadPropertyMultiple.
    MultipleRead(ReadList listRequest, ReadOne singleRequest, std::size_t longestRequest, bool usesLists);

    std::vector<ReadResult> Run(std::vector<PropertyReference> const& references);
    // The device turned out not to know ReadPropertyMultiple.
    bool IsWithoutLists() const { return isWithoutLists; }

private:
    struct Range {
        std::size_t from;
        std::size_t to;
    };

    void Split(std::vector<PropertyReference> const& references);
    void ReadRange(std::vector<PropertyReference> const& references, Range const& range);
    void ReadSingles(std::vector<PropertyReference> const& references, Range const& range);
    void AfterFailure(std::vector<PropertyReference> const& references, Range const& range,
                      Failure const& failure);
    void Add(ReadResult result);
    bool IsOver() const { return end.has_value(); }

    ReadList readList;
    ReadOne readOne;
    std::size_t const longest;
    bool isWithoutLists;
    bool hasListAnswer = false;
    unsigned silentInARow = 0;
    std::optional<Failure> end;  // of all properties that are not read yet
    std::vector<Range> waiting;  // the next one last
    std::vector<ReadResult> results;
};

}  // namespace standard
